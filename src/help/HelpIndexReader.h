#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "help/HelpIndex.h"

namespace zendry {

// Reads the lines of one help index into a HelpIndex.
class HelpIndexReader {
 public:
  // A longer line is read in pieces of this many bytes.
  static constexpr size_t cLongestLine = 511;

  explicit HelpIndexReader(HelpIndex& theIndex) : index(theIndex) {}
  void Read(std::string_view bytes);

 private:
  // The meaning of plain text lines: the description of a module, the body of an entry, or text
  // before the first heading.
  enum class TextOf { cModule = 1, cEntry = 2, cExtra = 3 };

  void TakeLine(std::string_view line);
  void TakeHeading(std::string_view line);
  void BeginModule(std::string_view line);
  void BeginEntry(std::vector<std::string_view> names);
  void TakeLanguage(std::string_view line);
  bool TakeField(std::string_view line);
  void AppendLine(std::string& field, std::string_view line);
  void Flush();
  bool IsOurLanguage() const { return blockLanguage == 0 || blockLanguage == index.language; }

  HelpIndex& index;
  TextOf textOf = TextOf::cExtra;
  HelpEntry current;
  std::vector<std::string> pending;  // the keys of the current entry
  char blockLanguage = 0;            // 0 outside of a language block
  std::string* field = nullptr;      // that the last line went to; null for none
};

}  // namespace zendry
