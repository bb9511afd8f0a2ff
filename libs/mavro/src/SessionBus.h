#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace mavro {

// The toolkit uses the desktop's session bus. If the environment names none, it starts a program
// that makes one: "dbus-launch", from any folder in PATH, even a project's folder. Our start must
// not run any program, so the toolkit always has a bus to use or an address that starts none.

constexpr char cBusVariable[] = "DBUS_SESSION_BUS_ADDRESS";

// The value that replaces `given` for the toolkit; no value if `given` can be kept. `isBusThere`
// says that the user's bus is in the place that the toolkit tries before it starts a program.
std::optional<std::string> SafeBusAddress(std::string_view given, bool isBusThere);

// Changes our own environment so that no bus is started. Called once, before the toolkit begins.
void KeepBusFromStarting();

// The entry that child programs get instead of ours; no value if they get ours, an empty text if
// there was no entry.
const std::optional<std::string>& BusEntryOfChildren();

}  // namespace mavro
