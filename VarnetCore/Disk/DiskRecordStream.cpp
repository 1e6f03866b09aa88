#include "VarnetCore/Disk/DiskRecordStream.h"

#include <cstring>
#include <type_traits>
#include <utility>

namespace varnet {

static_assert(std::is_trivially_copyable_v<DiskRecord>);

std::optional<DiskRecord> DiskRecordStream::next(const Chunk& chunk, std::size_t& position,
                                                 std::string_view& path) {
    if (position >= chunk.bytes.size()) return std::nullopt;
    DiskRecord record;
    std::memcpy(&record, chunk.bytes.data() + position, sizeof record);
    path = std::string_view(chunk.bytes.data() + position + sizeof record, record.pathLength);
    position += sizeof record + record.pathLength;
    return record;
}

void DiskRecordStream::add(const DiskRecord& record, std::string_view path) {
    std::vector<char>& bytes = filling_->bytes;
    const std::size_t begin = bytes.size();
    bytes.resize(begin + sizeof record + path.size());
    DiskRecord counted = record;
    counted.pathLength = static_cast<std::uint32_t>(path.size());
    std::memcpy(bytes.data() + begin, &counted, sizeof counted);
    path.copy(bytes.data() + begin + sizeof counted, path.size()); // a path of no bytes may lie nowhere
    if (bytes.size() >= chunkSize) send();
}

void DiskRecordStream::publish(DiskUsageScan scan) {
    filling_->publish = std::make_unique<DiskUsageScan>(std::move(scan));
    send();
}

void DiskRecordStream::end() {
    if (!filling_->bytes.empty()) send();
    const std::lock_guard guard(lock_);
    ended_ = true;
    changed_.notify_all();
}

void DiskRecordStream::send() {
    std::unique_lock guard(lock_);
    changed_.wait(guard, [this] { return sent_.size() < mostChunks; });
    sent_.push_back(std::move(filling_));
    if (free_.empty()) {
        filling_ = std::make_unique<Chunk>();
        filling_->bytes.reserve(chunkSize + 4096);
    } else {
        filling_ = std::move(free_.back());
        free_.pop_back();
    }
    changed_.notify_all();
}

std::unique_ptr<DiskRecordStream::Chunk> DiskRecordStream::take() {
    std::unique_lock guard(lock_);
    changed_.wait(guard, [this] { return !sent_.empty() || ended_; });
    if (sent_.empty()) return nullptr;
    std::unique_ptr<Chunk> chunk = std::move(sent_.front());
    sent_.pop_front();
    changed_.notify_all();
    return chunk;
}

void DiskRecordStream::giveBack(std::unique_ptr<Chunk> chunk) {
    chunk->bytes.clear();
    chunk->publish.reset();
    const std::lock_guard guard(lock_);
    if (free_.size() < mostChunks) free_.push_back(std::move(chunk));
}

} // namespace varnet
