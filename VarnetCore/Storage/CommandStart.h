#pragma once

#include "VarnetCore/Storage/BoundedCommand.h"

#include <sys/types.h>

#include <memory>

namespace varnet {

/// What each kernel does in its own way for a program that is run: confining it, keeping its output within
/// its limit, and telling of its end.
class CommandStart {
public:
    /// @param command outlives the object
    explicit CommandStart(const BoundedCommand& command);
    CommandStart(const CommandStart&) = delete;
    CommandStart& operator=(const CommandStart&) = delete;
    ~CommandStart();

    /// To be called once. Throws std::system_error where there are no more threads.
    /// @return the program's pid, to be collected by the caller; -1 when it could not be started
    pid_t start();

    /// Waits for the end of the program, so many milliseconds at most. It may return before, and looks after
    /// what the program must wait for.
    void wait(int milliseconds);

private:
    struct Kernel;
    const std::unique_ptr<Kernel> kernel_;
};

} // namespace varnet
