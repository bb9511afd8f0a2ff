// SPDX-License-Identifier: MIT-0
#include "calcform.h"

namespace {

constexpr int cMargin = 12;
constexpr int cButtonWidth = 62;
constexpr int cButtonHeight = 42;
constexpr int cGap = 6;
constexpr int cKeysTop = 96;
constexpr int cKeysWidth = 4 * cButtonWidth + 3 * cGap;
constexpr int cTapeWidth = 180;
constexpr int cFormWidth = cKeysWidth + cTapeWidth + 3 * cMargin;
constexpr int cFormHeight = cKeysTop + 5 * cButtonHeight + 4 * cGap + cMargin;
constexpr int cKeyEnter = 0x0D, cKeyEscape = 0x1B, cKeyBack = 0x08, cKeyDelete = 0x2E;

}  // namespace

CalcForm::CalcForm() {
  Initialize();
}

void CalcForm::Initialize() {
  text = "Calculator";
  SetBounds(100, 100, cFormWidth, cFormHeight);
  resizable = false;
  icon = 100;
  onKeyPreview.Add_H(this, &This::PreviewKey);

  screen.SetBounds(cMargin, cMargin, cKeysWidth, cKeysTop - 2 * cMargin);
  screen.backColor = Color::cWindow;
  screen.borderStyle = BorderStyle::cFixed3d;
  pending.SetBounds(8, 6, cKeysWidth - 20, 18);
  pending.align = Align::cRight;
  pending.foreColor = Color::cGray;
  screen.Add(&pending);
  number.SetBounds(8, 26, cKeysWidth - 20, 38);
  number.align = Align::cRight;
  number.font = Font(20, Font::cBold);
  screen.Add(&number);
  Add(&screen);

  PlaceButtons();

  tape.SetBounds(cKeysWidth + 2 * cMargin, cMargin, cTapeWidth, cFormHeight - 2 * cMargin);
  tape.onChar.Add_H(this, &This::Typed);
  tape.toolTip = "What has been calculated";
  Add(&tape);
  ShowNumbers();
}

void CalcForm::PlaceButtons() {
  Place(clear, "C", 'c', 0, 0);
  Place(sign, "\302\261", 'n', 1, 0);
  Place(percent, "%", '%', 2, 0);
  Place(divide, "\303\267", '/', 3, 0);
  Place(times, "\303\227", '*', 3, 1);
  Place(minus, "\342\210\222", '-', 3, 2);
  Place(plus, "+", '+', 3, 3);
  Place(equals, "=", '=', 3, 4);
  for (int digit = 1; digit <= 9; ++digit) {
    const char key = static_cast<char>('0' + digit);
    Place(digits[digit], std::string(1, key).c_str(), key, (digit - 1) % 3, 3 - (digit - 1) / 3);
  }
  Place(digits[0], "0", '0', 0, 4);
  Place(point, ".", '.', 1, 4);
  Place(back, "\342\214\253", 'b', 2, 4);
  clear.toolTip = "Clear everything (Escape)";
  sign.toolTip = "Change the sign";
  back.toolTip = "Take the last digit back (Backspace)";
  equals.font = Font(0, Font::cBold);
}

void CalcForm::Place(Button& button, const char* caption, char key, int column, int row) {
  button.SetBounds(cMargin + column * (cButtonWidth + cGap),
                   cKeysTop + row * (cButtonHeight + cGap), cButtonWidth, cButtonHeight);
  button.text = caption;
  button.tag = key;
  button.onClick.Add_H(this, &This::ClickKey);
  button.onChar.Add_H(this, &This::Typed);
  Add(&button);
}

void CalcForm::ClickKey(NotifyArgs& args) {
  Press(static_cast<char>(static_cast<Control*>(args.sender)->tag));
}

// Enter is "=" whichever button has the focus.
void CalcForm::PreviewKey(NotifyArgs& args) {
  switch (args.value) {
    case cKeyEscape:
    case cKeyDelete:
      return Press('c');
    case cKeyBack:
      return Press('b');
    default:
      return;
  }
}

void CalcForm::Typed(KeyArgs& args) {
  const bool isEnter = args.key == cKeyEnter;
  const char key = args.key == ',' ? '.' : static_cast<char>(args.key);
  if (key == 'c' || key == 'b' || key == 'n' || key == ' ') return;
  Press(isEnter ? '=' : key);
  args.handled = true;
}

void CalcForm::Press(char key) {
  const std::string before = engine.Pending() + " " + engine.Display();
  const bool calculates = key == '=' && !engine.Pending().empty();
  engine.Press(key);
  if (calculates) {
    tape.items.Add(before + " = " + engine.Display());
    tape.selectedIndex = tape.items.GetCount() - 1;
  }
  if (key == 'c') tape.items.Clear();
  ShowNumbers();
}

void CalcForm::ShowNumbers() {
  pending.text = engine.Pending();
  number.text = engine.Display();
}
