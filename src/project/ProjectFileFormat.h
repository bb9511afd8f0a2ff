#pragma once

#include <string>
#include <string_view>

namespace zendry {

class Project;

// The text of a project file, and the first value that the format can't hold: it has double quotes
// in the wrong places, or more than about five hundred characters. `unwritable` is empty when a
// reader gets all values back unchanged.
struct ProjectText {
  std::string text;
  std::string unwritable;
};

ProjectText WriteProjectText(const Project& project);

// Why the format can't hold a value, for the user to read; empty if it can.
std::string WhyUnwritable(std::string_view value);

// The result of reading a project file.
struct ProjectReading {
  bool hasElements = false;
  bool isComplete = false;  // the end of the last part was there
  std::string tooLong;      // describes a value that is too long; then nothing was read
};

// Reads a project file's text into a project that has been initialised. Ignores unknown elements
// and attributes. A text with a value that is too long is not read at all: without that value it
// would be a different project. If there is more than one resource file, one message says so.
ProjectReading ReadProjectText(std::string_view text, Project& project);

}  // namespace zendry
