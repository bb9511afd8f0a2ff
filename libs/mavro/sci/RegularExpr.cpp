#include "RegularExpr.h"

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

namespace mavro {

namespace {

// Tries in one line, and KiB for what is still to be tried.
constexpr uint32_t cMostTries = 5'000'000;
constexpr uint32_t cMostMemory = 64 * 1024;
constexpr int cReasonLength = 256;

PCRE2_SPTR UnitsOf(std::string_view text) {
  return reinterpret_cast<PCRE2_SPTR>(text.data());
}

bool IsNoUtf8(int result) {
  return result <= PCRE2_ERROR_UTF8_ERR1 && result >= PCRE2_ERROR_UTF8_ERR21;
}

// Why a pattern can't be compiled; the number 0 if it can.
struct Failure {
  int number = 0;
  PCRE2_SIZE place = 0;

  std::string Text() const {
    if (number == 0) return {};
    PCRE2_UCHAR reason[cReasonLength] = {};
    pcre2_get_error_message(number, reason, cReasonLength);
    return std::string(reinterpret_cast<const char*>(reason)) + " (at " + std::to_string(place) +
           ")";
  }
};

pcre2_code* Compile(std::string_view pattern, uint32_t options, Failure& failure) {
  Failure found;
  pcre2_code* const code = pcre2_compile(UnitsOf(pattern), pattern.size(), options, &found.number,
                                         &found.place, nullptr);
  if (!code) failure = found;
  return code;
}

// What all searches share, because one thread makes them.
class Matcher {
 public:
  Matcher() {
    pcre2_set_match_limit(limits.get(), cMostTries);
    pcre2_set_heap_limit(limits.get(), cMostMemory);
  }

  // The number of groups with a part in the match, 0 for all; below 0 for no match.
  int Run(const pcre2_code* code, std::string_view line, size_t from) const {
    return pcre2_match(code, UnitsOf(line), line.size(), from, 0, data.get(), limits.get());
  }
  const PCRE2_SIZE* Places() const { return pcre2_get_ovector_pointer(data.get()); }

 private:
  struct Free {
    void operator()(pcre2_match_context* context) const { pcre2_match_context_free(context); }
    void operator()(pcre2_match_data* data) const { pcre2_match_data_free(data); }
  };
  const std::unique_ptr<pcre2_match_context, Free> limits{pcre2_match_context_create(nullptr)};
  const std::unique_ptr<pcre2_match_data, Free> data{
      pcre2_match_data_create(RegularExpr::cGroups, nullptr)};
};

}  // namespace

void RegularExpr::FreeCode::operator()(pcre2_real_code_8* code) const {
  pcre2_code_free(code);
}

// In bytes, a letter beyond ASCII is several characters: what is wrong with the pattern is told of
// its letters, unless it isn't UTF-8.
RegularExpr::RegularExpr(std::string_view pattern, bool matchCase) {
  const uint32_t options = PCRE2_DOLLAR_ENDONLY | (matchCase ? 0 : PCRE2_CASELESS);
  const uint32_t utf = PCRE2_UTF | PCRE2_UCP | PCRE2_NEVER_BACKSLASH_C;
  Failure ofLetters, ofBytes;
  letters.reset(Compile(pattern, options | utf, ofLetters));
  bytes.reset(Compile(pattern, options, ofBytes));
  if (!letters) error = IsNoUtf8(ofLetters.number) ? ofBytes.Text() : ofLetters.Text();
}

int RegularExpr::Run(const Code& code, std::string_view line, size_t from, Match& match) {
  static const Matcher matcher;
  const int result = matcher.Run(code.get(), line, from);
  if (result < 0) return result;
  const PCRE2_SIZE* places = matcher.Places();
  for (size_t i = 0; i < cGroups; ++i) {
    const bool hasPart =
        (result == 0 || i < static_cast<size_t>(result)) && places[2 * i] != PCRE2_UNSET;
    match.groups[i] = hasPart ? Range(places[2 * i], places[2 * i + 1]) : Range(cNowhere, cNowhere);
  }
  return result;
}

RegularExpr::Outcome RegularExpr::Find(std::string_view line, size_t from, Match& match) const {
  if (!error.empty() || from > line.size()) return Outcome::cNone;
  int result = PCRE2_ERROR_UTF8_ERR1;
  if (letters) {
    result = Run(letters, line, from, match);
    while (result == PCRE2_ERROR_BADUTFOFFSET) result = Run(letters, line, ++from, match);
  }
  if (IsNoUtf8(result)) result = bytes ? Run(bytes, line, from, match) : PCRE2_ERROR_NOMATCH;
  if (result >= 0) return Outcome::cFound;
  return result == PCRE2_ERROR_NOMATCH ? Outcome::cNone : Outcome::cTooLong;
}

}  // namespace mavro
