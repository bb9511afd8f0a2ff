#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace mavro {

// A part of a text: bytes from `start` to `end`.
struct TipRange {
  int start = 0;
  int end = 0;

  friend bool operator==(const TipRange&, const TipRange&) = default;
};

// One of the signatures that a call tip can show.
struct TipOverload {
  std::string text;
  std::vector<TipRange> parameters;
  bool takesMore = false;  // the last parameter takes any number of arguments

  friend bool operator==(const TipOverload&, const TipOverload&) = default;
};

// A call tip. Positions are those of the text; an argument counts as begun with its first
// character.
struct EditorTip {
  std::vector<TipOverload> overloads;  // the best one first; never empty
  int name = 0;                        // where the name of what is called starts
  int bracket = 0;                     // the call's opening bracket
  int innermost = 0;  // that of the innermost call around the caret, which may be an unknown one
  int argument = 0;   // the argument at the caret, from 0
  int arguments = 0;  // the number of arguments that have been begun
  size_t shown = 0;   // the signature that is shown
  bool isChosen = false;  // by the user
};

// What the editor knows of its tip.
struct TipState {
  std::optional<EditorTip> open;  // of the call that the caret is in, also while a list hides it
  std::string shownText;          // in the tip's window
  int shownPosition = 0;
  bool isReplaced = false;  // something else is shown there
  int mouseRests = -1;      // the byte under the mouse; -1 while it moves
  int closedCall = -1;      // the bracket of the call whose tip the user has closed
};

// Where the caret is in the call of a tip.
struct TipPlace {
  int depth = 0;  // of calls, counted from that of the tip; 0 if the caret has left it
  int innermost = 0;
  int argument = 0;
  int arguments = 0;
};

}  // namespace mavro
