// A key's file that is understood signs, and one that is not is refused and left as it was.

#include "VarnetApp/CloudStore/InstallationKey.h"
#include "VarnetCore/Base/SmallFile.h"
#include "VarnetCore/Base/Uuid.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/Require.h"

using namespace varnet;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // A file that is nowhere on a disk.
    static const int file = memfd_create("key", MFD_CLOEXEC);
    static const std::string path = "/proc/self/fd/" + std::to_string(file);
    require(file >= 0 && ftruncate(file, 0) == 0);
    require(pwrite(file, data, size, 0) == static_cast<ssize_t>(size));
    if (const auto key = InstallationKey::open(path)) {
        require(Uuid::fromText(key->installationID()).has_value());
        require(!key->publicKey().empty() && !key->sign("anything").empty());
    }
    const std::string_view before(reinterpret_cast<const char*>(data), size);
    require(readSmallFile(path, size) == before);
    return 0;
}
