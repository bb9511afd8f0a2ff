#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/Paths.h"

namespace zendry {

// Gives files of an extension the kind of C++ or C sources or headers, beside the fixed table of
// FileKind. The case of the extension's letters counts, and it goes before the table: "C" may be
// C++, with "c" still C. Other kinds are ignored. Called at start.
void AddFileKind(std::string_view extension, int kind);

// The extensions of a kind, those of the table first, then those that were added.
std::vector<std::string> ExtensionsOf(int kind);

// The patterns "*.cpp;*.cp;..." of all C++ and C sources and headers, for file dialogs.
std::string SourcePatterns();

// Leaves only the fixed table.
void ForgetAddedFileKinds();

}  // namespace zendry
