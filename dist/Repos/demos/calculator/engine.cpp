// SPDX-License-Identifier: MIT-0
#include "engine.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr std::size_t cMostDigits = 12;
constexpr const char* cError = "Error";

double Calculate(double a, char operation, double b) {
  switch (operation) {
    case '+':
      return a + b;
    case '-':
      return a - b;
    case '*':
      return a * b;
    default:
      return b == 0 ? NAN : a / b;
  }
}

}  // namespace

std::string NumberText(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.12g", value == 0 ? 0 : value);
  return text;
}

void Engine::Press(char key) {
  if (key == 'c') return Clear();
  if (failed) return;
  if ((key >= '0' && key <= '9') || key == '.') return Digit(key);
  switch (key) {
    case '+':
    case '-':
    case '*':
    case '/':
    case '=':
      return Operator(key);
    case '%':
      return Percent();
    case 'n':
      return Sign();
    case 'b':
      return Back();
    default:
      return;
  }
}

std::string Engine::Display() const {
  return failed ? cError : shown;
}

std::string Engine::Pending() const {
  return operation == 0 ? "" : NumberText(first) + " " + operation;
}

double Engine::Value() const {
  return std::atof(shown.c_str());
}

void Engine::Show(double value) {
  failed = !std::isfinite(value);
  shown = NumberText(value);
  typing = false;
}

void Engine::Digit(char digit) {
  if (!typing) shown = "0";
  typing = true;
  if (digit == '.') {
    if (shown.find('.') == std::string::npos) shown += '.';
  } else if (shown == "0") {
    shown = digit;
  } else if (shown.size() < cMostDigits) {
    shown += digit;
  }
}

// An operation typed right behind another one takes its place.
void Engine::Operator(char key) {
  const double second = Value();
  if (key == '=') {
    if (operation != 0) {
      repeated = second;
      repeatedBy = operation;
      Show(Calculate(first, operation, second));
    } else if (repeatedBy != 0) {
      Show(Calculate(second, repeatedBy, repeated));
    }
    operation = 0;
    typing = false;
    return;
  }
  if (operation != 0 && typing) Show(Calculate(first, operation, second));
  if (failed) return;
  first = Value();
  operation = key;
  typing = false;
}

// Of the first number when there is one to be added to or taken from: 200 + 10 % is 220.
void Engine::Percent() {
  const bool ofFirst = operation == '+' || operation == '-';
  Show(Value() / 100 * (ofFirst ? first : 1));
  typing = operation != 0;
}

void Engine::Sign() {
  if (Value() == 0) return;
  shown = shown[0] == '-' ? shown.substr(1) : "-" + shown;
}

void Engine::Back() {
  if (!typing) return;
  shown.pop_back();
  if (shown.empty() || shown == "-") shown = "0";
}

void Engine::Clear() {
  *this = Engine();
}
