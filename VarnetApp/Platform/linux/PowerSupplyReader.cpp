#include "VarnetApp/Platform/BatteryPower.h"
#include "VarnetApp/Platform/linux/PowerSupply.h"
#include "VarnetCore/Base/SmallFile.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace varnet::platform {

namespace {

constexpr std::size_t smallFile = 4096;
constexpr std::size_t mostSupplies = 64;

class PowerSupplyReader final : public BatteryReader {
public:
    explicit PowerSupplyReader(std::string sys) : sys_(std::move(sys)) {}

    BatteryReading read(Date at) override {
        std::vector<PowerSupply> batteries;
        std::vector<PowerSupply> adapters;
        bool allDescribed = true;
        const auto folders = supplies();
        if (!folders) return BatteryReading::missing(BatteryAvailability::unavailable, at);
        for (const std::string& folder : *folders) {
            const auto supply = describe(folder);
            if (!supply) {
                allDescribed = false;
            } else if (supply->kind == PowerSupply::Kind::battery) {
                if (supply->tellsAnything()) {
                    batteries.push_back(*supply);
                } else {
                    allDescribed = false;
                }
            } else if (supply->kind == PowerSupply::Kind::adapter) {
                adapters.push_back(*supply);
            }
        }
        if (batteries.empty()) {
            return BatteryReading::missing(
                allDescribed ? BatteryAvailability::absent : BatteryAvailability::unavailable, at);
        }
        const PowerSupplies all = PowerSupplies::combine(batteries, adapters);
        return BatteryReading::parse(all.power, all.registry, all.adapterWatts, lowPowerMode(), at);
    }

private:
    /// Folders in a fixed order; empty when they cannot be listed. A kernel that knows of no power supplies
    /// at all has none.
    std::optional<std::vector<std::string>> supplies() const {
        std::error_code error;
        std::vector<std::string> folders;
        std::filesystem::directory_iterator entry(sys_ + "/class/power_supply", error);
        if (error == std::errc::no_such_file_or_directory) {
            if (std::filesystem::exists(sys_ + "/class", error)) return folders;
            return std::nullopt;
        }
        if (error) return std::nullopt;
        for (; entry != std::filesystem::directory_iterator(); entry.increment(error)) {
            if (folders.size() < mostSupplies) folders.push_back(entry->path().string());
            if (error) return std::nullopt;
        }
        if (error) return std::nullopt;
        std::ranges::sort(folders);
        return folders;
    }

    /// Empty when not even its type can be read. What is no power supply of the machine is not read further.
    static std::optional<PowerSupply> describe(const std::string& folder) {
        const auto type = readSmallFile(folder + "/type", smallFile);
        if (!type) return std::nullopt;
        PowerSupply supply;
        supply.take("type", *type);
        for (const std::string_view file : PowerSupply::files) {
            if (supply.kind == PowerSupply::Kind::other) break;
            if (file == "type") continue;
            if (const auto text = readSmallFile(folder + "/" + std::string(file), smallFile)) {
                supply.take(file, *text);
            }
        }
        return supply;
    }

    /// As the platform's firmware was last told by whatever manages it.
    bool lowPowerMode() const {
        const auto profile = readSmallFile(sys_ + "/firmware/acpi/platform_profile", smallFile);
        return profile && (*profile == "low-power\n" || *profile == "low-power");
    }

    const std::string sys_;
};

} // namespace

std::unique_ptr<BatteryReader> makeBatteryReader(const std::string& sensorRoot) {
    return std::make_unique<PowerSupplyReader>(sensorRoot.empty() ? "/sys" : sensorRoot);
}

} // namespace varnet::platform
