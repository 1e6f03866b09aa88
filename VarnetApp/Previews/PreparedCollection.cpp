#include "VarnetApp/Previews/PreparedCollection.h"

#include "VarnetApp/Previews/PreparedMachine.h"

namespace varnet {

namespace {

constexpr double day = 86'400;

FlameArchive begun(double daysAgo) {
    FlameArchive archive;
    archive.started = PreparedMachine::now() - daysAgo * day;
    archive.timezone = "Europe/Prague";
    return archive;
}

/// What one day of the prepared weeks holds.
struct PreparedDay {
    double daysAgo;
    int stops;
    int ghosts;
    int folders;
    std::uint64_t trashBytes;
    double peakCPU;
    double appetite;
};

void add(FlameArchive& archive, const PreparedDay& prepared) {
    const Date moment = PreparedMachine::now() - prepared.daysAgo * day;
    FlameDay entry;
    entry.date = archive.calendar().startOfDay(moment);
    entry.seconds = 5.5 * 3600;
    entry.peakCPU = prepared.peakCPU;
    entry.stops = prepared.stops;
    entry.ghosts = prepared.ghosts;
    entry.folders = prepared.folders;
    entry.trashBytes = prepared.trashBytes;
    entry.topApp = FlameRecord{"app", "Meridian Browser", prepared.appetite, moment};
    archive.days.push_back(std::move(entry));
}

} // namespace

FlameArchive PreparedCollection::started() {
    FlameArchive archive = begun(68);
    for (const PreparedDay& prepared : {
             PreparedDay{12, 3, 1, 0, 0, 71, 22},
             PreparedDay{10, 2, 0, 2, 2'400'000'000, 88, 71},
             PreparedDay{8, 1, 1, 0, 0, 64, 19},
             PreparedDay{5, 2, 1, 0, 0, 58, 18},
             PreparedDay{4, 4, 2, 0, 0, 94, 31},
             PreparedDay{2, 1, 0, 3, 4'600'000'000, 61, 24},
             PreparedDay{1, 3, 1, 4, 7'700'000'000, 83, 27},
             PreparedDay{0, 1, 0, 0, 0, 52, 12},
         })
        add(archive, prepared);
    archive.metrics = {{"seconds", 264'000}, {"inspections", 3}, {"ghosts", 7},
                       {"cleanups", 3},      {"cleanupDays", 2}, {"trashBytes", 12'300'000'000.0},
                       {"quietBest", 1'120}, {"days", 12},       {"tools", 3},
                       {"duplicate", 1}};
    const char* const earlier[] = {"first-light", "detective",   "ghost",   "spring", "light-pack",
                                   "quiet",       "field-notes", "regular", "double"};
    double ago = 60;
    for (const char* const badge : earlier)
        archive.unlocked[badge] = PreparedMachine::now() - (ago -= 5) * day;
    for (const char* const badge : {"ghost-patrol", "baggage", "team"})
        archive.unlocked[badge] = PreparedMachine::now() - 2 * day;
    const Date lately = PreparedMachine::now() - 9 * day;
    archive.records = {
        {"app", {"app", "Meridian Browser", 71, lately}},
        {"leftover", {"leftover", "A possibly forgotten server", 26.0 * 3600 + 14 * 60, lately}},
        {"cleanup", {"cleanup", "Largest reviewed cleanup", 7'700'000'000.0, lately}},
    };
    return archive;
}

FlameArchive PreparedCollection::fresh() {
    FlameArchive archive = begun(0);
    archive.metrics = {{"seconds", 21}, {"quietBest", 150}, {"inspections", 1}};
    return archive;
}

} // namespace varnet
