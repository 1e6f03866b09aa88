#pragma once

#include <functional>
#include <memory>
#include <string>

namespace varnet::platform {

/// One running program for each session: a second start asks the first for its window. Main thread only.
class SingleInstance {
public:
    enum class Claim {
        first,  ///< this is the program; it hears of later starts
        second, ///< another one runs: `requestOpen` and leave
        noBus,  ///< cannot be told here; the program simply starts
    };
    struct Handlers {
        /// Somebody has started the program once more, or its launcher was clicked.
        /// @param token lets a window take the focus where the desktop asks for one; else empty
        std::function<void(const std::string& token)> activated;
        /// The same, with something particular in mind.
        /// @param action whatever name was asked for; not empty
        std::function<void(const std::string& action, const std::string& token)> asked;
    };

    virtual ~SingleInstance() = default;

    /// What has come before is kept until the event loop turns, so listening right after the claim is enough.
    virtual void listen(Handlers handlers) = 0;

    virtual Claim claim() = 0;

    /// Asks the first for its window and waits for its answer, five seconds at most.
    /// @return whether it has answered
    virtual bool requestOpen() = 0;
    /// The same for one of its actions.
    virtual bool requestAction(const std::string& action) = 0;
};

/// That of this session. The application object must exist; the token of this start is taken from the
/// environment as it is now.
std::unique_ptr<SingleInstance> makeSingleInstance();

} // namespace varnet::platform
