#pragma once

#include <functional>
#include <memory>
#include <optional>

namespace varnet::platform {

/// How the user wants programs to look. Main thread only. An empty answer means that the desktop has no
/// preference, has not said yet, or has nobody to ask; nothing here waits for it.
class Appearance {
public:
    struct Handlers {
        /// One of the answers differs from before.
        std::function<void()> changed;
    };

    virtual ~Appearance() = default;

    virtual void listen(Handlers handlers) = 0;

    virtual std::optional<bool> prefersDark() const = 0;
    /// Whether things should appear without moving.
    virtual std::optional<bool> reducedMotion() const = 0;
};

/// That of this session; begins to ask at once. The application object must exist.
std::unique_ptr<Appearance> makeAppearance();

} // namespace varnet::platform
