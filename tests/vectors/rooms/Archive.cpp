#include "VarnetCore/Monitoring/SessionArchive.h"
#include "tests/vectors/Operations.h"

namespace varnet::vectors {

// Written here once more, so that an encoder and a decoder with the same fault cannot hide it.
VARNET_RECORD(SavedLineage, identity, attribution, lastSeen)
VARNET_RECORD(HistoryRecord, id, date, title, detail)
VARNET_RECORD(SessionArchive, lineage, actions, ignored, roastChoices)

namespace {

Json decode(const Json& input) {
    const auto archive = SessionArchive::decode(readText(input, "json"));
    return {{"decoded", archive.has_value()}, {"archive", written(archive.value_or(SessionArchive{}))}};
}

Json encode(const Json& input) {
    return Json::parse(read<SessionArchive>(input, "archive").encode());
}

SessionArchive prune(const Json& input) {
    auto archive = read<SessionArchive>(input, "archive");
    archive.prune(readDate(input, "now"), read<std::unordered_set<ProcessIdentity>>(input, "live"));
    return archive;
}

// The numbers of an archive are moments and integers.
const Room room{
    {"SessionArchive.decode", answering(decode, {.exactNumbers = true})},
    {"SessionArchive.encode", answering(encode, {.exactNumbers = true, .exactKeys = true})},
    {"SessionArchive.prune", answering(prune, {.exactNumbers = true})},
};

} // namespace
} // namespace varnet::vectors
