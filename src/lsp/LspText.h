#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/CaretText.h"

namespace zendry {

// How the columns of a client count a line's characters.
enum class LspColumns { cUtf16, cUtf8 };

// A place as clients write it; both count from 0.
struct LspPlace {
  int line = 0;
  int column = 0;
  friend bool operator==(const LspPlace&, const LspPlace&) = default;
};

// A text that a client has open, or that was read to answer a question about its file.
class LspText : public CaretText {
 public:
  LspText(std::string itsUri, std::string itsPath, std::string itsText)
      : uri(std::move(itsUri)), path(std::move(itsPath)), text(std::move(itsText)) {}

  std::string Path() const override { return path; }
  int Length() const override { return static_cast<int>(text.size()); }
  void CopyRange(int start, int end, char* to) const override;
  int CaretPosition() const override { return caret; }
  int LineFromPosition(int position) const override;
  int PositionFromLine(int line) const override;

  // The position of a place. A column after the end of its line is the end of the line, one within
  // a character is the character's beginning, and a line after the last one is the end of the text.
  int PositionOf(LspPlace place, LspColumns columns) const;
  LspPlace PlaceOf(int position, LspColumns columns) const;
  // The text of a line without its end.
  std::string_view LineText(int line) const;
  // The text of the caret's line, up to the caret.
  std::string_view LineToCaret() const;
  std::string_view View() const { return text; }

  // Replaces the bytes from `begin` up to `end`, or everything.
  void Replace(int begin, int end, std::string_view with);
  void ReplaceAll(std::string newText);
  void SetCaret(int position) { caret = position; }

  const std::string uri;  // as the client writes it

 private:
  const std::vector<int>& LineStarts() const;
  void Changed();

  const std::string path;
  std::string text;
  int caret = 0;
  mutable std::vector<int> lineStarts;  // empty when the text has changed
};

}  // namespace zendry
