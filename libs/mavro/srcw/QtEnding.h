#pragma once

namespace mavro {

// Watches for the end of the desktop's session, once the toolkit's application object exists.
void InstallEnding();

// Called when the session is about to end: calls the program's keeper, if there is one.
void KeepForEnd();
// Called when the session has ended. False if the program has no keeper: then the toolkit closes
// its windows. Otherwise it doesn't return.
bool EndWithSession();

}  // namespace mavro
