#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "ByteFind.h"
#include "RegularExpr.h"

namespace mavro {

// What is looked for, and how.
struct SearchTerm {
  std::string text;
  bool matchCase = false;
  bool wholeWord = false;  // no word goes over its start or its end
  bool regExp = false;
};

// Finds the places of a term in a text. An expression is looked for line by line. Without regard to
// case, the letters of ASCII and the Latin, Greek and Cyrillic letters of two bytes are folded.
class TextFinder {
 public:
  struct Hit {
    size_t start = 0;
    size_t end = 0;
    RegularExpr::Match match = {};  // of an expression
  };

  explicit TextFinder(SearchTerm newTerm);

  bool IsEmpty() const { return term.text.empty(); }
  const SearchTerm& Term() const { return term; }
  // Why the term can't be looked for; empty if it can.
  const std::string& Error() const { return expr ? expr->Error() : noError; }
  // True after a search that was given up: the expression takes too long in some line.
  bool GaveUp() const { return gaveUp; }

  // The first place that begins at or after `from` and ends at or before `end`.
  std::optional<Hit> Next(std::string_view text, size_t from, size_t end) const;
  // The last place that begins at or after `from` and ends at or before `end`.
  std::optional<Hit> Last(std::string_view text, size_t from, size_t end) const;

  // What replaces a hit. For an expression, \0 to \9 in `with` are groups, \n is `lineEnd`, \t a
  // tab.
  std::string Replacement(std::string_view text, const Hit& hit, std::string_view with,
                          std::string_view lineEnd) const;

 private:
  size_t NextBytes(std::string_view text, size_t from) const;
  size_t NextFolded(std::string_view text, size_t from) const;
  std::optional<Hit> NextExpr(std::string_view text, size_t from, size_t end) const;
  bool Fits(std::string_view text, const Hit& hit) const;

  const SearchTerm term;
  ByteFind bytes;
  std::string folded;  // the term, if it has letters beyond ASCII whose case is ignored
  std::optional<RegularExpr> expr;
  std::string noError;
  mutable bool gaveUp = false;
};

// The start of the line that a place is in; and its end, before the line end.
size_t LineStartIn(std::string_view text, size_t place);
size_t LineEndIn(std::string_view text, size_t place);

}  // namespace mavro
