#pragma once

#include <string>
#include <string_view>

namespace mavro {

// A sheet in the dots of its device. The printable area is all that the device can reach.
struct PrintMetrics {
  int dpiX = 0, dpiY = 0;
  int physicalWidth = 0, physicalHeight = 0;  // of the sheet
  int offsetX = 0, offsetY = 0;               // of the printable area
  int width = 0, height = 0;                  // of the printable area
};

// A rectangle in dots, from the top left of the sheet.
struct PrintRect {
  int left = 0, top = 0, right = 0, bottom = 0;
  friend bool operator==(const PrintRect&, const PrintRect&) = default;
};

// A font on paper; `size` in points.
struct PrintFont {
  std::string face;
  int size = 10;
  bool isBold = false;
  bool isItalic = false;
  friend bool operator==(const PrintFont&, const PrintFont&) = default;
};

// The heights of a font, in dots.
struct PrintHeights {
  int ascent = 0, descent = 0, leading = 0;
  int Text() const { return ascent + descent; }
  int Line() const { return ascent + descent + leading; }
};

// Paper that text can be put on: a printer, a PDF file, the picture of a page. Colours are
// blue-green-red, texts are UTF-8.
class PrintDevice {
 public:
  virtual ~PrintDevice() = default;

  virtual PrintMetrics Metrics() const = 0;

  // Group: the job. StartDoc is false if the device can't print. EndDoc returns why the document
  // could not be finished; empty on success. After Abort nothing is printed, and a file is as it
  // was before.
  virtual bool StartDoc(const std::string& title) = 0;
  virtual void StartPage() = 0;
  virtual void EndPage() = 0;
  virtual std::string EndDoc() = 0;
  virtual void Abort() = 0;

  // Group: fonts. Measuring works at any time, drawing between StartPage and EndPage.
  virtual int AddFont(const PrintFont& font) = 0;  // its number
  virtual PrintHeights HeightsOf(int font) = 0;
  virtual double WidthOf(int font, std::string_view text) = 0;
  virtual void TextOut(double x, double baseline, int font, int ink, std::string_view text) = 0;
  virtual void Fill(const PrintRect& area, int colour) = 0;
  // An entry in the document's table of contents, if it can have one: it leads to a height of the
  // present page.
  virtual void AddOutline(const std::string& title, int y) = 0;
};

}  // namespace mavro
