// SPDX-License-Identifier: MIT-0
#pragma once

#include <mavro>

#include "engine.h"

// The window of the calculator. Every button stands for one key of the engine, which its tag holds;
// the keyboard presses the same keys.
class CalcForm : public Form {
 public:
  typedef CalcForm This;
  CalcForm();

 private:
  // Written by the form designer.
	//!decl
	Panel screen;
	Label pending, number;
	Button clear, sign, percent, divide, seven;
	Button eight, nine, times, four, five;
	Button six, minus, one, two, three;
	Button plus, zero, point, back, equals;
	ListBox tape;
	//!end

  void Initialize();
  void ClickKey(NotifyArgs& args);
  void PreviewKey(NotifyArgs& args);
  void Typed(KeyArgs& args);
  void Press(char key);
  void ShowNumbers();

  Engine engine;
};
