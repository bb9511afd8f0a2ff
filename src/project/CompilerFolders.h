#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zendry {

// The folders of headers that a compiler of gcc's kind names in its report of "-E -v", in its
// order; empty if the text isn't such a report.
std::vector<std::string> FoldersInReport(std::string_view report);

// The folders that a compiler searches for headers by itself. It is asked once and the answer is
// kept for as long as the program runs; to be called for a command of the user only. If it can't be
// asked, the usual folders of the machine.
const std::vector<std::string>& CompilerFolders(const std::string& compiler, bool isCpp);

}  // namespace zendry
