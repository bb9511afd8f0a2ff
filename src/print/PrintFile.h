#pragma once

#include <string>

#include "PrintCommands.h"

namespace zendry {

class CodeSources;
class CppEditor;

// The job of printing an editor's text. The functions of a source are the table of contents.
// `caption` is the name of a text that is in no file yet.
mavro::PrintJob PrintJobOf(CppEditor& editor, const std::string& caption, CodeSources& sources);

}  // namespace zendry
