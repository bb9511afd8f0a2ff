#include "EditText.h"

#include "Edit.h"

namespace mavro {

namespace {

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// Reads a number from its start; the part that was read decides how well the text suits.
class NumberCursor {
 public:
  explicit NumberCursor(std::string_view itsText) : text(itsText) {}

  bool AtEnd() const { return at == text.size(); }
  bool Match(std::string_view any) {
    if (AtEnd() || any.find(text[at]) == std::string_view::npos) return false;
    ++at;
    return true;
  }
  // Skips digits and returns their number.
  size_t Digits() {
    const size_t start = at;
    while (!AtEnd() && IsDigit(text[at])) ++at;
    return at - start;
  }

 private:
  std::string_view text;
  size_t at = 0;
};

TextFit CheckInteger(std::string_view text) {
  NumberCursor cursor(text);
  cursor.Match("+-");
  const size_t digits = cursor.Digits();
  if (!cursor.AtEnd()) return TextFit::cNo;
  return digits > 0 ? TextFit::cWhole : TextFit::cSoFar;
}

TextFit CheckFloat(std::string_view text) {
  NumberCursor cursor(text);
  cursor.Match("+-");
  size_t digits = cursor.Digits();
  if (cursor.Match(".")) digits += cursor.Digits();
  if (cursor.AtEnd()) return digits > 0 ? TextFit::cWhole : TextFit::cSoFar;
  if (digits == 0 || !cursor.Match("eE")) return TextFit::cNo;
  cursor.Match("+-");
  digits = cursor.Digits();
  if (!cursor.AtEnd()) return TextFit::cNo;
  return digits > 0 ? TextFit::cWhole : TextFit::cSoFar;
}

}  // namespace

TextFit CheckText(int dataType, std::string_view text) {
  if (text.empty()) return TextFit::cWhole;
  if (dataType == Edit::cInteger) return CheckInteger(text);
  if (dataType == Edit::cFloat) return CheckFloat(text);
  return TextFit::cWhole;
}

}  // namespace mavro
