// SPDX-License-Identifier: MIT-0
#include "calcform.h"

namespace {

constexpr int cKeyEnter = 0x0D, cKeyEscape = 0x1B, cKeyBack = 0x08, cKeyDelete = 0x2E;

}  // namespace

// The keys are typed whatever has the focus: each control in the form hands on what it gets.
CalcForm::CalcForm() {
  Initialize();
  for (Control* child : children) child->onChar.Add_H(this, &This::Typed);
  ShowNumbers();
}

// The form designer writes what is between the markers (F11 opens it).
void CalcForm::Initialize() {
	//!init
	this->SetBounds(0, 0, 482, 342);
	this->text = "Calculator";
	this->resizable = false;
	this->onKeyPreview.Add_H(this, &This::PreviewKey);
	//!<Panel>
	screen.SetBounds(12, 12, 266, 72);
	screen.borderStyle = BorderStyle::cFixed3d;
	screen.backColor = Color::cWindow;
	this->Add(&screen);
	//!<Label>
	pending.SetBounds(8, 6, 246, 18);
	pending.foreColor = Color::cGray;
	pending.align = Align::cRight;
	screen.Add(&pending);
	//!<Label>
	number.SetBounds(8, 26, 246, 38);
	number.font = Font(20, Font::cBold);
	number.text = "0";
	number.align = Align::cRight;
	screen.Add(&number);
	//!<Button>
	clear.SetBounds(12, 96, 62, 42);
	clear.text = "C";
	clear.toolTip = "Clear everything (Escape)";
	clear.tag = 'c';
	clear.onClick.Add_H(this, &This::ClickKey);
	this->Add(&clear);
	//!<Button>
	sign.SetBounds(80, 96, 62, 42);
	sign.text = "±";
	sign.toolTip = "Change the sign";
	sign.tag = 'n';
	sign.onClick.Add_H(this, &This::ClickKey);
	this->Add(&sign);
	//!<Button>
	percent.SetBounds(148, 96, 62, 42);
	percent.text = "%";
	percent.tag = '%';
	percent.onClick.Add_H(this, &This::ClickKey);
	this->Add(&percent);
	//!<Button>
	divide.SetBounds(216, 96, 62, 42);
	divide.text = "÷";
	divide.tag = '/';
	divide.onClick.Add_H(this, &This::ClickKey);
	this->Add(&divide);
	//!<Button>
	seven.SetBounds(12, 144, 62, 42);
	seven.text = "7";
	seven.tag = '7';
	seven.onClick.Add_H(this, &This::ClickKey);
	this->Add(&seven);
	//!<Button>
	eight.SetBounds(80, 144, 62, 42);
	eight.text = "8";
	eight.tag = '8';
	eight.onClick.Add_H(this, &This::ClickKey);
	this->Add(&eight);
	//!<Button>
	nine.SetBounds(148, 144, 62, 42);
	nine.text = "9";
	nine.tag = '9';
	nine.onClick.Add_H(this, &This::ClickKey);
	this->Add(&nine);
	//!<Button>
	times.SetBounds(216, 144, 62, 42);
	times.text = "×";
	times.tag = '*';
	times.onClick.Add_H(this, &This::ClickKey);
	this->Add(&times);
	//!<Button>
	four.SetBounds(12, 192, 62, 42);
	four.text = "4";
	four.tag = '4';
	four.onClick.Add_H(this, &This::ClickKey);
	this->Add(&four);
	//!<Button>
	five.SetBounds(80, 192, 62, 42);
	five.text = "5";
	five.tag = '5';
	five.onClick.Add_H(this, &This::ClickKey);
	this->Add(&five);
	//!<Button>
	six.SetBounds(148, 192, 62, 42);
	six.text = "6";
	six.tag = '6';
	six.onClick.Add_H(this, &This::ClickKey);
	this->Add(&six);
	//!<Button>
	minus.SetBounds(216, 192, 62, 42);
	minus.text = "−";
	minus.tag = '-';
	minus.onClick.Add_H(this, &This::ClickKey);
	this->Add(&minus);
	//!<Button>
	one.SetBounds(12, 240, 62, 42);
	one.text = "1";
	one.tag = '1';
	one.onClick.Add_H(this, &This::ClickKey);
	this->Add(&one);
	//!<Button>
	two.SetBounds(80, 240, 62, 42);
	two.text = "2";
	two.tag = '2';
	two.onClick.Add_H(this, &This::ClickKey);
	this->Add(&two);
	//!<Button>
	three.SetBounds(148, 240, 62, 42);
	three.text = "3";
	three.tag = '3';
	three.onClick.Add_H(this, &This::ClickKey);
	this->Add(&three);
	//!<Button>
	plus.SetBounds(216, 240, 62, 42);
	plus.text = "+";
	plus.tag = '+';
	plus.onClick.Add_H(this, &This::ClickKey);
	this->Add(&plus);
	//!<Button>
	zero.SetBounds(12, 288, 62, 42);
	zero.text = "0";
	zero.tag = '0';
	zero.onClick.Add_H(this, &This::ClickKey);
	this->Add(&zero);
	//!<Button>
	point.SetBounds(80, 288, 62, 42);
	point.text = ".";
	point.tag = '.';
	point.onClick.Add_H(this, &This::ClickKey);
	this->Add(&point);
	//!<Button>
	back.SetBounds(148, 288, 62, 42);
	back.text = "⌫";
	back.toolTip = "Take the last digit back (Backspace)";
	back.tag = 'b';
	back.onClick.Add_H(this, &This::ClickKey);
	this->Add(&back);
	//!<Button>
	equals.SetBounds(216, 288, 62, 42);
	equals.font = Font(0, Font::cBold);
	equals.text = "=";
	equals.tag = '=';
	equals.onClick.Add_H(this, &This::ClickKey);
	this->Add(&equals);
	//!<ListBox>
	tape.SetBounds(290, 12, 180, 318);
	tape.toolTip = "What has been calculated";
	this->Add(&tape);
	//!end
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
