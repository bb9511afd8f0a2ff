#include "rescue/TextRescue.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <random>
#include <string_view>

#include "base/ParseInt.h"

namespace zendry {

namespace {

const RescueCopies cCopies("text");
int lastNumber = 0;
bool isOn = true;

// A copy has at most this many changes in its steps, and at most this many bytes or a part of the
// text; after that a new copy is written.
constexpr size_t cMostChanges = 8000;
constexpr size_t cLeastStepBytes = 64 * 1024;
constexpr size_t cStepPart = 4;

// The open files, in the order opened.
std::vector<TextRescue*>& OpenTexts() {
  static std::vector<TextRescue*> texts;
  return texts;
}

uint64_t RandomName() {
  std::random_device source;
  return static_cast<uint64_t>(source()) << 32 | source();
}

// --- The content of a copy: the mark, the name by which steps know it, the facts, NUL, the text. A
// content without the mark is only text.

constexpr std::string_view cFactsMark = "zendry-text-1 ";

std::string FormatFacts(uint64_t name, const TextFacts& facts) {
  std::string line(cFactsMark);
  const auto add = [&line](auto value) { line.append(std::to_string(value)).append(" "); };
  add(name);
  add(facts.encoding);
  add(facts.oddByte.empty() ? -1 : static_cast<int>(static_cast<unsigned char>(facts.oddByte[0])));
  add(static_cast<int>(facts.disk.exists));
  add(facts.disk.device);
  add(facts.disk.inode);
  add(facts.disk.size);
  add(facts.disk.changed);
  add(facts.disk.touched);
  return line;
}

// Takes a number and the blank after it from the front of `line`. False, with `value` unchanged,
// when there is none.
template <class T>
bool TakeField(std::string_view& line, T& value) {
  std::string_view rest = line;
  const std::optional<T> number = TakeNumber<T>(rest);
  if (!number || !rest.starts_with(' ')) return false;
  value = *number;
  line = rest.substr(1);
  return true;
}

bool ReadFacts(std::string_view line, uint64_t& name, TextFacts& facts) {
  int odd = -1, exists = 0;
  const bool sound = TakeField(line, name) && TakeField(line, facts.encoding) &&
                     TakeField(line, odd) && TakeField(line, exists) &&
                     TakeField(line, facts.disk.device) && TakeField(line, facts.disk.inode) &&
                     TakeField(line, facts.disk.size) && TakeField(line, facts.disk.changed) &&
                     (line.empty() || TakeField(line, facts.disk.touched));
  if (!sound || !line.empty()) return false;
  if (odd >= 0 && odd <= UINT8_MAX) facts.oddByte = static_cast<char>(odd);
  facts.disk.exists = exists != 0;
  return true;
}

RescuedText Complete(RescueCopy copy) {
  RescuedText text{std::move(copy), {}};
  if (!text.content.starts_with(cFactsMark)) return text;
  const size_t end = text.content.find('\0');
  if (end == std::string::npos) return text;
  const auto line = std::string_view(text.content).substr(0, end).substr(cFactsMark.size());
  uint64_t name = 0;
  TextFacts facts;
  if (!ReadFacts(line, name, facts)) return text;
  text.facts = facts;
  text.content.erase(0, end + 1);
  text.content = ApplySteps(std::move(text.content), name, text.steps);
  text.steps.clear();
  return text;
}

}  // namespace

TextRescue::TextRescue(const RescueSource& newSource) : source(newSource), number(++lastNumber) {
  OpenTexts().push_back(this);
}

TextRescue::~TextRescue() {
  Drop();
  DropReplaced();
  std::erase(OpenTexts(), this);
}

void TextRescue::WillChange(long start, long removed, long added) {
  changes.Add(static_cast<size_t>(start), static_cast<size_t>(removed), static_cast<size_t>(added),
              source);
}

void TextRescue::Changed(int bytes, Clock::time_point now) {
  if (bytesBehind == 0) behindSince = now;
  bytesBehind += std::min(bytes, cMostBytesBehind);
  if (bytesBehind >= cMostBytesBehind) KeepDue(now);
}

void TextRescue::Tick(Clock::time_point now) {
  if (bytesBehind > 0 && now - behindSince >= cLongestBehind) KeepDue(now);
}

// A failed copy is tried again after the full wait: a full disk must not interrupt the typing every
// second.
void TextRescue::KeepDue(Clock::time_point now) {
  if (!KeepNow()) behindSince = now;
}

bool TextRescue::KeepNow() {
  if (bytesBehind == 0) return true;
  if (!isOn) return false;
  const bool isKept = KeepStep() || KeepCopy();
  bytesBehind = isKept ? 0 : 1;
  if (isKept) whyNone.clear();
  return isKept;
}

// False when a step is not enough: there is no copy, the copy has changed since it was written, it
// has another path or other facts, or the changes are more than steps should hold.
bool TextRescue::KeepStep() {
  const size_t length = source.PieceLength();
  const std::string_view taken = changes.Take(source);
  if (!changes.LeadTo(length) || copyPath != source.RescuePath() ||
      copyFacts != source.RescueFacts() || cCopies.Stamp(number) != copyStamp)
    return false;
  if (taken.empty()) return true;
  const std::string step = MakeStep(copyName, steps + 1, length, taken);
  if (!cCopies.AddStep(number, stepBytes, step).Ok()) return false;
  ++steps;
  stepBytes += step.size();
  changes.Forget();
  return true;
}

// The old copy and its steps stay valid until the new copy has replaced it.
mavro::FileResult TextRescue::WriteCopy(int asNumber, uint64_t name) const {
  const size_t length = source.PieceLength();
  std::string content = FormatFacts(name, source.RescueFacts());
  content.reserve(content.size() + 1 + length);
  content += '\0';
  source.AppendPiece(0, length, content);
  return cCopies.Keep(asNumber, source.RescuePath(), content);
}

bool TextRescue::KeepCopy() {
  const uint64_t name = RandomName();
  const mavro::FileResult written = WriteCopy(number, name);
  if (!written.Ok()) whyNone = written.error;
  if (!written.Ok()) return false;
  copyName = name;
  copyPath = source.RescuePath();
  copyFacts = source.RescueFacts();
  copyStamp = cCopies.Stamp(number);
  steps = 0;
  stepBytes = 0;
  const size_t length = source.PieceLength();
  changes.Begin(length, std::max(cLeastStepBytes, length / cStepPart), cMostChanges);
  return true;
}

void TextRescue::Drop() {
  bytesBehind = 0;
  whyNone.clear();
  changes.Stop();
  cCopies.Drop(number);
}

mavro::FileResult TextRescue::LeaveReplaced() {
  const int beside = ++lastNumber;
  mavro::FileResult written = WriteCopy(beside, RandomName());
  if (written.Ok()) replaced.push_back(beside);
  return written;
}

void TextRescue::DropReplaced() {
  for (const int beside : replaced) cCopies.Drop(beside);
  replaced.clear();
}

void TextRescue::SetOn(bool on) {
  if (on == isOn) return;
  isOn = on;
  for (TextRescue* text : OpenTexts())
    if (!on) text->Drop();
}

void TextRescue::KeepAll() {
  if (!isOn) return;
  for (TextRescue* text : OpenTexts()) {
    if (text->bytesBehind == 0 || !text->WriteCopy(text->number, RandomName()).Ok()) continue;
    text->bytesBehind = 0;
    text->copyStamp = {};
  }
  for (TextRescue* text : OpenTexts())
    if (text->bytesBehind > 0 && text->KeepStep()) text->bytesBehind = 0;
}

std::vector<RescuedText> FindRescuedTexts() {
  std::vector<RescuedText> found;
  for (RescueCopy& copy : cCopies.OfEndedProcesses()) found.push_back(Complete(std::move(copy)));
  return found;
}

}  // namespace zendry
