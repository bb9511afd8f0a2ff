#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "frmedt/FormLocator.h"

namespace zendry {

// A statement of a region that the designer wouldn't write back as it is.
struct FormLoss {
  enum class Kind { cLost, cChanged, cMoved };

  // The kind, the statement and what becomes of it, in a line.
  std::string Words() const;

  Kind kind = Kind::cLost;
  bool isInDecl = false;
  int line = 0;         // in the region's lines, from 0; in the file if CheckForm made it
  std::string text;     // the line, without blanks around it
  std::string becomes;  // the statement in its place, or why it is lost; may be empty
  std::string path;     // of the file, if CheckForm made it
};

// The statements of a form that would not come back: the regions are read and written, and the
// statements compared. Blanks between words, and the number of names in a declaration, don't
// count. The lines are those that FormData reads.
std::vector<FormLoss> CheckRegions(const std::vector<std::string>& declLines,
                                   const std::vector<std::string>& initLines);
// The same for a form that has been read from these lines.
std::vector<FormLoss> CompareRegions(const FormData& form,
                                     const std::vector<std::string>& declLines,
                                     const std::vector<std::string>& initLines);

// What there is to tell of a form before it is opened, by lines of its files.
struct FormCheckup {
  std::vector<FormLoss> losses;     // of the declarations, then of the statements
  std::vector<FormReport> reports;  // what its reading had to tell
  bool canOpen = false;
};
FormCheckup CheckupOf(const FormTarget& target);
// The losses alone.
std::vector<FormLoss> CheckForm(const FormTarget& target);

// True if a line is one of the statements that a region may hold, as far as the line alone tells.
// Blank lines and markers are. For a mark while it is typed.
bool FitsRegion(std::string_view line, bool isInDecl);

}  // namespace zendry
