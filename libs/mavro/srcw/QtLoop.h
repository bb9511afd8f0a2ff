#pragma once

class QObject;

namespace mavro {

// Dynamic property of a top-level QWindow whose input is blocked by a modal form.
inline constexpr const char* cBlockedProperty = "mavroBlocked";

// Ties the toolkit's event queue to the framework: keys are offered to accelerators and dialog
// navigation first, blocked windows get no input, blocking waits repaint, an attached child's pipe
// wakes the loop. Call once the toolkit's application object exists; `application` is that object.
void InstallQtLoop(QObject* application);

}  // namespace mavro
