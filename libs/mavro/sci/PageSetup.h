#pragma once

#include <string>

namespace mavro {

// How pages look; kept between two runs of a program.
struct PageSetup {
  // A paper of the table in PageSetup.cpp.
  std::string paper = "A4";
  bool isLandscape = false;
  // Margins in hundredths of a millimetre.
  int left = 1500, top = 1500, right = 1500, bottom = 1500;
  int size = 9;  // of the letters, in points; 0: as on the screen
  bool hasHeader = true;
  bool hasFooter = false;
  bool hasNumbers = true;   // of lines
  bool isAsFolded = false;  // folded parts are left out
  bool hasColours = true;   // else all text is black
  friend bool operator==(const PageSetup&, const PageSetup&) = default;
};

// A paper's size, upright, in hundredths of a millimetre.
struct PaperSize {
  const char* name;
  int width, height;
};
inline constexpr PaperSize cPapers[] = {
    {"A4", 21000, 29700},     {"A3", 29700, 42000},    {"A5", 14800, 21000},
    {"Letter", 21590, 27940}, {"Legal", 21590, 35560}, {"Tabloid", 27940, 43180},
};

// The size of the sheet as it lies; A4 for a name that the table doesn't have.
PaperSize SheetOf(const PageSetup& setup);

// The settings that can be used: margins, letters and paper inside their limits, and room for text
// between the margins.
PageSetup Usable(PageSetup setup);
inline constexpr int cMostMargin = 10000;
inline constexpr int cMostPrintSize = 72;

// True if lengths are metric where the user lives, false for inches.
bool IsMetricHere();

// The setup of all editors of the program.
extern PageSetup thePageSetup;

}  // namespace mavro
