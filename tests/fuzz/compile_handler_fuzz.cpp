#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "base/ControlBytes.h"
#include "build/OutputParser.h"

// Reads the lines of a tool as each of the three readers: nothing is lost or made up on the way to
// a row, and what is shown of it holds no control bytes.

namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

void CheckShown(const std::string& text) {
  for (char c : zendry::MarkControlBytes(text)) {
    const auto byte = static_cast<unsigned char>(c);
    Require((byte >= 0x20 && byte != 0x7F) || c == '\t' || c == '\n' || c == '\r');
  }
}

void CheckRow(const zendry::LineMeaning& meaning, size_t known) {
  Require(meaning.row.text.size() <= known);
  CheckShown(meaning.row.text);
  CheckShown(meaning.row.file);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::string_view text(reinterpret_cast<const char*>(data), size);
  zendry::CompileLines state;
  constexpr size_t cLongestPrefix = 8;  // "LINKER: "
  while (!text.empty()) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    const std::string held = state.pendingMessage;
    const size_t known = held.size() + 1 + line.size();
    const zendry::LineMeaning meaning = zendry::ReadCompileLine(state, line);
    CheckRow(meaning, known);
    if (meaning.kind == zendry::LineMeaning::cNewRow) {
      Require(state.pendingMessage.empty());
      Require(line.find(meaning.row.file) == 0);
      Require(meaning.row.text.ends_with(held.empty() ? line.substr(line.size() - 1) : held));
    }
    CheckRow(zendry::ReadLinkLine(line), line.size() + cLongestPrefix);
    CheckRow(zendry::ReadArchiveLine(line), line.size());
  }
  return 0;
}
