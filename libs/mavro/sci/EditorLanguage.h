#pragma once

#include <cstdint>

namespace mavro {

// A colour on a light desktop and on a dark one, both blue-green-red. If only the light one is
// given, the dark one is computed from it.
struct ColourPair {
  static constexpr int cMade = -1;

  constexpr ColourPair() = default;
  constexpr ColourPair(int newLight, int newDark = cMade) : light(newLight), dark(newDark) {}
  friend constexpr bool operator==(const ColourPair&, const ColourPair&) = default;

  int light = 0;
  int dark = cMade;
};

// The look of one lexer style.
struct StyleRow {
  // Flags: the low byte is a size in points, 0 for the editor's.
  enum Flags { cBold = 0x1000, cItalic = 0x2000, cEolFilled = 0x8000 };
  // A style number of this or more ends a table.
  static constexpr int cEnd = 256;

  int style = cEnd;
  ColourPair foreground = {};
  int flags = 0;
  ColourPair background = {};  // light 0: no background of its own
};

// The facts that an editor has about the language of its text. All texts are C strings that outlive
// every editor; null means "none". The first character of a field marked "words or characters"
// decides: a letter means words with blanks between them, anything else means a set of characters.
struct EditorLanguage {
  static constexpr int cFurtherKeywords = 7;

  const char* name = nullptr;  // the lexer's name; null for plain text
  const StyleRow* styles = nullptr;
  const char* keywords = nullptr;
  const char* keywords2 = nullptr;
  const char* furtherKeywords[cFurtherKeywords] = {};
  const char* indentWords = nullptr;  // words or characters that indent the one line after them
  const char* blockStart = nullptr;   // words or characters
  const char* blockEnd = nullptr;     // words or characters
  bool autoCloseFlag = false;
  const char* wordChars = nullptr;      // the characters of names
  const char* tipStart = nullptr;       // opens a list of arguments
  const char* tipEnd = nullptr;         // closes it
  const char* tipSeparators = nullptr;  // are between arguments
  const char* tipCalls = nullptr;       // further characters after which a tip may be shown
  const char* wordEndChars = nullptr;   // close an open completion list
  bool ignoreCase = false;              // the completion list finds names in any case
  const char* fillUps = nullptr;        // accept the list's row and are typed after it
  const char* memberChars = nullptr;    // start a completion of members
  const char* lineComment = nullptr;
  // Text that the preprocessor leaves out has the style of other text plus this number; 0: there is
  // no such text.
  int leftOutStyles = 0;
  // A bit for each style below 64 of text that is no code: comments, literals, numbers. Nothing is
  // offered there by itself.
  std::uint64_t quietStyles = 0;
  // The style of the preprocessor's lines, 0 if there is none. Nothing is offered by itself in
  // their strings and in those that include a file.
  int directiveStyle = 0;
  int rawStyle = 0;        // of literals whose blanks at line ends count; 0: there are none
  int operatorStyle = 0;   // braces count in this style only; 0: in any
  int cancelAtStart = 0;   // the list closes when the caret is back where it opened
  int dropRestOfWord = 0;  // accepting a row replaces the rest of the word
  bool wordCompletion = true;
  const char* fileFilter = nullptr;  // description and patterns for file dialogs
};

}  // namespace mavro
