#include "base/NameMatch.h"

#include <algorithm>
#include <string>
#include <vector>

#include "AsciiCase.h"

namespace zendry {

namespace {

constexpr int cNone = -1'000'000;
constexpr int cNextToLast = 10;  // points for a letter beside the one before
constexpr int cStartOfWord = 12;
constexpr int cGap = 4;  // points off for letters between
constexpr int cInName = 10'000;
constexpr int cWholeName = 1'000;
constexpr size_t cMostTyped = 64;
constexpr size_t cMostRead = 1024;

bool IsLower(char c) {
  return mavro::AsciiUpper(c) != c;
}
bool IsUpper(char c) {
  return mavro::AsciiLower(c) != c;
}

bool IsStartOfWord(std::string_view text, size_t at) {
  constexpr std::string_view cBetween = "/_-. ";
  if (at == 0 || cBetween.find(text[at - 1]) != cBetween.npos) return true;
  return IsUpper(text[at]) && IsLower(text[at - 1]);
}

// The best sum over all ways to find the letters. `ending[i]` is the best of the letters so far
// whose last one is the i-th of the text.
std::optional<int> Score(std::string_view letters, std::string_view text) {
  std::vector<int> ending(text.size(), cNone), before;
  for (size_t n = 0; n < letters.size(); ++n) {
    before.swap(ending);
    ending.assign(text.size(), cNone);
    int best = n == 0 ? 0 : cNone;  // of the letters before this one, gaps taken off
    for (size_t i = 0; i < text.size(); ++i) {
      const bool follows = n > 0 && i > 0 && before[i - 1] > cNone;
      if (n > 0 && i > 1) best = std::max(best, before[i - 2] - cGap);
      if (mavro::AsciiLower(text[i]) != mavro::AsciiLower(letters[n])) continue;
      const int from = std::max(best, follows ? before[i - 1] + cNextToLast : cNone);
      if (from > cNone / 2) ending[i] = from + (IsStartOfWord(text, i) ? cStartOfWord : 0);
    }
  }
  const auto found = std::max_element(ending.begin(), ending.end());
  return found == ending.end() || *found <= cNone / 2 ? std::nullopt : std::optional(*found);
}

}  // namespace

// Of equally good names, the shorter one is better.
std::optional<int> MatchPath(std::string_view typed, std::string_view path) {
  std::string letters(typed.substr(0, cMostTyped));
  std::erase(letters, ' ');
  if (letters.empty()) return 0;
  if (path.size() > cMostRead) path.remove_prefix(path.size() - cMostRead);
  const std::string_view name = path.substr(path.rfind('/') + 1);
  if (const auto score = Score(letters, name)) {
    const bool isWhole = mavro::EqualNoCase(letters, name.substr(0, name.rfind('.')));
    return cInName + *score + (isWhole ? cWholeName : 0) - static_cast<int>(name.size());
  }
  const auto score = Score(letters, path);
  return score ? std::optional(*score - static_cast<int>(name.size())) : std::nullopt;
}

}  // namespace zendry
