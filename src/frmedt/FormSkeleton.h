#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "FileText.h"

namespace zendry {

// The source of a new form.
class FormSkeleton {
 public:
  // Strings of the class, and of the source with its `Initialize`. A writer of lines ends each with
  // a line feed of its own.
  std::vector<std::string> Header() const;
  std::vector<std::string> Source() const;
  // The text of a file: the strings with a line feed after each.
  static std::string FileOf(const std::vector<std::string>& strings);
  // Writes base + ".h", and base + ".cpp" with `split`, with the heading. Sets the paths. A file
  // of such a name is replaced, so the caller asks first.
  mavro::FileResult WriteFiles(const std::string& base);

  std::string className;
  bool split = false;        // `Initialize` is in a source of its own
  bool withMain = false;     // with the program's main function, if it is split
  bool withHeading = false;  // with the lines before the class in a header
  std::string headerPath;
  std::string sourcePath;  // empty if there is none
};

// A template's text: each "@C" becomes the name of the class and each "@B" the word "Form"; "@" and
// any other letter go.
std::string FillTemplate(std::string_view text, std::string_view className);

}  // namespace zendry
