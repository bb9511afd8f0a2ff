#pragma once

#include <string>
#include <vector>

#include "TextFinder.h"

namespace mavro {

// What all searches of the program share: the texts and switches of the dialogs.
struct SearchState {
  static constexpr size_t cMostRemembered = 20;

  std::string findText;
  std::string replaceText;
  bool found = false;  // the last search in an editor has found something
  bool matchCase = false;
  bool wholeWord = false;
  bool backward = false;
  bool regExp = false;
  bool wrap = true;                  // at one end of the text, go on at the other
  std::vector<std::string> history;  // what was looked for, the last first
  std::string whyNot;                // why the last search in an editor has found nothing

  SearchTerm Term() const { return {findText, matchCase, wholeWord, regExp}; }
  // Puts `findText` at the front of the history, which has each text once. An empty one isn't kept.
  void Remember();
};

extern SearchState theSearch;

}  // namespace mavro
