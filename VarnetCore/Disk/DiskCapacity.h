#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace varnet {

/// How large the startup disk is.
struct DiskCapacity {
    std::string name;
    std::uint64_t total = 0; ///< bytes, above zero
    std::uint64_t free = 0;  ///< bytes that this user may still fill

    /// Asks the file systems that a scan of the whole disk walks, each disk once. Empty when the first of
    /// them does not answer.
    static std::optional<DiskCapacity> read();

    friend bool operator==(const DiskCapacity&, const DiskCapacity&) = default;
};

} // namespace varnet
