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
  int line = 0;         // in the region's lines, from 0; CheckForm: in the file
  std::string text;     // the line, without blanks around it
  std::string becomes;  // the line in its place, or the reason of the loss; may be empty
  std::string path;     // set by CheckForm only
};

// The statements of a form that would not come back: the regions are read and written, and the
// statements compared. Blanks between words, and the number of names in a declaration, don't
// count. Lines as in FormData.
std::vector<FormLoss> CheckRegions(std::string_view className,
                                   const std::vector<std::string>& declLines,
                                   const std::vector<std::string>& initLines);
// The same for a target of a locator.
std::vector<FormLoss> CheckForm(const FormTarget& target);

// True if a line has one of the forms that a region may hold, by itself: for a mark while it is
// typed. Blank lines and markers have.
bool FitsRegion(std::string_view line, bool isInDecl);

// The region with some lines moved to just behind its end: the lines of the region, markers
// included, then the kept ones unchanged, or as comments where they would not compile. `lines`: the
// written region, `losses`: of this region, `original`: its lines as they were.
std::vector<std::string> KeepBehind(std::vector<std::string> lines,
                                    const std::vector<FormLoss>& losses,
                                    const std::vector<std::string>& original);

}  // namespace zendry
