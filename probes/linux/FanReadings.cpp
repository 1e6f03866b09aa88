#include "probes/linux/FanReadings.h"

#include "probes/linux/ParseSensors.h"
#include "probes/linux/ProcText.h"
#include "probes/linux/SensorFolder.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>

namespace varnet::probes {

namespace {

constexpr std::int32_t mostFans = 10;
constexpr std::int64_t fastest = 20'000; ///< revolutions per minute that are believed
constexpr std::size_t smallFile = 64;

class FanReader {
public:
    explicit FanReader(const std::string& sys) : chips_(sys + "/class/hwmon") {}

    std::int32_t read(VNFan* fans, std::int32_t capacity) {
        capacity = std::min(capacity, mostFans);
        std::int32_t count = 0;
        for (const std::uint32_t chip : numberedEntries(chips_, "hwmon")) {
            const std::string folder = chips_ + "/hwmon" + std::to_string(chip);
            for (const std::uint32_t number : numberedEntries(folder, "fan", "_input")) {
                if (count >= capacity) return count;
                const std::string fan = folder + "/fan" + std::to_string(number);
                if (value(fan + "_fault").value_or(0) > 0) continue;
                const auto rpm = value(fan + "_input");
                if (!rpm && (errno == ENODATA || errno == ENXIO)) continue;
                if (!rpm || *rpm < 0 || *rpm > fastest) return -1;
                const auto maximum = value(fan + "_max");
                const bool believed = maximum && *maximum > 0 && *maximum <= fastest && *maximum >= *rpm;
                fans[count] = {.id = count,
                               .rpm = static_cast<double>(*rpm),
                               .maximum = believed ? static_cast<double>(*maximum) : 0};
                ++count;
            }
        }
        return count;
    }

private:
    /// Empty with errno set, to 0 when the file could be read and holds something else.
    std::optional<std::int64_t> value(const std::string& file) {
        const auto text = text_.read(AT_FDCWD, file.c_str(), smallFile);
        if (!text) return std::nullopt;
        errno = 0;
        return parseSensorValue(*text);
    }

    const std::string chips_;
    ProcText text_;
};

} // namespace

std::int32_t fans(const std::string& sys, VNFan* fans, std::int32_t capacity) {
    return FanReader(sys).read(fans, std::max(capacity, 0));
}

} // namespace varnet::probes
