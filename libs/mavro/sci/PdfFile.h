#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "FontSubset.h"

namespace mavro {

// A font of a PDF file.
struct PdfFont {
  std::string name;  // without blanks
  FontTable table;
  bool isItalic = false;
  bool isFixed = false;
};

// A glyph at a place of the page.
struct PdfGlyph {
  uint16_t number = 0;
  double x = 0;         // of the pen
  std::u32string text;  // the letters that it stands for
};

// Writes a PDF file: pages of text and areas, the fonts they use, and a table of contents. Places
// are dots from the top left of the page, colours blue-green-red, texts UTF-8.
class PdfFile {
 public:
  // `itsDeflate` compresses bytes in the format of zlib; without it nothing is compressed.
  using Deflate = std::function<std::string(std::string_view)>;
  explicit PdfFile(Deflate itsDeflate = nullptr);

  // Pages in dots; a font's size is in dots too.
  void BeginPage(int width, int height, int dpi);
  void EndPage();
  int AddFont(PdfFont font);
  // The glyphs of a text in one line, left to right. What begins where the text before it has ended
  // is written without its place.
  void Glyphs(int font, int size, int ink, double baseline, const std::vector<PdfGlyph>& glyphs);
  void Fill(int left, int top, int right, int bottom, int colour);
  // An entry in the table of contents for a height of the present page.
  void AddOutline(std::string_view title, int y);
  int PageCount() const { return static_cast<int>(pages.size()); }

  // The whole file; the title is the document's.
  std::string Finish(std::string_view title);

 private:
  struct Page {
    int object = 0;
    double width = 0, height = 0;  // in points
  };
  struct UsedFont {
    PdfFont font;
    FontFacts facts;
    std::map<uint16_t, std::u32string> glyphs;
    std::vector<bool> isKnown;  // by glyph: it is one of them
  };
  struct Entry {
    std::string title;
    size_t page = 0;
    double y = 0;  // from the bottom, in points
  };

  void SetInk(int colour);
  void MoveTo(double x, double y);
  void EndText();
  std::string Compressed(std::string_view bytes) const;
  int NewObject();
  void Put(int object, const std::string& body);
  void PutStream(int object, const std::string& entries, const std::string& bytes);
  void WriteFont(const UsedFont& used, int object);
  std::string WidthsOf(const UsedFont& used) const;
  int WriteOutlines();

  const Deflate deflate;
  std::string out;              // the file up to the last page that has ended
  std::vector<size_t> offsets;  // by object
  const int catalog, tree, info, resources;
  std::vector<UsedFont> fonts;
  std::vector<Page> pages;
  std::string content;  // of the present page
  std::vector<Entry> outline;
  std::unordered_map<int, std::string> inks;  // the words that choose a colour
  double scale = 1;                           // points in a dot
  int ink = -1, font = -1, size = -1;
  bool isInText = false;  // then the pen is at:
  double pen = 0;
  long penRow = 0;
};

// A text as PDF writes it: UTF-16 with a mark, in hexadecimal digits.
std::string PdfText(std::string_view utf8);

}  // namespace mavro
