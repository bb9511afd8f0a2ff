#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace mavro {

// The toolkit asks the desktop's session bus, and where none is named it starts a program that
// would make one: "dbus-launch", wherever PATH finds it, be that a project's folder. No start of
// ours may run anything, so the toolkit is never left without a name.

constexpr char cBusVariable[] = "DBUS_SESSION_BUS_ADDRESS";

// The value that the toolkit is to see instead of `given`; nothing when that may stay. `isBusThere`
// says that the user's bus is where it is looked for before a program is started.
std::optional<std::string> SafeBusAddress(std::string_view given, bool isBusThere);

// Changes our own environment so that no bus is started. Called once, before the toolkit begins.
void KeepBusFromStarting();

// The entry that programs we start are to get in the place of our own; nothing when ours is theirs,
// an empty text when they had none.
const std::optional<std::string>& BusEntryOfChildren();

}  // namespace mavro
