#pragma once

#include "probes/vn_probes.h"

#include <cstdint>
#include <string>

namespace varnet::probes {

/// As vn_fans, over the hardware monitors of a /sys. Fans are numbered in the order of their chips and, on
/// one chip, of their inputs. Neither an input without a fan at its end nor one marked as faulty is a fan.
std::int32_t fans(const std::string& sys, VNFan* fans, std::int32_t capacity);

} // namespace varnet::probes
