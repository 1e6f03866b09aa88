#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace varnet::platform {

/// Undoes the service manager's escaping: "\x2d" is "-". What is no complete escape stays as it is.
std::string unescapeUnitName(std::string_view text);

/// The desktop ids that a unit may stand for, the likeliest first; empty when its name is none that a
/// launcher gives to an application. Launchers should escape the dashes inside an id and many do not, so
/// where launcher, id and random part meet is a guess: the first of these that is installed decides.
///
/// Understood: `app[-LAUNCHER]-ID-RANDOM.scope`, the same as a service or slice, with `@` before the random
/// part or without one; `dbus-:CONNECTION-ID@N.service`; `snap.NAME.APP-UUID.scope` and
/// `snap.NAME.APP.UUID.scope`.
std::vector<std::string> applicationIDs(std::string_view unit);

} // namespace varnet::platform
