#include "LineSigns.h"

#include <algorithm>

namespace mavro {

namespace {

constexpr const char* cBlanks = " \t\r\n";

}  // namespace

LineSigns::Sign* LineSigns::Find(int handle) {
  const auto found = std::find_if(signs.begin(), signs.end(),
                                  [handle](const Sign& sign) { return sign.handle == handle; });
  return found == signs.end() ? nullptr : &*found;
}

// The line without the blanks around it: a line that is moved may be indented anew.
std::string LineSigns::Words(int line) const {
  std::string words = text.Range(text.LineStart(line), text.LineEnd(line));
  words.erase(0, std::min(words.find_first_not_of(cBlanks), words.size()));
  words.erase(words.find_last_not_of(cBlanks) + 1);
  return words;
}

int LineSigns::Add(int number, int line) {
  Sign sign;
  sign.handle = ++lastHandle;
  sign.number = number;
  sign.onBoard = board.Put(number, line);
  signs.push_back(std::move(sign));
  return lastHandle;
}

int LineSigns::LineOf(int handle) {
  Settle();
  const Sign* sign = Find(handle);
  if (!sign) return -1;
  const int line = sign->onBoard < 0 ? -1 : board.LineOfSign(sign->onBoard);
  if (line < 0) Remove(handle);
  return line;
}

void LineSigns::Change(int handle, int number) {
  Sign* sign = Find(handle);
  if (!sign || sign->number == number) return;
  sign->number = number;
  if (sign->onBoard < 0) return;
  const int line = board.LineOfSign(sign->onBoard);
  board.Take(sign->onBoard);
  sign->onBoard = line < 0 ? -1 : board.Put(number, line);
}

void LineSigns::Remove(int handle) {
  const Sign* sign = Find(handle);
  if (!sign) return;
  if (sign->onBoard >= 0)
    board.Take(sign->onBoard);
  else
    --gone;
  signs.erase(signs.begin() + (sign - signs.data()));
}

// Room for more than was inserted does no harm: only lines with the right text are taken from it.
void LineSigns::WillInsert(int position, int length) {
  if (gone == 0) return;
  newStart = newStart < 0 ? position : std::min(newStart, position);
  newEnd = std::max(newEnd, position) + length;
}

bool LineSigns::HasAny(int line) const {
  return std::any_of(signs.begin(), signs.end(),
                     [&](const Sign& sign) { return board.HasSign(sign.number, line); });
}

// The lines that are deleted whole. A line whose rest is joined to another one is not.
void LineSigns::WillDelete(int position, int length) {
  const int end = position + length;
  const int first = text.LineOf(position);
  const int last = text.LineOf(end);
  if (signs.empty() || first == last) return;
  const bool isFirstWhole = text.LineStart(first) == position;
  const bool isLastWhole =
      text.LineEnd(last) == end && (!isFirstWhole || text.LineStart(last) < end);
  for (int line = isFirstWhole ? first : first + 1; line < last + isLastWhole; ++line)
    if (HasAny(line)) LoseLine(line);
}

void LineSigns::LoseLine(int line) {
  for (Sign& sign : signs) {
    if (sign.onBoard < 0 || board.LineOfSign(sign.onBoard) != line) continue;
    sign.line = Words(line);
    board.Take(sign.onBoard);
    sign.onBoard = -1;
    ++gone;
  }
}

void LineSigns::Settle() {
  const int start = newStart;
  const int end = std::min(newEnd, text.Length());
  newStart = newEnd = -1;
  if (gone == 0 || start < 0 || start > end) return;
  for (int line = text.LineOf(start); line <= text.LineOf(end) && gone > 0; ++line) {
    const std::string words = Words(line);
    if (words.empty()) continue;
    const auto found = std::find_if(signs.begin(), signs.end(), [&](const Sign& sign) {
      return sign.onBoard < 0 && sign.line == words;
    });
    if (found == signs.end()) continue;
    found->onBoard = board.Put(found->number, line);
    --gone;
  }
}

}  // namespace mavro
