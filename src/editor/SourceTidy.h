#pragma once

#include <string>

namespace zendry {

class CppEditor;

// Formats the source of an editor, or the lines of its selection: by clang-format with the style
// file that lies nearest above the source, else with a style made of the source's own habits;
// without clang-format, the lines are indented anew by our own rules. Only what differs is
// replaced, in one undo step. Nothing is changed if clang-format fails, takes too long or prints
// anything but its list of replacements. Returns what to say to the user.
std::string TidySource(CppEditor& editor);

// The nearest ".clang-format" or "_clang-format" in a file's folder or above it; empty if there is
// none.
std::string NearestStyle(const std::string& path);

}  // namespace zendry
