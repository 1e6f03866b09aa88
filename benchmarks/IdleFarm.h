#pragma once

#include <sys/types.h>

#include <vector>

namespace varnet {

/// So many children that do nothing but sleep, gone with their farm or with the program.
class IdleFarm {
public:
    explicit IdleFarm(int count);
    IdleFarm(const IdleFarm&) = delete;
    IdleFarm& operator=(const IdleFarm&) = delete;
    ~IdleFarm();

    /// How many could be started.
    std::size_t size() const noexcept { return children_.size(); }

private:
    std::vector<pid_t> children_;
};

} // namespace varnet
