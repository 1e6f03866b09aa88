#pragma once

#include <unistd.h>

namespace varnet {

/// A file descriptor that is closed with the object; one below zero is none.
class OwnedDescriptor {
public:
    explicit OwnedDescriptor(long number) noexcept : number_(static_cast<int>(number)) {}
    OwnedDescriptor(const OwnedDescriptor&) = delete;
    OwnedDescriptor& operator=(const OwnedDescriptor&) = delete;
    ~OwnedDescriptor() {
        if (number_ >= 0) close(number_);
    }
    int number() const noexcept { return number_; }

private:
    const int number_;
};

} // namespace varnet
