#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "IndentRules.h"

namespace test {

// A text for the rules of typing, with the caret at its "@". Styles are those of a lexer that knows
// comments (2), strings (6), words (5 for the keywords "if for while do end begin", 11 for others)
// and operators (10).
class MarkedText : public mavro::SciText {
 public:
  explicit MarkedText(std::string marked) : text(std::move(marked)) {
    const size_t at = text.find('@');
    caret = static_cast<int>(at == std::string::npos ? text.size() : at);
    if (at != std::string::npos) text.erase(at, 1);
    Lex();
  }

  int Length() const override { return static_cast<int>(text.size()); }
  int LineOf(int position) const override {
    return static_cast<int>(std::count(text.begin(), text.begin() + Clip(position), '\n'));
  }
  int LineStart(int line) const override {
    size_t at = 0;
    for (; line > 0; --line) {
      at = text.find('\n', at);
      if (at == std::string::npos) return Length();
      ++at;
    }
    return static_cast<int>(at);
  }
  int LineEnd(int line) const override {
    const size_t end = text.find('\n', static_cast<size_t>(LineStart(line)));
    return end == std::string::npos ? Length() : static_cast<int>(end);
  }
  std::string Range(int start, int end) const override {
    const int from = Clip(start), to = Clip(end);
    return from < to ? text.substr(static_cast<size_t>(from), static_cast<size_t>(to - from)) : "";
  }
  int StyleAt(int position) const override {
    return position >= 0 && position < Length() ? styles[static_cast<size_t>(position)] : 0;
  }
  int Indentation(int line) const override {
    int columns = 0;
    for (const char c : Range(LineStart(line), LineEnd(line))) {
      if (c != ' ' && c != '\t') break;
      columns += c == ' ' ? 1 : 3 - columns % 3;
    }
    return columns;
  }

  std::string text;
  int caret = 0;

 private:
  int Clip(int position) const { return std::clamp(position, 0, Length()); }
  static bool IsWord(char c) { return isalnum(static_cast<unsigned char>(c)) || c == '_'; }

  // The length and the style of what begins at a place.
  std::pair<size_t, int> Token(size_t at) const {
    const std::string_view rest = std::string_view(text).substr(at);
    const auto until = [&](size_t end) { return std::min(end, rest.size()); };
    if (rest.starts_with("//")) return {until(rest.find('\n')), 2};
    if (rest[0] == '"') return {until(rest.find('"', 1)) + (rest.find('"', 1) < rest.size()), 6};
    if (IsWord(rest[0])) {
      const auto end = std::find_if_not(rest.begin(), rest.end(), IsWord);
      const std::string word(rest.begin(), end);
      const bool keyword =
          std::string(" if for while do end begin ").find(" " + word + " ") != std::string::npos;
      return {word.size(), keyword ? 5 : 11};
    }
    return {1, std::string_view(" \t\r\n").find(rest[0]) == std::string_view::npos ? 10 : 0};
  }

  void Lex() {
    for (size_t at = 0; at < text.size();) {
      const auto [length, style] = Token(at);
      styles.insert(styles.end(), std::max<size_t>(length, 1), style);
      at = styles.size();
    }
  }

  std::vector<int> styles;
};

}  // namespace test
