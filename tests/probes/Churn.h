#pragma once

#include <sys/types.h>

#include <filesystem>
#include <vector>

namespace varnet::probes {

/// A crowd of children that do all that a process can do to its entry in the process table: start, take other
/// names and images, change their user, burn CPU, lose their parent, end, and wait to be collected. No name,
/// user, parent or image ever comes back to a process that has had it, so that two equal answers around a
/// third bind the third.
///
/// Orphans go to the crowd's own starters or to the test, never to the machine's first process.
class Churn {
public:
    /// @param images a folder to which the images that children run are copied
    explicit Churn(const std::filesystem::path& images);
    Churn(const Churn&) = delete;
    Churn& operator=(const Churn&) = delete;
    /// Ends the starters and waits for the rest, which ends by itself.
    ~Churn();

private:
    std::vector<pid_t> starters_;
};

} // namespace varnet::probes
