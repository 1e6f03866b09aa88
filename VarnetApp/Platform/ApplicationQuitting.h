#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace varnet {
class ApplicationCatalog;
}

namespace varnet::platform {

/// A running application, held by the process it is and not by its number: once it has ended, nothing else
/// can be taken for it. No operation waits. Main thread only.
class QuittableApplication {
public:
    virtual ~QuittableApplication() = default;

    /// ApplicationDescriptor::bundlePath, as it stands now.
    virtual std::string bundlePath() const = 0;
    /// Asks it to finish; it may refuse, or ask its user first. @return false when it could not be asked
    virtual bool terminate() = 0;
    /// Ends it at once. @return false when that could not be done
    virtual bool forceTerminate() = 0;
    virtual bool isTerminated() = 0;
};

/// Finds applications to quit. Main thread only.
class ApplicationQuitting {
public:
    struct Identity {
        std::uint64_t start = 0; ///< microseconds since 1970
        std::uint32_t uid = 0;   ///< the effective user
    };

    virtual ~ApplicationQuitting() = default;

    /// Who has a pid now; empty: nobody living, or it cannot be read.
    virtual std::optional<Identity> identity(std::int32_t pid) = 0;
    /// Whether a pid is in use: 0, ESRCH when it is not, otherwise an errno value.
    virtual std::int32_t exists(std::int32_t pid) = 0;
    /// The application whose main process has this pid now; null: none.
    virtual std::unique_ptr<QuittableApplication> find(std::int32_t pid) = 0;
};

/// That of this machine.
/// @param catalog knows what is an application; outlives the result
std::unique_ptr<ApplicationQuitting> makeApplicationQuitting(ApplicationCatalog& catalog);

} // namespace varnet::platform
