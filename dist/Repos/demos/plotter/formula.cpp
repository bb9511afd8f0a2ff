// SPDX-License-Identifier: MIT-0
#include "formula.h"

#include <cctype>
#include <cmath>
#include <cstdlib>

namespace {

constexpr int cMostDepth = 100;  // of brackets and signs, so that no formula is too deep to read

struct NamedFunction {
  const char* name;
  double (*function)(double);
};

const NamedFunction cFunctions[] = {{"sin", std::sin},   {"cos", std::cos}, {"tan", std::tan},
                                    {"atan", std::atan}, {"exp", std::exp}, {"ln", std::log},
                                    {"sqrt", std::sqrt}, {"abs", std::fabs}};

struct NamedNumber {
  const char* name;
  double number;
};

const NamedNumber cNumbers[] = {{"pi", 3.14159265358979323846}, {"e", 2.71828182845904523536}};

double Calculated(char kind, double a, double b) {
  switch (kind) {
    case '+':
      return a + b;
    case '-':
      return a - b;
    case '*':
      return a * b;
    case '/':
      return a / b;
    default:
      return std::pow(a, b);
  }
}

}  // namespace

bool Formula::Parse(const std::string& text) {
  source = text;
  at = 0;
  depth = 0;
  error.clear();
  steps.clear();
  if (ParseSum()) {
    Skip('\0');
    if (at < source.size()) Fail("something is left over");
  }
  if (!error.empty()) steps.clear();
  return error.empty();
}

bool Formula::Fail(std::string_view why) {
  if (error.empty()) error = "at " + std::to_string(at + 1) + ": " + std::string(why);
  return false;
}

bool Formula::Skip(char sign) {
  while (at < source.size() && std::isspace(static_cast<unsigned char>(source[at]))) ++at;
  if (at >= source.size() || source[at] != sign) return false;
  ++at;
  return true;
}

bool Formula::ParseSum() {
  if (++depth > cMostDepth) return Fail("too many brackets");
  if (!ParseProduct()) return false;
  for (;;) {
    const char kind = Skip('+') ? '+' : Skip('-') ? '-' : '\0';
    if (!kind) break;
    if (!ParseProduct()) return false;
    steps.push_back({kind});
  }
  --depth;
  return true;
}

bool Formula::ParseProduct() {
  if (!ParseSign()) return false;
  for (;;) {
    const char kind = Skip('*') ? '*' : Skip('/') ? '/' : '\0';
    if (!kind) return true;
    if (!ParseSign()) return false;
    steps.push_back({kind});
  }
}

// A sign is of a lower rank than a power: -x^2 is -(x^2).
bool Formula::ParseSign() {
  bool isNegative = false;
  for (;;) {
    if (Skip('-'))
      isNegative = !isNegative;
    else if (!Skip('+'))
      break;
  }
  if (!ParsePower()) return false;
  if (isNegative) steps.push_back({'~'});
  return true;
}

// Powers are read from the right: 2^3^2 is 2^9.
bool Formula::ParsePower() {
  if (!ParseValue()) return false;
  if (!Skip('^')) return true;
  if (++depth > cMostDepth) return Fail("too many powers");
  if (!ParseSign()) return false;
  --depth;
  steps.push_back({'^'});
  return true;
}

bool Formula::ParseValue() {
  if (Skip('(')) return ParseSum() && (Skip(')') || Fail("a bracket is not closed"));
  if (at >= source.size()) return Fail("a value is missing");
  const auto next = static_cast<unsigned char>(source[at]);
  if (std::isdigit(next) || next == '.') return ParseNumber();
  if (std::isalpha(next)) return ParseName();
  return Fail("a value is missing");
}

bool Formula::ParseNumber() {
  const char* begin = source.c_str() + at;
  char* end = nullptr;
  const double number = std::strtod(begin, &end);
  if (end == begin) return Fail("this is no number");
  at += static_cast<size_t>(end - begin);
  steps.push_back({'#', number});
  return true;
}

bool Formula::ParseName() {
  const size_t begin = at;
  while (at < source.size() && std::isalpha(static_cast<unsigned char>(source[at]))) ++at;
  const std::string name = source.substr(begin, at - begin);
  if (name == "x") {
    steps.push_back({'x'});
    return true;
  }
  for (const NamedNumber& known : cNumbers)
    if (name == known.name) {
      steps.push_back({'#', known.number});
      return true;
    }
  for (const NamedFunction& known : cFunctions)
    if (name == known.name) {
      if (!Skip('(')) return Fail("a function needs brackets");
      if (!ParseSum() || !(Skip(')') || Fail("a bracket is not closed"))) return false;
      steps.push_back({'f', 0, known.function});
      return true;
    }
  at = begin;
  return Fail("\"" + name + "\" has no meaning");
}

double Formula::At(double x) const {
  std::vector<double> stack;
  for (const Step& step : steps) {
    if (step.kind == '#' || step.kind == 'x') {
      stack.push_back(step.kind == 'x' ? x : step.number);
    } else if (step.kind == 'f') {
      stack.back() = step.function(stack.back());
    } else if (step.kind == '~') {
      stack.back() = -stack.back();
    } else {
      const double right = stack.back();
      stack.pop_back();
      stack.back() = Calculated(step.kind, stack.back(), right);
    }
  }
  return stack.empty() ? std::nan("") : stack.back();
}
