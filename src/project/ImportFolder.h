#pragma once

#include <string>

#include "project/Import.h"

namespace zendry {

// Lists the sources, headers and resource scripts of a folder and the folders in it, sorted by
// name. Reads no file. Hidden folders, those of builds, and those of tests, examples and other
// systems are left out; links to folders are not followed. The latter are taken after all if
// nothing else is there.
Import ListFolder(const std::string& folder);

// Reads the files listed, as far as they have not been read yet, and settles what follows from the
// files taken: the sources that others include, the program's `main` (see ChooseMain), the folders
// that headers are found in, libraries of the system that they belong to, and what is missing. May
// be called again after files were ticked or unticked. Answers ChooseMain's error.
std::string SettleImport(Import& import, const std::string& wantedMain);

}  // namespace zendry
