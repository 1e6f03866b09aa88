#pragma once

#include "tests/fakes/TemporaryFolder.h"
#include "tests/vectors/Comparison.h"

#include <filesystem>
#include <string>

namespace varnet::vectors {

/// A temporary folder called "root" with nothing in or above it that a project would have; removed in the
/// end.
class ScratchTree {
public:
    /// @param placeholder what stands for its place in a vector
    explicit ScratchTree(std::string placeholder = "${ROOT}");

    /// Real path of the folder.
    std::string path() const { return root_.string(); }

    /// Applies entries {"path", "type": file | dir | remove, "text" or "hex"}; an entry of another type in
    /// the way is replaced.
    void apply(const Json& entries);

    /// The JSON with the placeholder replaced by the path in every text.
    Json located(const Json& json) const;

private:
    const std::string placeholder_;
    TemporaryFolder outer_;
    const std::filesystem::path root_ = outer_.path() / "root";
};

} // namespace varnet::vectors
