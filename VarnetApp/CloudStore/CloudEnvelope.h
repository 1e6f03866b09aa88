#pragma once

#include "VarnetCore/Base/Date.h"

#include <nlohmann/json_fwd.hpp>

#include <string>

namespace varnet {

class InstallationKey;

/// The form in which an operation is asked for.
namespace CloudEnvelope {

/// Signs an operation with who asks and when. May be called on any thread: a full batch takes some
/// milliseconds.
/// @param values the operation's own keys, an object
/// @return the request's body; empty when it cannot be signed
std::string seal(const InstallationKey& key, const std::string& operation, nlohmann::json values, Date now);

} // namespace CloudEnvelope
} // namespace varnet
