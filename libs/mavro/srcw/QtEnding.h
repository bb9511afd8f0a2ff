#pragma once

namespace mavro {

// Watches for the end of the desktop's session, once the toolkit's application object exists.
void InstallEnding();

// The session is about to end: the program's keeper is called; without one nothing happens.
void KeepForEnd();
// The session has ended. False when the program has no keeper: then the toolkit closes its windows.
// Otherwise doesn't return.
bool EndWithSession();

}  // namespace mavro
