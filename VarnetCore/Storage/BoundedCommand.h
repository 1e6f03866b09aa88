#pragma once

#include "VarnetCore/Storage/StorageCancellation.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace varnet {

/// A program of somebody else's to be run to its end, whatever it may try.
struct BoundedCommand {
    std::string program;                  ///< absolute path
    std::vector<std::string> arguments;   ///< without the program's own name
    std::vector<std::string> environment; ///< the whole of it, "NAME=value" each
    /// What it may start besides itself: absolute paths, exactly as they will be called by.
    std::vector<std::string> helpers;
    int output = -1;               ///< descriptor for its standard output
    std::uint64_t outputLimit = 0; ///< bytes; a program that writes more is ended
    double timeout = 0;            ///< seconds

    /// Runs it in a session of its own, without a terminal, without input, with its errors thrown away, and,
    /// where the kernel offers it, confined: see linux/Confinement.h. Returns when it and all that it has
    /// started are gone.
    /// @param token ends it at once when cancelled; null: never
    /// @return its exit status (128 and the signal's number when one ended it); empty when it could not be
    ///         started or had to be ended
    std::optional<std::int32_t> run(const StorageCancellation* token) const;
};

} // namespace varnet
