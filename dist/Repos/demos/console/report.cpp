// SPDX-License-Identifier: MIT-0
#include "report.h"

#include <algorithm>
#include <iomanip>
#include <ostream>

namespace {

constexpr int cNumberWidth = 8;

void PrintFigure(std::ostream& output, std::size_t figure, const char* what) {
  output << std::setw(cNumberWidth) << figure << "  " << what << '\n';
}

void PrintBars(std::ostream& output, const std::vector<WordCounter::Entry>& entries) {
  std::size_t widest = 0;
  for (const auto& [word, count] : entries) widest = std::max(widest, CountCharacters(word));
  const std::size_t most = entries.front().second;
  for (const auto& [word, count] : entries) {
    const std::string padding(widest - CountCharacters(word), ' ');
    const std::size_t length = std::max<std::size_t>(1, count * cBarWidth / most);
    output << std::setw(cNumberWidth) << count << "  " << word << padding << "  "
           << std::string(length, '#') << '\n';
  }
}

}  // namespace

void PrintReport(std::ostream& output, const std::string& title, const TextStatistics& statistics,
                 std::size_t frequentWords) {
  output << title << '\n';
  PrintFigure(output, statistics.lines, "lines");
  PrintFigure(output, statistics.emptyLines, "of them empty");
  PrintFigure(output, statistics.longestLine, "characters in the longest line");
  PrintFigure(output, statistics.characters, "characters");
  PrintFigure(output, statistics.words.Total(), "words");
  PrintFigure(output, statistics.words.Distinct(), "different words");
  const auto entries = statistics.words.MostFrequent(frequentWords);
  if (entries.empty()) return;
  output << "most frequent:\n";
  PrintBars(output, entries);
}
