#include "VarnetApp/Platform/linux/BoundedFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>

namespace varnet::platform {

namespace {

class Descriptor {
public:
    explicit Descriptor(int number) noexcept : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0) {
            ::close(number_);
        }
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int get() const noexcept { return number_; }

private:
    const int number_;
};

} // namespace

std::optional<std::string> readBoundedFile(const std::string& path, std::size_t limit) {
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (file.get() < 0) {
        return std::nullopt;
    }
    struct stat status{};
    if (::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    std::string text;
    std::array<char, 4096> piece;
    for (;;) {
        const ssize_t count = ::read(file.get(), piece.data(), piece.size());
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0 || text.size() + static_cast<std::size_t>(count) > limit) {
            return std::nullopt;
        }
        if (count == 0) {
            return text;
        }
        text.append(piece.data(), static_cast<std::size_t>(count));
    }
}

} // namespace varnet::platform
