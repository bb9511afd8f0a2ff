#include "base/ToolColumns.h"

#include <locale.h>

#include <cwchar>

namespace zendry {

namespace {

constexpr int cTabStops = 8;

// Bytes are letters of UTF-8 as long as this lives, whatever the user's locale is.
class Utf8Letters {
 public:
  Utf8Letters() {
    static const locale_t letters = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    if (letters) before = uselocale(letters);
  }
  ~Utf8Letters() {
    if (before) uselocale(before);
  }
  Utf8Letters(const Utf8Letters&) = delete;
  Utf8Letters& operator=(const Utf8Letters&) = delete;

 private:
  locale_t before = nullptr;
};

struct Letter {
  size_t bytes = 1;
  int columns = 1;
};

Letter FirstLetter(std::string_view text) {
  if (static_cast<unsigned char>(text.front()) < 0x80) return {};
  const Utf8Letters utf8;
  std::mbstate_t state{};
  wchar_t letter = 0;
  const size_t bytes = std::mbrtowc(&letter, text.data(), text.size(), &state);
  if (bytes == 0 || bytes > text.size()) return {};
  const int columns = wcwidth(letter);
  return {bytes, columns < 0 ? 1 : columns};
}

// A walk along a line, a letter a step.
struct Walk {
  std::string_view line;
  size_t at = 0;
  int column = 1;
  Letter next = {};

  explicit Walk(std::string_view itsLine) : line(itsLine) { Look(); }
  bool IsAtEnd() const { return at == line.size(); }
  void Step() {
    column += line[at] == '\t' ? cTabStops - (column - 1) % cTabStops : next.columns;
    at += next.bytes;
    Look();
  }

 private:
  void Look() {
    if (!IsAtEnd()) next = FirstLetter(line.substr(at));
  }
};

}  // namespace

size_t ByteInColumn(std::string_view line, int column) {
  Walk walk(line);
  while (!walk.IsAtEnd() && (walk.column < column || walk.next.columns == 0)) walk.Step();
  return walk.at;
}

int ColumnOfByte(std::string_view line, size_t byte) {
  Walk walk(line);
  while (!walk.IsAtEnd() && walk.at < byte) walk.Step();
  return walk.column;
}

}  // namespace zendry
