#pragma once

namespace mavro {

// Enters the toolkit's message boxes and standard dialogs in the table of dialogs.
void InstallQtDialogs();

}  // namespace mavro
