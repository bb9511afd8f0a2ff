#include "base/CompilerColumn.h"

#include <locale.h>

#include <cwchar>

namespace zendry {

namespace {

constexpr int cTabStops = 8;

// Bytes are letters of UTF-8 as long as this lives, whatever the user's locale is.
class Utf8Letters {
 public:
  Utf8Letters() {
    if (letters) before = uselocale(letters);
  }
  ~Utf8Letters() {
    if (!letters) return;
    uselocale(before);
    freelocale(letters);
  }
  Utf8Letters(const Utf8Letters&) = delete;
  Utf8Letters& operator=(const Utf8Letters&) = delete;

 private:
  locale_t letters = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  locale_t before = nullptr;
};

struct Letter {
  size_t bytes = 1;
  int columns = 1;
};

// What is no letter is a byte of one column.
Letter FirstLetter(std::string_view text) {
  std::mbstate_t state{};
  wchar_t letter = 0;
  const size_t bytes = std::mbrtowc(&letter, text.data(), text.size(), &state);
  if (bytes == 0 || bytes > text.size()) return {};
  const int columns = wcwidth(letter);
  return {bytes, columns < 0 ? 1 : columns};
}

}  // namespace

// An accent belongs to the letter before it: the caret never comes between the two.
size_t ByteAtColumn(std::string_view line, int column) {
  const Utf8Letters utf8;
  size_t at = 0;
  for (int reached = 1; at < line.size();) {
    const Letter letter = FirstLetter(line.substr(at));
    if (reached >= column && letter.columns > 0) break;
    reached += line[at] == '\t' ? cTabStops - (reached - 1) % cTabStops : letter.columns;
    at += letter.bytes;
  }
  return at;
}

}  // namespace zendry
