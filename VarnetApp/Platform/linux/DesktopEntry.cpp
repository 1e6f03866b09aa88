#include "VarnetApp/Platform/linux/DesktopEntry.h"

#include "VarnetApp/Platform/linux/DesktopEntryText.h"

#include <QUtf8StringView>

#include <algorithm>
#include <cstddef>

namespace varnet::platform {

namespace {

/// Fit for one line on the screen; empty when it cannot be shown.
std::string displayName(std::string_view value) {
    std::string name = unescapedDesktopText(value);
    if (!QUtf8StringView(name.data(), static_cast<qsizetype>(name.size())).isValidUtf8()) {
        return {};
    }
    std::replace_if(name.begin(), name.end(), [](unsigned char c) { return c < 0x20 || c == 0x7f; }, ' ');
    return std::string(trimmedDesktopText(name));
}

struct Key {
    std::string_view name;
    std::string_view locale; ///< empty: the untranslated text
};

Key splitKey(std::string_view key) {
    const std::size_t bracket = key.find('[');
    // An empty pair of brackets is no language, and leaves a key that nobody asks for.
    if (bracket == std::string_view::npos || !key.ends_with(']') || bracket + 2 == key.size()) {
        return {key, {}};
    }
    return {key.substr(0, bracket), key.substr(bracket + 1, key.size() - bracket - 2)};
}

/// Gathers the keys of one group. A key that comes twice counts as it stands last, as desktops have it.
class Reader {
public:
    explicit Reader(std::span<const std::string> tags) : tags_(tags), nameRank_(tags.size() + 1) {}

    void take(std::string_view rawKey, std::string_view value) {
        const Key key = splitKey(rawKey);
        if (key.name == "Name") {
            takeName(key.locale, value);
        } else if (!key.locale.empty()) {
            return;
        } else if (key.name == "Type") {
            isApplication_ = value == "Application";
        } else if (key.name == "Exec") {
            entry_.exec = unescapedDesktopText(value);
        } else if (key.name == "TryExec") {
            entry_.tryExec = unescapedDesktopText(value);
        } else if (key.name == "Icon") {
            entry_.icon = unescapedDesktopText(value);
        } else if (key.name == "X-Flatpak") {
            entry_.flatpak = unescapedDesktopText(value);
        } else if (key.name == "X-SnapInstanceName") {
            entry_.snap = unescapedDesktopText(value);
        } else if (key.name == "X-SnapAppName") {
            entry_.snapApp = unescapedDesktopText(value);
        } else if (key.name == "Hidden") {
            entry_.hidden = isTrueInDesktopEntry(value);
        } else if (key.name == "NoDisplay") {
            entry_.noDisplay = isTrueInDesktopEntry(value);
        } else if (key.name == "Terminal") {
            entry_.terminal = isTrueInDesktopEntry(value);
        }
    }

    std::optional<DesktopEntry> result() && {
        return isApplication_ ? std::optional(std::move(entry_)) : std::nullopt;
    }

private:
    void takeName(std::string_view locale, std::string_view value) {
        const auto rank =
            locale.empty()
                ? tags_.size()
                : static_cast<std::size_t>(std::find(tags_.begin(), tags_.end(), locale) - tags_.begin());
        if ((!locale.empty() && rank == tags_.size()) || rank > nameRank_) {
            return;
        }
        if (std::string name = displayName(value); !name.empty()) {
            entry_.name = std::move(name);
            nameRank_ = rank;
        }
    }

    const std::span<const std::string> tags_;
    std::size_t nameRank_; ///< position of the name's language among the tags; the lower the better
    bool isApplication_ = false;
    DesktopEntry entry_;
};

} // namespace

std::vector<std::string> localeTags(std::string_view locale) {
    std::string_view modifier;
    if (const std::size_t at = locale.find('@'); at != std::string_view::npos) {
        modifier = locale.substr(at);
        locale = locale.substr(0, at);
    }
    locale = locale.substr(0, locale.find('.'));
    if (locale.empty() || locale == "C" || locale == "POSIX") {
        return {};
    }
    const std::string full(locale);
    const std::string language(locale.substr(0, locale.find('_')));
    std::vector<std::string> tags;
    for (const std::string& place : {full, language}) {
        for (const std::string_view suffix : {modifier, std::string_view()}) {
            tags.push_back(place + std::string(suffix));
        }
    }
    return tags;
}

std::optional<DesktopEntry> parseDesktopEntry(std::string_view text,
                                              std::span<const std::string> localeTags) {
    Reader reader(localeTags);
    forEachDesktopKey(text, [&](std::string_view key, std::string_view value) { reader.take(key, value); });
    return std::move(reader).result();
}

} // namespace varnet::platform
