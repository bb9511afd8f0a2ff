#pragma once

#include <string>

namespace mavro {

// The behaviour and look of one editor. Each editor has its own copy of the shared defaults.
struct EditorOptions {
  bool lineNumbers = false;  // a margin of numbers
  int lineNumberWidth = 20;  // the least width; it grows with the number of digits
  int tabWidth = 3;
  int indentSize = 3;
  bool useTabs = true;
  int fontSize = 14;
  int fontStyle = 0;     // of the whole text: bits of Font::Style
  std::string fontFace;  // of proportional text; empty: the desktop's
  std::string monoFace;  // of monospaced text; empty: the desktop's
  // The characters of words, for word completion.
  std::string wordChars = "_abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
  bool braceMatch = true;
  bool braceMatchAfter = false;  // the character after the caret counts too
  bool closePairs = false;       // brackets and quotes get their partners as they are typed
  bool simpleIndent = false;     // a new line is indented as the one before
  bool smartIndent = true;       // by the language's blocks
  bool indentOpening = false;    // the line of an opening brace is indented too
  bool indentClosing = false;    // the line of a closing brace is indented too
  int statementLookback = 20;    // lines that indentation looks back
  bool foldMargin = false;
  int foldStyle = 3;  // 0 arrows, 1 plus and minus, 2 circles, 3 boxes
  bool foldComment = false;
  bool lineAboveOpenFolds = false;  // a line is drawn above each, and none below closed ones
  bool foldPreprocessor = false;
  bool bookmarkMargin = true;
  bool marginClicks = false;  // a click in that margin calls onMarginClick
  bool monospaced = false;
  int keywordStyle = 10;  // styles whose words decide about indentation
  int operatorStyle = 10;
  bool caretLine = true;   // the caret's line has a ground of its own
  bool wrapLines = false;  // at the window's edge, between words; not in a huge text
  bool showWhiteSpace = false;
  bool showLineEnds = false;
  int edgeColumn = 0;  // a line at this column; 0: none
};

}  // namespace mavro
