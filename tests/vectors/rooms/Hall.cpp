#include "VarnetCore/Hall/FlameBadge.h"
#include "VarnetCore/Hall/FlameCollection.h"
#include "VarnetCore/Hall/FlameWeek.h"
#include "tests/vectors/Operations.h"
#include "tests/vectors/RecordJson.h"

#include <algorithm>
#include <array>

namespace varnet::vectors {
namespace {

Json tree(const FlameArchive& archive) {
    return Json::parse(archive.encode());
}

Json decode(const Json& input) {
    const auto archive = FlameArchive::decode(readText(input, "text"));
    if (!archive) return {{"error", "decoding"}};
    // Decoding what was encoded must lose nothing.
    if (FlameArchive::decode(archive->encode()) != archive) return {{"error", "round trip"}};
    return {{"archive", tree(*archive)}};
}

FlameArchive archiveWith(const Json& input) {
    FlameArchive archive;
    archive.timezone = readText(input, "timezone");
    for (const Json& day : at(input, "days"))
        archive.days.push_back({.date = Date{day.get<double>()}});
    for (const auto& [key, value] : at(input, "metrics").items())
        archive.metrics[key] = *numberOf(value);
    for (const auto& [id, date] : at(input, "unlocked").items())
        archive.unlocked[id] = Date{date.get<double>()};
    return archive;
}

Json dates(const std::vector<FlameDay>& days) {
    Json list = Json::array();
    for (const FlameDay& day : days)
        list.push_back(day.date.seconds);
    return list;
}

Json dayIndex(const Json& input) {
    FlameCollection collection(archiveWith(input));
    const std::size_t index = collection.dayIndex(readDate(input, "date").value_or(Date{}));
    return {{"index", index}, {"days", dates(collection.archive().days)}};
}

Json award(const Json& input) {
    FlameCollection collection(archiveWith(input));
    const auto earned = collection.award(readDate(input, "at").value_or(Date{}));
    return {{"earned", earned}, {"unlocked", tree(collection.archive()).at("unlocked")}};
}

Json badgeProgress(const Json& input) {
    return progress(archiveWith(input), *FlameBadge::named(readText(input, "badge")));
}

Json week(const Json& input) {
    const FlameWeek week =
        FlameWeek::containing(archiveWith(input), readDate(input, "date").value_or(Date{}));
    return {{"start", week.start.seconds},
            {"end", week.end.seconds},
            {"days", dates(week.days)},
            {"badges", week.badges}};
}

GroupKind readKind(const Json& input) {
    constexpr std::array kinds{GroupKind::application, GroupKind::project, GroupKind::system,
                               GroupKind::unassigned};
    const std::string name = readText(input, "kind");
    return *std::ranges::find(kinds, name, [](GroupKind kind) { return rawValue(kind); });
}

std::vector<StopResult> readResults(const Json& list) {
    constexpr std::array outcomes{StopOutcome::stopped,      StopOutcome::alreadyStopped,
                                  StopOutcome::stillRunning, StopOutcome::identityChanged,
                                  StopOutcome::denied,       StopOutcome::failed};
    std::vector<StopResult> results;
    for (const Json& json : list) {
        const Json& target = at(json, "target");
        const std::string name = readText(json, "outcome");
        results.push_back(
            {{readIdentity(at(target, "identity")), readInteger<std::uint32_t>(target, "uid").value_or(0),
              readText(target, "name")},
             *std::ranges::find(outcomes, name, [](StopOutcome outcome) { return rawValue(outcome); }),
             readText(json, "detail")});
    }
    return results;
}

FlameCollection::Earned run(FlameCollection& collection, const Json& step) {
    const std::string op = readText(step, "op");
    const Json& input = at(step, "input");
    const Date when = readDate(input, "at").value_or(Date{});
    if (op == "observe") {
        Json snapshot = at(input, "snapshot");
        if (!snapshot.contains("logicalCores")) snapshot["logicalCores"] = 8;
        return collection.observe(readSnapshot(snapshot));
    }
    if (op == "inspect") return collection.inspect(readKind(input), when);
    if (op == "stoppedService")
        return collection.stoppedService(readIdentity(at(input, "identity")),
                                         readResults(at(input, "results")), readFlag(input, "forgotten"),
                                         when);
    if (op == "cleaned")
        return collection.cleaned(*readInteger<std::int64_t>(input, "folders"),
                                  *readInteger<std::uint64_t>(input, "bytes"), when);
    throw std::runtime_error("unknown step " + op);
}

/// A step names only what it changes of the archive; all else must be as it was.
std::optional<Difference> checkCollection(const Json& vector) {
    Rules rules;
    rules.relative = 1e-6;
    rules.floor = 1;
    rules.absentMayBeZero = true;
    rules.dateKeys.insert({"previous", "started", "qualifiedDays", "cleanupDays"});
    rules.setKeys = {"qualifiedDays", "cleanupDays", "tools", "inspectedKinds"};
    Json archive = vector.at("input").at("archive");
    FlameCollection collection(FlameArchive::decode(archive.dump()).value());
    for (std::size_t number = 0; const Json& step : vector.at("steps")) {
        Json expected = step.at("expect");
        archive.update(expected.at("archive"));
        expected["archive"] = archive;
        const auto earned = run(collection, step);
        const Json got{{"earned", earned},
                       {"previous", collection.previous() ? Json(collection.previous()->seconds) : Json()},
                       {"quietSeconds", collection.quietSeconds()},
                       {"previouslyQuiet", collection.previouslyQuiet()},
                       {"archive", tree(collection.archive())}};
        if (auto difference = firstDifference(expected, got, rules)) {
            difference->path = "[" + std::to_string(number) + "]" + difference->path;
            return difference;
        }
        ++number;
    }
    return std::nullopt;
}

Rules decoding() {
    Rules rules;
    rules.setKeys = {"qualifiedDays", "cleanupDays", "tools", "inspectedKinds"};
    rules.dateKeys.insert({"started", "qualifiedDays", "cleanupDays"});
    return rules;
}

Rules calendar() {
    Rules rules;
    rules.dateKeys.insert({"start", "end", "days"});
    return rules;
}

const Room room{
    {"FlameArchive.decode", answering(decode, decoding())},
    {"dayIndex", answering(dayIndex, calendar())},
    {"award", answering(award)},
    {"progress", answering(badgeProgress)},
    {"week", answering(week, calendar())},
    {"FlameCollection", checkCollection},
};

} // namespace
} // namespace varnet::vectors
