#include "VarnetApp/FlameCollectionStore/CollectionFile.h"

#include "VarnetCore/Base/AtomicFile.h"
#include "VarnetCore/Base/SmallFile.h"
#include "VarnetCore/Base/Uuid.h"

namespace varnet::CollectionFile {

std::optional<FlameArchive> read(const std::filesystem::path& file) {
    const auto text = readSmallTextFile(file.string(), tooLarge - 1);
    auto archive = text ? FlameArchive::decode(*text) : std::nullopt;
    if (archive && archive->schema != FlameArchive::currentSchema) archive.reset();
    return archive;
}

std::optional<std::string> write(const std::filesystem::path& file, const FlameArchive& archive) {
    if (auto failure = AtomicFile::makePrivateFolder(file.parent_path())) return failure;
    return AtomicFile::write(file, archive.encode());
}

std::optional<std::string> replace(const std::filesystem::path& file, const FlameArchive& archive) {
    // It comes from elsewhere, and the next start would not look into it.
    if (archive.encode().size() >= tooLarge) return "The collection is too large.";
    if (mayExist(file)) {
        const std::string copy = "collection-before-restore-" + Uuid::random().text() + ".json";
        if (auto failure = AtomicFile::copy(file, file.parent_path() / copy)) return failure;
    }
    return write(file, archive);
}

} // namespace varnet::CollectionFile
