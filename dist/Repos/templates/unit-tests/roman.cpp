// SPDX-License-Identifier: MIT-0
#include "roman.h"

std::string Roman(int number) {
  struct Numeral {
    int value;
    const char* letters;
  };
  static constexpr Numeral cNumerals[] = {
      {1000, "M"}, {900, "CM"}, {500, "D"}, {400, "CD"}, {100, "C"}, {90, "XC"}, {50, "L"},
      {40, "XL"},  {10, "X"},   {9, "IX"},  {5, "V"},    {4, "IV"},  {1, "I"}};
  std::string text;
  if (number > 3999) return text;
  for (const Numeral& numeral : cNumerals)
    for (; number >= numeral.value; number -= numeral.value) text += numeral.letters;
  return text;
}
