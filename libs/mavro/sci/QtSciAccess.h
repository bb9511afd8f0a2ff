#pragma once

class QsciScintillaBase;

namespace mavro {

// Gives editors an accessible interface of ours. To be called once an editor's widget has been
// made: the toolkit asks the interface installed last.
void InstallSciAccess();

// Tells screen readers that the caret has moved, and that text is about to come or go. Does
// nothing while nobody listens.
void TellAccessCaret(QsciScintillaBase& sci);
void TellAccessChange(QsciScintillaBase& sci, int position, int modification, const char* text,
                      int length);

}  // namespace mavro
