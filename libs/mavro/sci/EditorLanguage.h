#pragma once

namespace mavro {

// A colour on a light desktop and on a dark one, both blue-green-red. Where only the light one is
// given, the other is made of it.
struct ColourPair {
  static constexpr int cMade = -1;

  constexpr ColourPair() = default;
  constexpr ColourPair(int newLight, int newDark = cMade) : light(newLight), dark(newDark) {}
  friend constexpr bool operator==(const ColourPair&, const ColourPair&) = default;

  int light = 0;
  int dark = cMade;
};

// How one lexer style looks.
struct StyleRow {
  // Flags: the low byte is a size in points, 0 for the editor's.
  enum Flags { cBold = 0x1000, cItalic = 0x2000, cEolFilled = 0x8000 };
  // A style number of this or more ends a table.
  static constexpr int cEnd = 256;

  int style = cEnd;
  ColourPair foreground = {};
  int flags = 0;
  ColourPair background = {};  // light 0: none of its own
};

// What an editor knows of the language of its text. All texts are C strings that outlive every
// editor; null stands for "none". Sets are tested by their first letter where it says "words or
// characters": a letter means words between blanks, anything else a set of characters.
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
  const char* wordChars = nullptr;      // what names consist of
  const char* tipStart = nullptr;       // opens a list of arguments
  const char* tipEnd = nullptr;         // closes it
  const char* tipSeparators = nullptr;  // stand between arguments
  const char* wordEndChars = nullptr;   // close an open completion list
  bool ignoreCase = false;              // the completion list finds names in any case
  const char* fillUps = nullptr;        // accept the list's row and are typed behind it
  const char* memberChars = nullptr;    // start a completion of members
  const char* lineComment = nullptr;
  // Text that the preprocessor leaves out has the style of other text plus so much; 0: there is
  // none such.
  int leftOutStyles = 0;
  int operatorStyle = 0;   // braces count in this style only; 0: in any
  int cancelAtStart = 0;   // the list goes when the caret is back where it was opened
  int dropRestOfWord = 0;  // accepting a row replaces the rest of the word
  bool wordCompletion = true;
  const char* fileFilter = nullptr;  // description and patterns for file dialogs
};

}  // namespace mavro
