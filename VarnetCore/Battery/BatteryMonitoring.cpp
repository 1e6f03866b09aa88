#include "VarnetCore/Battery/BatteryMonitoring.h"

#include "VarnetCore/Base/AtomicFile.h"
#include "VarnetCore/Base/SmallFile.h"
#include "VarnetCore/Base/Uuid.h"
#include "VarnetCore/Battery/BatteryArchive.h"

#include <cstddef>
#include <utility>

namespace varnet {

namespace {

/// Several times what the fullest history takes.
constexpr std::size_t fileLimit = std::size_t{32} << 20U;

} // namespace

BatteryMonitoring::BatteryMonitoring(const std::filesystem::path& directory, Date now)
    : url(directory / "battery-history.json"),
      reading(BatteryReading::missing(BatteryAvailability::unavailable, Date::distantPast())) {
    if (!mayExist(url)) return;
    const auto text = readSmallTextFile(url.string(), fileLimit);
    auto archive = text ? BatteryArchive::decode(*text) : std::nullopt;
    if (!archive || archive->version != BatteryArchive::currentVersion) {
        canSave = false;
        warning = "Saved battery history couldn’t be opened. Live readings work, but new history won’t be "
                  "saved.";
        return;
    }
    archive->prune(now);
    tracker = BatteryTracker(std::move(*archive));
}

void BatteryMonitoring::save() {
    if (!canSave) return;
    auto failure = AtomicFile::makePrivateFolder(url.parent_path());
    if (!failure) failure = AtomicFile::write(url, tracker.archive().encode());
    if (failure) {
        warning = "Battery history could not be saved. Live readings still work.";
    } else {
        warning.reset();
    }
}

std::optional<std::string> BatteryMonitoring::restore(BatteryArchive archive, Date now) {
    if (mayExist(url)) {
        const auto copy = url.parent_path() / ("battery-before-restore-" + Uuid::random().text() + ".json");
        if (auto failure = AtomicFile::copy(url, copy)) return failure;
    }
    archive.prune(now);
    tracker = BatteryTracker(std::move(archive));
    reading.date = Date::distantPast();
    save();
    return warning;
}

} // namespace varnet
