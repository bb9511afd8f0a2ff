#include "frmedt/FormTokens.h"

#include <algorithm>
#include <array>

namespace zendry {

namespace {

// For each byte: it ends a word.
constexpr std::array<bool, 256> cIsDelimiter = [] {
  std::array<bool, 256> table{};
  for (size_t c = 0; c < table.size(); ++c) table[c] = c < '!' || c >= 0x80;
  for (const char c : std::string_view(".,<>()[]=;")) table[static_cast<unsigned char>(c)] = true;
  return table;
}();

bool IsDelimiter(char c) {
  return cIsDelimiter[static_cast<unsigned char>(c)];
}

bool IsBlank(char c) {
  return c == ' ' || c == '\t';
}

bool IsStatementEnd(char c) {
  return c == ';' || c == ' ' || c == '\n' || c == '\r';
}

}  // namespace

std::string_view LineTokens::Word(size_t number) const {
  return Has(number) ? std::string_view(words[number]) : std::string_view();
}

bool LineTokens::HasQuoted(size_t count) const {
  const size_t most = std::min(count, isQuoted.size());
  return std::find(isQuoted.begin(), isQuoted.begin() + most, true) != isQuoted.begin() + most;
}

LineTokens Tokenize(std::string_view line, size_t limit) {
  LineTokens tokens;
  tokens.words.reserve(LineTokens::cMost);
  tokens.isQuoted.reserve(LineTokens::cMost);
  std::string word;
  bool isInQuotes = false;
  bool hasQuotes = false;
  for (size_t i = 0; i < line.size(); ++i) {
    const char c = line[i];
    if (c == '"' && (i == 0 || line[i - 1] != '\\')) {
      isInQuotes = !isInQuotes;
      hasQuotes = true;
    } else if (isInQuotes || !IsDelimiter(c)) {
      word += c;
    } else if (!word.empty()) {
      tokens.words.push_back(word);
      tokens.isQuoted.push_back(hasQuotes);
      if (tokens.words.size() == limit) tokens.rest = line.substr(i);
      if (tokens.words.size() == LineTokens::cMost) break;
      word.clear();
      hasQuotes = false;
    } else {
      hasQuotes = false;
    }
  }
  return tokens;
}

std::string_view Trimmed(std::string_view line) {
  const auto isAround = [](char c) { return static_cast<unsigned char>(c) <= ' '; };
  while (!line.empty() && isAround(line.front())) line.remove_prefix(1);
  while (!line.empty() && isAround(line.back())) line.remove_suffix(1);
  return line;
}

char TrimValue(std::string& text) {
  if (text.empty()) return 0;
  std::string_view kept = text;
  while (kept.size() > 2 && IsStatementEnd(kept.back())) kept.remove_suffix(1);
  const auto skipBlanks = [&kept] {
    while (!kept.empty() && IsBlank(kept.front())) kept.remove_prefix(1);
  };
  skipBlanks();
  char lead = 0;
  if (!kept.empty()) {
    lead = kept.front();
    kept.remove_prefix(1);
  }
  skipBlanks();
  // Only a rest of two characters still has its end here; what is written must read the same.
  while (!kept.empty() && IsStatementEnd(kept.back())) kept.remove_suffix(1);
  text = std::string(kept);
  return lead;
}

}  // namespace zendry
