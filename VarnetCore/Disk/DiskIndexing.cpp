#include "VarnetCore/Disk/DiskIndexing.h"

#include <sqlite3.h>

#include <utility>

namespace varnet {

DiskIndexing::DiskIndexing(DiskUsageIndexWriter writer, Update update)
    : writer_(std::move(writer)), update_(std::move(update)), thread_([this] { run(); }) {}

DiskIndexing::~DiskIndexing() {
    finish();
}

void DiskIndexing::finish() {
    if (!thread_.joinable()) return;
    stream_.end();
    thread_.join();
}

void DiskIndexing::run() {
    const auto note = [this](const DiskIndexResult<>& result) {
        // A name that was told twice is no reason to give up a scan: its folder was changed meanwhile.
        if (!result && result.error().code != SQLITE_CONSTRAINT) failed_ = true;
    };
    while (auto chunk = stream_.take()) {
        std::size_t position = 0;
        std::string_view path;
        while (const auto record = DiskRecordStream::next(*chunk, position, path)) {
            const bool ends =
                record->kind != DiskRecord::Kind::entry && record->kind != DiskRecord::Kind::root;
            if (!failed_ || ends) note(write(*record, path));
        }
        if (chunk->publish) {
            DiskUsageScan scan = std::move(*chunk->publish);
            note(writer_.checkpoint(scan, true));
            if (update_) update_(scan);
        }
        stream_.giveBack(std::move(chunk));
    }
}

DiskIndexResult<> DiskIndexing::write(const DiskRecord& record, std::string_view path) {
    using Kind = DiskRecord::Kind;
    if (record.kind == Kind::root) return writer_.startRoot(path, record.flag);
    if (record.kind != Kind::entry)
        return writer_.finishRoot(record.flag && !failed_, record.kind == Kind::rootFailed);
    if (auto written = writer_.record(path, record.flag, record.bytes, record.isUnreadable); !written)
        return written;
    DiskUsageScan scan;
    scan.entriesRead = record.entriesRead;
    scan.unreadable = record.unreadable;
    scan.skippedVolumes = record.skippedVolumes;
    return writer_.checkpoint(scan, false);
}

} // namespace varnet
