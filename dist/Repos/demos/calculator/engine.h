// SPDX-License-Identifier: MIT-0
#pragma once

#include <string>

// A pocket calculator without its window: keys go in, what the display shows comes out. Operations
// are carried out in the order they are typed.
class Engine {
 public:
  // One key: a digit, "." for the point, "+", "-", "*", "/", "=", "%" for percent, "n" for the
  // sign, "b" to take the last digit back, "c" to clear everything. Other keys do nothing.
  void Press(char key);

  // What the display shows: the number being typed or the last result, or "Error".
  std::string Display() const;
  // What is waiting for its second number, as "12 +"; empty for nothing.
  std::string Pending() const;

 private:
  void Digit(char digit);
  void Operator(char key);
  void Percent();
  void Sign();
  void Back();
  void Clear();
  double Value() const;
  void Show(double value);

  std::string shown = "0";
  double first = 0;     // the number before the operation
  char operation = 0;   // 0 for none
  bool typing = false;  // the next digit belongs to the number shown
  bool failed = false;  // until everything is cleared
  double repeated = 0;  // what "=" does again: the second number
  char repeatedBy = 0;  // and the operation; 0 for none
};

// A number with at most twelve digits and no zeros behind the point.
std::string NumberText(double value);
