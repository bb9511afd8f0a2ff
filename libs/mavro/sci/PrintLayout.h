#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "PrintDevice.h"

namespace mavro {

// A line of the text to print, without its end.
struct PrintLine {
  std::string text;
  std::string styles;     // one for each byte
  bool isFolded = false;  // the lines after it are left out
};

// A text to print: the lines that shall be on paper.
class PrintText {
 public:
  virtual ~PrintText() = default;
  // The first line to print at or after `line`; -1 if there is none.
  virtual int LineFrom(int line) const = 0;
  virtual PrintLine Line(int line) const = 0;
  // The number that is shown beside a line, and the greatest one.
  virtual int NumberOf(int line) const { return line + 1; }
  virtual int LastNumber() const = 0;
};

// The look of the letters of a style.
struct PrintLook {
  PrintFont font;
  int ink = 0;
};

struct PrintStyles {
  std::array<PrintLook, 256> looks;
  PrintLook numbers;  // of lines
  int tabWidth = 4;
  bool hasNumbers = true;
  bool isUtf8 = true;  // else each byte is the letter with its number
};

// Letters beside each other in one look.
struct PrintPiece {
  double left = 0;
  int look = 0;
  std::string text;
  friend bool operator==(const PrintPiece&, const PrintPiece&) = default;
};

// A row on paper: a line, or a part of one that is too long for the paper's width.
struct PrintRow {
  int start = 0;  // its first byte in the line
  std::vector<PrintPiece> pieces;
};

// Lays out a text on pages of a device, one after the other or any that has been reached before.
// Each letter is on one page only. Lines break after blanks, else before the letter that doesn't
// fit; the rest begins below the first letter of the line.
class PrintLayout {
 public:
  // All three must outlive it.
  PrintLayout(const PrintText& itsText, PrintDevice& itsDevice, const PrintStyles& itsStyles);

  // The start of a page: a row of a line. Line -1 is the end of the text.
  struct Place {
    int line = 0;
    int row = 0;
    friend bool operator==(const Place&, const Place&) = default;
  };
  Place First() const { return {text.LineFrom(0), 0}; }

  // A line that begins on a page.
  struct LineTop {
    int line = 0;
    int top = 0;
  };
  // Lays out the page that starts at a place and returns where the next one starts. A page has at
  // least one row. If it is drawn, `begun` gets the lines that begin on it.
  enum class Drawing { cDrawn, cMeasured };
  Place Page(Place from, const PrintRect& area, Drawing drawing, std::vector<LineTop>& begun);

  // The rows of a line on paper of a width. Valid until the next call.
  const std::vector<PrintRow>& RowsOf(int line, double width);
  // The byte of the line at which the place's row starts; 0 before the line has been laid out.
  int StartOf(Place place) const;
  int RowHeight() const { return rowHeight; }

 private:
  // Letters that are never parted. There is one for nearly every byte of a text, so it owns none.
  struct Token {
    int start = 0;                // its first byte in the line
    size_t shown = 0, count = 0;  // the bytes to print, of `shownBytes`
    int look = 0;
    double width = 0;
    bool isBlank = false;
    bool isTab = false;
    bool isAlone = false;  // shaped as a whole, in a piece of its own
  };
  Token NextToken(const PrintLine& line, size_t& at);
  void TakeOther(const PrintLine& line, size_t& at, Token& token);
  std::string_view Shown(const Token& token) const;
  double Measure(int font, const Token& token);
  void Break(const PrintLine& line, double width);
  void Put(const Token& token, double& x, double start);
  void Emit(size_t count, double start);
  void DrawRow(const PrintRow& row, int left, int top);

  const PrintText& text;
  PrintDevice& device;
  const PrintStyles& styles;
  std::array<int, 256> fonts{};
  int numberFont = 0;
  int ascent = 0, rowHeight = 0;
  double numberWidth = 0;  // of the column of line numbers
  double blankWidth = 0;
  std::vector<std::array<double, 128>> widths;  // of ASCII, by font
  std::vector<Token> row;                       // the one that is being filled
  std::string shownBytes;                       // of the tokens of a line
  std::vector<PrintRow> rows;                   // of `rowsLine`
  int rowsLine = -1;
  double rowsWidth = 0;
};

}  // namespace mavro
