#pragma once

#include <string>
#include <string_view>

namespace zendry {

class Project;

// The text of a project file, and the first value in it that the format can't hold: one with double
// quotes in the wrong places, or of more than some five hundred characters. `unwritable` is empty
// when everything is read again as it was.
struct ProjectText {
  std::string text;
  std::string unwritable;
};

ProjectText WriteProjectText(const Project& project);

// What was found when reading.
struct ProjectReading {
  bool hasElements = false;
  bool isComplete = false;  // the end of the last part was there
  std::string tooLong;      // words on a value that is too long; nothing has been read then
};

// Reads a project file's text into a project that has been initialised. Elements and attributes
// without a meaning are passed over. A text with a value that is too long is not read at all:
// without that value it would be another project. A further resource file brings up one message,
// however many there are.
ProjectReading ReadProjectText(std::string_view text, Project& project);

}  // namespace zendry
