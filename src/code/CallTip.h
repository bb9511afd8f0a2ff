#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zendry {

class CaretText;

// A part of a label: bytes from `start` to `end`.
struct LabelRange {
  int start = 0;
  int end = 0;

  friend bool operator==(const LabelRange&, const LabelRange&) = default;
};

// A declaration that a call may mean, as text.
struct CallSignature {
  std::string label;                   // "int Shape::draw(int depth, char fill = ' ')"
  std::vector<LabelRange> parameters;  // each with its default value
  bool takesMore = false;              // the last parameter takes any number of arguments
  int fit = 0;                         // how well the types of the arguments fit; more is better

  // The parameter that takes an argument; -1 if none does.
  int ParameterFor(int argument) const;
  // True if it takes as many arguments.
  bool Takes(int arguments) const;
};

// What is shown at a place in a call: all declarations that it may mean, those first that take the
// arguments written so far.
struct CallTip {
  std::vector<CallSignature> overloads;  // never empty
  int argument = 0;                      // the argument at the place, from 0
  int arguments = 0;                     // the number of arguments that have been begun
  int name = 0;                          // the position where the name of what is called begins
  int bracket = 0;                       // the position of the call's "(" or "{"
  int innermost = 0;  // that of the innermost call around the place, which may be an unknown one

  // The parameter at the place, of the first or another overload; -1 if it has none there.
  int Parameter(size_t overload = 0) const { return overloads[overload].ParameterFor(argument); }
};

// A declared function, class constructor, macro or pointer to a function.
struct Callable {
  std::string result;      // the type as declared; empty if it has none
  std::string name;        // with the class that it belongs to
  std::string parameters;  // with their brackets; what follows them isn't read
};

CallSignature SignatureOf(const Callable& callable);

// How many arguments a function takes at least and at most.
struct Arity {
  int least = 0;
  int most = 0;

  bool Takes(int arguments) const { return arguments >= least && arguments <= most; }
};
// Of a list of parameters with its brackets.
Arity ArityOf(const std::string& parameters);

// Puts those first that take as many arguments, among them those that fit better, then those with
// fewer parameters; otherwise the order stays. Of signatures with the same label one is left.
void SortByArguments(std::vector<CallSignature>& overloads, int arguments);

// Where the caret is in a call that was found before.
struct CallPlace {
  int depth = 0;     // of calls, counted from that one; 0 if the caret has left it
  int argument = 0;  // as in CallTip
  int arguments = 0;
  int innermost = 0;
};

// True if the caret is in a call of a few thousand bytes at most, known or not.
bool IsInCall(const CaretText& editor);
// Looks at the text between the call's bracket and the caret only, so it is fast enough for every
// key. A call that is longer than a few thousand bytes counts as left.
CallPlace PlaceInCall(const CaretText& editor, int bracket);

}  // namespace zendry
