#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "help/HelpIndex.h"

namespace zendry {

// The question that a page answers.
struct HelpQuestion {
  std::string module;      // empty for every module
  std::string word;        // empty for all names of the module
  std::string firstClass;  // the entries of this class or namespace go first; empty for the index's
                           // own order
};

// A page of help as rich text.
struct HelpPage {
  std::string rtf;
  bool found = false;
  bool foundAliases = false;  // further names of a text were found, not only first records
};

// The beginning and the end of each page.
extern const char cHelpHeader[];
extern const char cHelpFooter[];

// A text within rich text: braces and backslashes are escaped, a newline becomes "\line".
std::string EscapedForRtf(std::string_view text);

// Appends an entry to a page: a title row `twips` wide with the name of `entry`, and below it the
// texts of `source`, which is null for a reference to nothing.
void writeEntry(std::string& rtf, const HelpEntry& entry, const HelpEntry* source, int twips);

// The page with all entries that the question asks for: of that name exactly and of that module.
// `twips` is the width of the view.
HelpPage search(const HelpIndex& index, const HelpQuestion& question, int twips);

// The page for a word that isn't found. It offers other names as links; the target of the first is
// "help:0".
std::string NotFoundPage(std::string_view word, std::string_view module,
                         const std::vector<std::string>& nearest);
// The number in the target of such a link; -1 for any other target.
int NumberOfHelpLink(std::string_view target);

}  // namespace zendry
