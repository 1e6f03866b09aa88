#include "VarnetCore/Hall/FlameBadge.h"
#include "VarnetCore/Hall/FlameCollection.h"
#include "VarnetCore/Hall/FlameWeek.h"
#include "tests/vectors/Operations.h"

namespace varnet::vectors {

VARNET_RECORD(StopResult, target, outcome, detail)

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
    for (const Date day : read<std::vector<Date>>(input, "days"))
        archive.days.push_back({.date = day});
    readInto(archive.metrics, at(input, "metrics"));
    readInto(archive.unlocked, at(input, "unlocked"));
    return archive;
}

Json dates(const std::vector<FlameDay>& days) {
    return mapped(days, [](const FlameDay& day) { return day.date; });
}

Json dayIndex(const Json& input) {
    FlameCollection collection(archiveWith(input));
    const std::size_t index = collection.dayIndex(readDate(input, "date"));
    return {{"index", index}, {"days", dates(collection.archive().days)}};
}

Json award(const Json& input) {
    FlameCollection collection(archiveWith(input));
    const auto earned = collection.award(readDate(input, "at"));
    return {{"earned", earned}, {"unlocked", tree(collection.archive()).at("unlocked")}};
}

Json badgeProgress(const Json& input) {
    return progress(archiveWith(input), *FlameBadge::named(readText(input, "badge")));
}

Json week(const Json& input) {
    const FlameWeek week = FlameWeek::containing(archiveWith(input), readDate(input, "date"));
    return {{"start", week.start.seconds},
            {"end", week.end.seconds},
            {"days", dates(week.days)},
            {"badges", week.badges}};
}

FlameCollection::Earned run(FlameCollection& collection, const Json& step) {
    const std::string op = readText(step, "op");
    const Json& input = at(step, "input");
    const Date when = readDate(input, "at");
    if (op == "observe") {
        Json snapshot = at(input, "snapshot");
        if (!snapshot.contains("logicalCores")) snapshot["logicalCores"] = 8;
        return collection.observe(read<MonitorSnapshot>(snapshot));
    }
    if (op == "inspect") return collection.inspect(read<GroupKind>(input, "kind"), when);
    if (op == "stoppedService")
        return collection.stoppedService(read<ProcessIdentity>(input, "identity"),
                                         read<std::vector<StopResult>>(input, "results"),
                                         readFlag(input, "forgotten"), when);
    if (op == "cleaned")
        return collection.cleaned(read<std::int64_t>(input, "folders"), read<std::uint64_t>(input, "bytes"),
                                  when);
    throw std::runtime_error("unknown step " + op);
}

Rules decoding() {
    Rules rules;
    rules.setKeys = {"qualifiedDays", "cleanupDays", "tools", "inspectedKinds"};
    rules.dateKeys.insert({"started", "qualifiedDays", "cleanupDays"});
    return rules;
}

/// A step names only what it changes of the archive; all else must be as it was.
std::optional<Difference> checkCollection(const Json& vector) {
    Rules rules = decoding();
    rules.relative = 1e-6;
    rules.floor = 1;
    rules.absentMayBeZero = true;
    rules.dateKeys.insert("previous");
    Json archive = vector.at("input").at("archive");
    FlameCollection collection(FlameArchive::decode(archive.dump()).value());
    return eachStep(vector.at("steps"), [&](const Json& step) {
        Json expected = step.at("expect");
        archive.update(expected.at("archive"));
        expected["archive"] = archive;
        const auto earned = run(collection, step);
        const Json got{{"earned", earned},
                       {"previous", written(collection.previous())},
                       {"quietSeconds", collection.quietSeconds()},
                       {"previouslyQuiet", collection.previouslyQuiet()},
                       {"archive", tree(collection.archive())}};
        return firstDifference(expected, got, rules);
    });
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
