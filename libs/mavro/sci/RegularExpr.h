#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

struct pcre2_real_code_8;

namespace mavro {

// A regular expression of PCRE2, that is as in Perl, which is looked for in one line of a text. In
// a line of UTF-8 a letter is one character; in any other line each byte is one.
//
// The search tries one way after the other, so some expressions take a time that doubles with each
// letter of the line: the tries and their memory are limited, and it gives up.
class RegularExpr {
 public:
  static constexpr size_t cGroups = 10;  // the first one is the whole match
  static constexpr size_t cNowhere = std::string_view::npos;
  using Range = std::pair<size_t, size_t>;  // start and end; cNowhere if it has no part in a match
  struct Match {
    std::array<Range, cGroups> groups;
  };
  enum class Outcome { cFound, cNone, cTooLong };

  RegularExpr(std::string_view pattern, bool matchCase);

  // Why the pattern is no expression, with the place; empty if it is one. A broken one is found
  // nowhere.
  const std::string& Error() const { return error; }
  // Finds the first match that begins at or after `from`. `match` is changed only if there is one.
  Outcome Find(std::string_view line, size_t from, Match& match) const;

 private:
  struct FreeCode {
    void operator()(pcre2_real_code_8* code) const;
  };
  using Code = std::unique_ptr<pcre2_real_code_8, FreeCode>;

  static int Run(const Code& code, std::string_view line, size_t from, Match& match);

  Code letters;  // for lines of UTF-8; none for a pattern that isn't UTF-8
  Code bytes;    // for other lines
  std::string error;
};

}  // namespace mavro
