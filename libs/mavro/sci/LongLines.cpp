#include "LongLines.h"

#include <algorithm>
#include <functional>

namespace mavro {

namespace {

constexpr std::string_view cLineEnds = "\r\n";
// The plane's characters are F4 80 80 80 to F4 8F BF BF.
constexpr char cLead = '\xF4';
constexpr int cCharacters = 0x10000;
constexpr int cAscii = 0x80;
constexpr size_t cShownBeginning = 60;
constexpr size_t cDigested = 4096;  // of a line, from its beginning

unsigned Byte(std::string_view text, size_t at) {
  return static_cast<unsigned char>(text[at]);
}

bool IsNext(std::string_view text, size_t at) {
  return (Byte(text, at) & 0xC0) == 0x80;
}

// The place of the first line end from `at` on, or the end of the text. This is far faster than a
// search for either of two letters, and it doesn't search far ahead for the other kind of line end.
size_t EndOfLine(std::string_view text, size_t at) {
  constexpr size_t cStep = 64 * 1024;
  for (; at < text.size(); at += cStep) {
    const std::string_view part = text.substr(at, cStep);
    const size_t end = std::min(part.find('\n'), part.find('\r'));
    if (end != std::string_view::npos) return at + end;
  }
  return text.size();
}

std::string WithCommas(size_t number) {
  std::string digits = std::to_string(number);
  for (size_t at = digits.size(); at > 3;) digits.insert(at -= 3, ",");
  return digits;
}

}  // namespace

std::string LongLines::CharacterOf(int number) {
  const auto next = [](int bits) { return static_cast<char>(0x80 | (bits & 0x3F)); };
  return {cLead, next(number >> 12), next(number >> 6), next(number)};
}

LongLines::Found LongLines::FindCharacter(std::string_view text, size_t at) {
  for (at = text.find(cLead, at); at != std::string_view::npos; at = text.find(cLead, at + 1)) {
    if (text.size() - at < cStandInBytes) break;
    if (!IsNext(text, at + 1) || !IsNext(text, at + 2) || !IsNext(text, at + 3)) continue;
    const unsigned high = Byte(text, at + 1) & 0x3F;
    if (high >= cCharacters >> 12) continue;
    const unsigned low = (Byte(text, at + 2) & 0x3F) << 6 | (Byte(text, at + 3) & 0x3F);
    return {at, static_cast<int>(high << 12 | low)};
  }
  return {};
}

void LongLines::Avoid(int number) {
  avoided.resize(cCharacters);
  avoided[static_cast<size_t>(number)] = true;
}

// One half of the plane is for lines, so that a number is left for each character that collides.
int LongLines::Keep(std::string_view line) {
  const size_t digest = line.size() ^ std::hash<std::string_view>()(line.substr(0, cDigested));
  const auto [first, last] = numbers.equal_range(digest);
  for (auto known = first; known != last; ++known)
    if (*Kept(known->second) == line) return known->second;
  const int number = KeepBelow(cCharacters / 2, line);
  if (number >= 0) numbers.emplace(digest, number);
  return number;
}

int LongLines::KeepCharacter(int number) {
  const auto known = characters.find(number);
  if (known != characters.end()) return known->second;
  const int standIn = KeepBelow(cCharacters, CharacterOf(number));
  if (standIn >= 0) characters[number] = standIn;
  return standIn;
}

int LongLines::KeepBelow(int end, std::string_view line) {
  size_t number = lines.size();
  while (number < avoided.size() && avoided[number]) ++number;
  if (number >= static_cast<size_t>(end)) return -1;
  lines.resize(number);
  lines.push_back(std::make_shared<const std::string>(line));
  ++kept;
  return static_cast<int>(number);
}

const std::string* LongLines::Kept(int number) const {
  return number >= 0 && number < End() ? lines[static_cast<size_t>(number)].get() : nullptr;
}

// Letters beyond ASCII become dots: the start of the line may be cut within one, or one may change
// the direction of the rest.
std::string LongLines::NoteOf(int number) const {
  const std::string* line = Kept(number);
  if (!line) return {};
  std::string beginning = line->substr(0, cShownBeginning);
  for (char& c : beginning)
    if (c < ' ' || c == '\x7F' || static_cast<unsigned char>(c) >= cAscii) c = '.';
  return WithCommas(line->size()) + " bytes not shown: " + beginning + "...";
}

std::string LongLines::Fold(std::string_view text) {
  std::string shown;
  LongLineFolder folder(*this, [&shown](std::string_view piece) { shown += piece; });
  folder.Take(text);
  folder.Finish();
  return shown;
}

std::string LongLines::Unfold(std::string_view shown) const {
  std::string whole;
  size_t done = 0;
  for (Found found = FindCharacter(shown, 0); found.number >= 0;
       found = FindCharacter(shown, found.place + cStandInBytes)) {
    const std::string* line = Kept(found.number);
    if (!line) continue;
    whole.append(shown, done, found.place - done).append(*line);
    done = found.place + cStandInBytes;
  }
  return whole.append(shown, done);
}

bool LongLines::AreIn(std::string_view shown) const {
  if (IsEmpty()) return false;
  for (Found found = FindCharacter(shown, 0); found.number >= 0;
       found = FindCharacter(shown, found.place + cStandInBytes))
    if (Kept(found.number)) return true;
  return false;
}

void LongLineFolder::Take(std::string_view chunk) {
  if (!rest.empty()) {
    const size_t end = EndOfLine(chunk, 0);
    rest += chunk.substr(0, end);
    if (end == chunk.size()) return;
    TakeLines(rest);
    rest.clear();
    chunk.remove_prefix(end);
  }
  const size_t last = chunk.find_last_of(cLineEnds);
  const size_t complete = last == std::string_view::npos ? 0 : last + 1;
  TakeLines(chunk.substr(0, complete));
  rest = chunk.substr(complete);
}

void LongLineFolder::Finish() {
  TakeLines(rest);
  rest.clear();
}

// Jumps from a line end to the last line end within the length of an ordinary line.
void LongLineFolder::TakeLines(std::string_view text) {
  size_t done = 0, at = 0;
  while (text.size() - at > LongLineFolder::cOrdinaryBytes) {
    const std::string_view reach = text.substr(at, cOrdinaryBytes + 1);
    const size_t end = reach.find_last_of(cLineEnds);
    if (end != std::string_view::npos) {
      Pass(reach.substr(0, end + 1));
      at += end + 1;
      continue;
    }
    const size_t lineEnd = EndOfLine(text, at + cOrdinaryBytes);
    const std::string_view longLine = text.substr(at, lineEnd - at);
    if (!MayStay(longLine.size())) {
      Add(text.substr(done, at - done));
      done = at;
      const int number = lines.Keep(longLine);
      if (number >= 0) {
        add(LongLines::CharacterOf(number));
        done = lineEnd;
      }
    }
    at = lineEnd;
  }
  Pass(text.substr(at));
  Add(text.substr(done));
}

// Counts the lines after a longer one until it can't be on the same screen any more.
void LongLineFolder::Pass(std::string_view text) {
  if (stayed.empty()) return;
  line += std::max(std::count(text.begin(), text.end(), '\n'),
                   std::count(text.begin(), text.end(), '\r'));
  while (!stayed.empty() && line - stayed.front().line > cScreenLines) {
    stayedBytes -= stayed.front().length;
    stayed.pop_front();
  }
}

bool LongLineFolder::MayStay(size_t length) {
  if (stayedBytes + length > cMostOnScreen) return false;
  stayed.push_back({line, length});
  stayedBytes += length;
  return true;
}

// A character of the text that is already a stand-in gets a stand-in of its own.
void LongLineFolder::Add(std::string_view text) {
  size_t done = 0;
  for (auto found = LongLines::FindCharacter(text, 0); found.number >= 0;
       found = LongLines::FindCharacter(text, found.place + LongLines::cStandInBytes)) {
    if (!lines.Kept(found.number)) {
      lines.Avoid(found.number);
      continue;
    }
    const int number = lines.KeepCharacter(found.number);
    if (number < 0) continue;
    add(text.substr(done, found.place - done));
    add(LongLines::CharacterOf(number));
    done = found.place + LongLines::cStandInBytes;
  }
  if (done < text.size()) add(text.substr(done));
}

std::vector<StandIns::Place>::iterator StandIns::Lower(int position) {
  return std::lower_bound(places.begin(), places.end(), position,
                          [](const Place& place, int from) { return place.position < from; });
}

void StandIns::WillInsert(int position, int length) {
  Settle();
  DropBroken(position, position);
  for (auto place = Lower(position); place != places.end(); ++place) place->position += length;
  LookAt(position, position + length);
}

void StandIns::WillDelete(int position, int length) {
  Settle();
  DropBroken(position, position + length);
  for (auto place = Lower(position); place != places.end(); ++place) place->position -= length;
  LookAt(position, position);
}

// Forgets the stand-ins that a change removes a byte of or inserts bytes into.
void StandIns::DropBroken(int start, int end) {
  std::erase_if(places, [=](const Place& place) {
    return place.position < end && place.position + LongLines::cStandInBytes > start;
  });
}

void StandIns::LookAt(int start, int end) {
  isNew = true;
  newStart = start;
  newEnd = end;
}

void StandIns::Reset() {
  places.clear();
  isNew = false;
  if (!lines.IsEmpty()) LookAt(0, text.Length());
}

// A change and the bytes next to it may also form a character.
void StandIns::Settle() {
  if (!std::exchange(isNew, false)) return;
  constexpr int cAround = LongLines::cStandInBytes - 1;
  constexpr int cStep = 1024 * 1024;
  const int end = std::min(newEnd + cAround, text.Length());
  for (int from = std::max(newStart - cAround, 0); from < end; from += cStep)
    Look(from, std::min(from + cStep + cAround, end));
}

void StandIns::Look(int start, int end) {
  std::string bytes;
  text.AppendRange(start, end, bytes);
  for (auto found = LongLines::FindCharacter(bytes, 0); found.number >= 0;
       found = LongLines::FindCharacter(bytes, found.place + LongLines::cStandInBytes)) {
    const int position = start + static_cast<int>(found.place);
    const auto at = Lower(position);
    if (!lines.Kept(found.number))
      lines.Avoid(found.number);
    else if (at == places.end() || at->position != position)
      places.insert(at, {position, found.number});
  }
}

int StandIns::At(int position) {
  Settle();
  const auto at = Lower(position);
  return at != places.end() && at->position == position ? at->number : -1;
}

int StandIns::Count() {
  Settle();
  return static_cast<int>(places.size());
}

size_t StandIns::WholePosition(int position) {
  Settle();
  auto whole = static_cast<size_t>(position);
  for (const Place& place : places) {
    if (place.position >= position) break;
    whole += lines.Kept(place.number)->size() - LongLines::cStandInBytes;
  }
  return whole;
}

// The whole text is made of pieces of the shown one and lines in turn; `at` is the start of the
// next.
void StandIns::AppendWhole(size_t start, size_t end, std::string& to) {
  Settle();
  size_t at = 0;
  int shown = 0;
  const auto clip = [&](size_t length) {
    const size_t from = std::clamp(start, at, at + length) - at;
    const size_t till = std::clamp(end, at, at + length) - at;
    at += length;
    return std::pair(from, std::max(from, till));
  };
  const auto takeShown = [&](int upTo) {
    const auto [from, till] = clip(static_cast<size_t>(upTo - shown));
    text.AppendRange(shown + static_cast<int>(from), shown + static_cast<int>(till), to);
    shown = upTo;
  };
  for (const Place& place : places) {
    takeShown(place.position);
    const std::string& line = *lines.Kept(place.number);
    const auto [from, till] = clip(line.size());
    to.append(line, from, till - from);
    shown += LongLines::cStandInBytes;
  }
  takeShown(text.Length());
}

}  // namespace mavro
