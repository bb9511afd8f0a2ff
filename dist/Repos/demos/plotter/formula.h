// SPDX-License-Identifier: MIT-0
#pragma once

#include <string>
#include <string_view>
#include <vector>

// A formula of x: numbers, x, pi, e, + - * / ^, brackets and functions of one value, as in
// "2*sin(x) + x^2/10". It is parsed once into steps that work on a stack of numbers.
class Formula {
 public:
  // False if this is no formula; Error() says why, and where.
  bool Parse(const std::string& text);
  const std::string& Error() const { return error; }

  // The value at a place; not a number where the formula has none, as ln(x) below 0.
  double At(double x) const;

 private:
  struct Step {
    char kind;  // '#' a number, 'x', 'f' a function, '~' the sign, or an operator
    double number = 0;
    double (*function)(double) = nullptr;
  };

  // Each reads one rank of operators from `at` on; false after an error.
  bool ParseSum();
  bool ParseProduct();
  bool ParseSign();
  bool ParsePower();
  bool ParseValue();
  bool ParseNumber();
  bool ParseName();
  // Goes past blanks, then past `sign` if it is next.
  bool Skip(char sign);
  bool Fail(std::string_view why);

  std::string source;
  size_t at = 0;
  int depth = 0;
  std::string error;
  std::vector<Step> steps;
};
