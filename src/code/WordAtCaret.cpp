#include "code/WordAtCaret.h"

#include <algorithm>

#include "base/CaretText.h"
#include "code/CodeWizard.h"

namespace zendry {

namespace {

constexpr int cReach = 255;

// Bytes above ASCII belong to names.
bool IsNameByte(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte >= 0x80 || c == '_' || (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') ||
         (c >= 'A' && c <= 'Z');
}

}  // namespace

CaretWord WordAtCaret(const CaretText& editor) {
  const int caret = editor.CaretPosition();
  const int start = std::max(caret - cReach, 0);
  std::string text(static_cast<size_t>(std::min(caret + cReach, editor.Length()) - start), '\0');
  editor.CopyRange(start, start + static_cast<int>(text.size()), text.data());
  size_t begin = static_cast<size_t>(caret - start), end = begin;
  while (begin > 0 && IsNameByte(text[begin - 1])) --begin;
  while (end < text.size() && IsNameByte(text[end])) ++end;
  return {text.substr(begin, end - begin), start + static_cast<int>(begin)};
}

std::string ScopeBefore(const CaretText& editor, const CaretWord& word) {
  const int start = std::max(word.begin - cReach, 0);
  std::string text(static_cast<size_t>(word.begin - start), '\0');
  editor.CopyRange(start, word.begin, text.data());
  if (!text.ends_with("::")) return {};
  text.resize(text.size() - 2);
  size_t begin = text.size();
  while (begin > 0 && (IsNameByte(text[begin - 1]) || text[begin - 1] == ':')) --begin;
  return text.substr(begin);
}

std::string ClassOfWord(CodeWizard& wizard, const CaretText& editor, const CaretWord& word) {
  if (word.text.empty()) return {};
  ResolveInfo info;
  info.kind = cAnyRequest;
  const int last = word.begin + static_cast<int>(word.text.size()) - 1;
  const bool isKnown = wizard.resolveAt(editor, info, last - editor.CaretPosition());
  if (isKnown && info.name == word.text && !info.className.empty()) return info.className;
  return ScopeBefore(editor, word);
}

}  // namespace zendry
