#pragma once

class QsciScintillaBase;

namespace mavro {

// Gives editors our own accessible interface. Call it after an editor's widget has been made: the
// toolkit asks the interface installed last.
void InstallSciAccess();

// Tells screen readers that the caret has moved, and that text is about to be inserted or deleted.
// Does nothing if no screen reader listens.
void NotifyAccessCaret(QsciScintillaBase& sci);
void NotifyAccessChange(QsciScintillaBase& sci, int position, int modification, const char* text,
                        int length);

}  // namespace mavro
