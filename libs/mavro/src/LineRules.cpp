#include "LineRules.h"

#include <utility>

namespace mavro {

void NewlineConverter::Append(std::string_view piece, std::string& text) {
  while (!piece.empty()) {
    const size_t newline = piece.find('\n');
    const std::string_view before = piece.substr(0, newline);
    text.append(before);
    if (!before.empty()) afterReturn = before.back() == '\r';
    if (newline == std::string_view::npos) return;
    text.append(afterReturn ? "\n" : "\r\n");
    afterReturn = false;
    piece.remove_prefix(newline + 1);
  }
}

void LineBuffer::Append(std::string_view bytes) {
  buffer.erase(0, begin);
  searched -= begin;
  begin = 0;
  buffer.append(bytes);
}

bool LineBuffer::Next(std::string& line) {
  const size_t newline = buffer.find('\n', searched);
  if (newline == std::string::npos) {
    searched = buffer.size();
    return false;
  }
  searched = newline;
  const size_t position = newline - begin;
  if (rule == Rule::cBlocking && position == 0) return false;
  line.assign(buffer, begin, rule == Rule::cBlocking ? position - 1 : position + 1);
  begin = searched = newline + 1;
  return true;
}

std::string LineBuffer::TakeRest() {
  std::string rest = std::exchange(buffer, {});
  rest.erase(0, std::exchange(begin, 0));
  searched = 0;
  return rest;
}

}  // namespace mavro
