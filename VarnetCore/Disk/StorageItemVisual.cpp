#include "VarnetCore/Disk/StorageItemVisual.h"

#include "VarnetCore/Base/Utf8.h"

#include <string_view>
#include <unordered_map>

namespace varnet {

namespace {

/// Names that look alike, each between bars.
struct Look {
    const char* symbol;
    MapTone color;
    std::string_view names;
};

// Small letters throughout.
// clang-format off
constexpr Look familiarNames[] = {
    {"archivebox.fill", MapTone::yellow,
     "|backup|backups|zálohy|archive|archives|archiv|timeshift|.snapshots|snapshots|"},
    {"arrow.down.circle.fill", MapTone::sky,
     "|downloads|download|stažené soubory|stažené|descargas|téléchargements|scaricati|pobrane|transferências|"},
    {"arrow.triangle.branch", MapTone::blue,
     "|.git|.hg|.svn|.jj|git|repos|repositories|worktrees|"},
    {"bolt.fill", MapTone::orange,
     "|cache|caches|.cache|mezipaměť|__pycache__|.turbo|.parcel-cache|.gradle|.m2|.npm|.yarn|.pnpm-store|.cargo|.rustup|.conda|.nuget|.ccache|.sccache|.eslintcache|.pytest_cache|.mypy_cache|.ruff_cache|.deriveddata|deriveddata|.bun|.deno|"},
    {"books.vertical.fill", MapTone::violet,
     "|library|libraries|knihovna|biblioteca|bibliothek|bibliothèque|lib|lib32|lib64|libexec|libx32|"},
    {"chevron.left.forwardslash.chevron.right", MapTone::blue,
     "|code|projects|project|projekty|developer|development|src|source|sources|workspace|workspaces|work|github|gitlab|sites|www|html|scripts|proyectos|projekte|conductor|"},
    {"clock.fill", MapTone::gray,
     "|tmp|temp|.temporaryitems|private|recent|"},
    {"cloud.fill", MapTone::sky,
     "|cloudstorage|dropbox|onedrive|google drive|icloud drive|nextcloud|owncloud|mobile documents|mega|"},
    {"cube.fill", MapTone::sky,
     "|docker|.docker|containers|containerd|podman|machines|virtual machines|virtualbox vms|vms|libvirt|vagrant|.vagrant.d|.lima|.colima|.minikube|images and containers|lxc|lxd|"},
    {"doc.fill", MapTone::yellow,
     "|documents|dokumenty|dokumente|documentos|documenti|docs|papers|notes|poznámky|"},
    {"film.fill", MapTone::red,
     "|movies|videos|videa|vídeos|filme|films|video|filmy|vidéos|recordings|screencasts|"},
    {"gamecontroller.fill", MapTone::green,
     "|games|steam|.steam|hry|spiele|juegos|jeux|lutris|heroic|"},
    {"gearshape.2.fill", MapTone::gray,
     "|system|windows|etc|boot|sbin|usr|proc|sys|dev|macos|systém|efi|grub|"},
    {"gearshape.fill", MapTone::gray,
     "|.config|.local|config|preferences|settings|nastavení|application support|.vscode|.vscode-server|.idea|.jetbrains|.mozilla|.thunderbird|"},
    {"globe", MapTone::sky,
     "|firefox|google-chrome|chromium|safari|brave-browser|microsoft-edge|"},
    {"hammer.fill", MapTone::orange,
     "|build|dist|target|out|.next|.nuxt|.output|.svelte-kit|bazel-out|obj|release|debug|cmake-build-debug|cmake-build-release|.build|"},
    {"lock.fill", MapTone::gray,
     "|.ssh|.gnupg|keychains|.password-store|.pki|"},
    {"menubar.dock.rectangle", MapTone::sky,
     "|desktop|plocha|schreibtisch|escritorio|bureau|scrivania|pulpit|área de trabalho|"},
    {"music.note", MapTone::violet,
     "|music|hudba|musik|música|musique|musica|muzyka|podcasts|audio|sounds|"},
    {"person.2.fill", MapTone::blue,
     "|users|usuarios|benutzer|utilisateurs|utenti|uživatelé|home|homes|"},
    {"person.fill", MapTone::blue,
     "|root|shared|public|veřejné|öffentlich|publico|público|"},
    {"photo.fill", MapTone::green,
     "|pictures|obrázky|bilder|imágenes|images|immagini|obrazy|imagens|photos|fotos|fotky|screenshots|wallpapers|dcim|photos library.photoslibrary|"},
    {"shippingbox.fill", MapTone::yellow,
     "|node_modules|vendor|packages|site-packages|dist-packages|bower_components|jspm_packages|pods|venv|.venv|env|go|gopath|third_party|deps|"},
    {"sparkles", MapTone::violet,
     "|.cursor|.codex|.claude|.gemini|.aider|.continue|.windsurf|.copilot|.ollama|.lmstudio|.opencode|models|.huggingface|huggingface|"},
    {"square.grid.2x2.fill", MapTone::blue,
     "|applications|apps|aplikace|programme|aplicaciones|program files|program files (x86)|opt|snap|snaps|flatpak|bin|appimages|steamapps|"},
    {"textformat", MapTone::violet,
     "|fonts|.fonts|písma|schriften|"},
    {"trash.fill", MapTone::gray,
     "|trash|.trash|.trashes|koš|papierkorb|papelera|corbeille|cestino|lost+found|.local/share/trash|"},
    {"tray.full.fill", MapTone::gray,
     "|var|srv|spool|mail|log|logs|journal|run|"},
};

constexpr Look familiarExtensions[] = {
    {"archivebox.fill", MapTone::yellow,
     "|zip|tar|gz|tgz|bz2|xz|zst|7z|rar|jar|war|whl|lz4|cpio|"},
    {"chevron.left.forwardslash.chevron.right", MapTone::blue,
     "|c|cc|cpp|cxx|h|hh|hpp|m|mm|swift|rs|go|py|js|jsx|mjs|tsx|java|kt|kts|rb|php|pl|lua|sh|bash|zsh|fish|cs|fs|scala|hs|ml|ex|exs|erl|clj|dart|vue|svelte|html|css|scss|sql|ipynb|r|jl|zig|nim|"},
    {"curlybraces", MapTone::gray,
     "|json|yaml|yml|toml|xml|ini|conf|cfg|plist|lock|env|properties|"},
    {"cylinder.split.1x2.fill", MapTone::sky,
     "|sqlite|sqlite3|db|mdb|realm|parquet|feather|arrow|duckdb|"},
    {"doc.fill", MapTone::yellow,
     "|pdf|doc|docx|odt|rtf|txt|md|pages|xls|xlsx|ods|numbers|csv|ppt|pptx|odp|key|epub|tex|log|"},
    {"film.fill", MapTone::red,
     "|mp4|mov|mkv|avi|webm|m4v|mpg|mpeg|wmv|flv|ogv|ts|"},
    {"gearshape.fill", MapTone::gray,
     "|so|dylib|dll|a|o|lib|exe|elf|ko|pyc|class|wasm|swapfile|"},
    {"lock.fill", MapTone::gray,
     "|pem|crt|cer|p12|pfx|gpg|asc|kdbx|"},
    {"music.note", MapTone::violet,
     "|mp3|wav|flac|aac|m4a|ogg|opus|aiff|wma|mid|"},
    {"opticaldisc.fill", MapTone::gray,
     "|iso|img|dmg|qcow2|vdi|vmdk|vhd|vhdx|raw-disk|squashfs|snap|appimage|"},
    {"photo.fill", MapTone::green,
     "|jpg|jpeg|png|gif|heic|heif|webp|tiff|tif|bmp|svg|raw|cr2|nef|arw|dng|psd|xcf|avif|ico|"},
    {"shippingbox.fill", MapTone::yellow,
     "|deb|rpm|pkg|apk|msi|flatpak|crate|gem|nupkg|"},
    {"sparkles", MapTone::violet,
     "|gguf|safetensors|onnx|pt|pth|ckpt|tflite|h5|bin-model|"},
    {"textformat", MapTone::violet,
     "|ttf|otf|woff|woff2|"},
};
// clang-format on

using Table = std::unordered_map<std::string_view, const Look*>;

template <std::size_t count>
Table tableOf(const Look (&looks)[count]) {
    Table table;
    for (const Look& look : looks)
        for (std::size_t begin = 1; begin < look.names.size();) {
            const std::size_t end = look.names.find('|', begin);
            table.emplace(look.names.substr(begin, end - begin), &look);
            begin = end + 1;
        }
    return table;
}

const Look* find(const Table& table, std::string_view name) {
    const auto found = table.find(name);
    return found == table.end() ? nullptr : found->second;
}

} // namespace

StorageItemVisual StorageItemVisual::resolve(const DiskUsageEntry& entry, bool project) {
    static const Table names = tableOf(familiarNames);
    static const Table extensions = tableOf(familiarExtensions);
    if (entry.path.starts_with("__")) return {"square.stack.3d.up.fill", MapTone::gray};
    if (entry.path == "/") return {"gearshape.2.fill", MapTone::gray};
    const std::string name = caseFoldedUtf8(entry.name);
    if (const Look* look = entry.directory ? find(names, name) : nullptr) return {look->symbol, look->color};
    if (project) return {"chevron.left.forwardslash.chevron.right", MapTone::blue};
    const std::size_t dot = name.rfind('.');
    if (dot != std::string::npos && dot > 0)
        if (const Look* look = find(extensions, std::string_view(name).substr(dot + 1)))
            if (!entry.directory) return {look->symbol, look->color};
    return {entry.directory ? "folder.fill" : "doc.fill", MapTone::gray};
}

} // namespace varnet
