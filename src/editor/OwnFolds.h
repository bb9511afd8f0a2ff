#pragma once

namespace zendry {

class CppEditor;

// True if the program sets the levels of a text's folds. Else the component's lexer counts them.
bool HasOwnFolds(const CppEditor& editor);
void SetOwnFolds(const CppEditor& editor, bool on);

}  // namespace zendry
