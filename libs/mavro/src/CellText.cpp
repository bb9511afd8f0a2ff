#include "CellText.h"

#include <algorithm>
#include <utility>

namespace mavro {

namespace {

constexpr std::string_view cEnds = "\t\r\n";

// Reads the cells of a text one after the other.
class CellReader {
 public:
  explicit CellReader(std::string_view its) : text(its) {}

  bool IsAtEnd() const { return at == text.size(); }

  std::string Cell() {
    std::string cell;
    if (ReadQuoted(cell)) return cell;
    const size_t end = std::min(text.find_first_of(cEnds, at), text.size());
    cell = text.substr(at, end - at);
    at = end;
    return cell;
  }

  // True if a further cell of the same row follows.
  bool PassTab() {
    if (IsAtEnd() || text[at] != '\t') return false;
    ++at;
    return true;
  }

  void PassLineEnd() {
    if (IsAtEnd()) return;
    if (text.substr(at, 2) == "\r\n") ++at;
    ++at;
  }

 private:
  // A quoted cell ends with a quote before a tab, a line break or the end; else it isn't one.
  bool ReadQuoted(std::string& cell) {
    if (IsAtEnd() || text[at] != '"') return false;
    for (size_t i = at + 1; i < text.size(); ++i) {
      if (text[i] != '"') {
        cell += text[i];
      } else if (i + 1 < text.size() && text[i + 1] == '"') {
        cell += text[i++];
      } else if (i + 1 == text.size() || cEnds.find(text[i + 1]) != cEnds.npos) {
        at = i + 1;
        return true;
      } else {
        cell.clear();
        return false;
      }
    }
    cell.clear();
    return false;
  }

  const std::string_view text;
  size_t at = 0;
};

}  // namespace

void AppendCell(std::string& text, std::string_view cell) {
  const bool isQuoted = cell.find_first_of(cEnds) != cell.npos || cell.starts_with('"');
  if (!isQuoted) {
    text += cell;
    return;
  }
  text += '"';
  for (const char c : cell) {
    if (c == '"') text += c;
    text += c;
  }
  text += '"';
}

std::vector<std::vector<std::string>> SplitCells(std::string_view text) {
  std::vector<std::vector<std::string>> rows;
  CellReader reader(text);
  while (!reader.IsAtEnd()) {
    std::vector<std::string> row;
    do {
      row.push_back(reader.Cell());
    } while (reader.PassTab());
    reader.PassLineEnd();
    rows.push_back(std::move(row));
  }
  return rows;
}

}  // namespace mavro
