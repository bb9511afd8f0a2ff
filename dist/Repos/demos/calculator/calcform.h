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
  void Initialize();
  void PlaceButtons();
  void Place(Button& button, const char* caption, char key, int column, int row);

  void ClickKey(NotifyArgs& args);
  void PreviewKey(NotifyArgs& args);
  void Typed(KeyArgs& args);
  void Press(char key);
  void ShowNumbers();

  Engine engine;
  Panel screen;
  Label pending, number;
  Button digits[10];
  Button point, sign, percent, back, clear;
  Button plus, minus, times, divide, equals;
  ListBox tape;
};
