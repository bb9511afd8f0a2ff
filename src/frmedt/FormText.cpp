#include "frmedt/FormText.h"

#include <algorithm>

#include "frmedt/FormBlocks.h"

namespace zendry {

namespace {

// Line ends are LF, CR LF and CR, as in an editor.
std::vector<size_t> FindStarts(std::string_view text) {
  std::vector<size_t> starts = {0};
  for (size_t i = 0; i < text.size(); ++i) {
    const bool isEnd = text[i] == '\n' || (text[i] == '\r' && text.substr(i + 1, 1) != "\n");
    if (isEnd) starts.push_back(i + 1);
  }
  return starts;
}

}  // namespace

FormText::FormText(std::string newPath, std::string newText)
    : path(std::move(newPath)), text(std::move(newText)) {}

const std::vector<size_t>& FormText::Starts() const {
  if (starts.empty()) starts = FindStarts(text);
  return starts;
}

int FormText::LineCount() const {
  return static_cast<int>(Starts().size());
}

size_t FormText::LineStart(int line) const {
  return line < LineCount() ? Starts()[static_cast<size_t>(line)] : text.size();
}

std::string_view FormText::Line(int line) const {
  const size_t start = LineStart(line);
  return std::string_view(text).substr(start, LineStart(line + 1) - start);
}

// What follows the last marker is not read for the lines of markers.
void FormText::FindBlocks(size_t end) const {
  constexpr std::string_view cMarker = "//!";
  if (end <= known) return;
  const size_t last = text.rfind(cMarker);
  const bool isEnough = last != std::string::npos && last + cMarker.size() >= end;
  known = isEnough ? last + cMarker.size() : std::max(end, text.size());
  blocks = FindFormBlocks(std::string_view(text).substr(0, known));
}

FormTag FormText::TagAtLine(int line) const {
  const size_t place = LineStart(line);
  FindBlocks(place + 1);
  const auto around = [place](const FormBlock& one) {
    return one.start < place && place < one.end;
  };
  // An inner block comes after the one around it.
  const auto at = std::find_if(blocks.rbegin(), blocks.rend(), around);
  return at == blocks.rend() ? FormTag() : at->tag;
}

}  // namespace zendry
