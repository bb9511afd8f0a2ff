#pragma once

namespace mavro {

// Puts the toolkit's message boxes and standard dialogs into the table of dialogs.
void InstallQtDialogs();

}  // namespace mavro
