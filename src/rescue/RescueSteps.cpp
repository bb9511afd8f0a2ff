#include "rescue/RescueSteps.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <vector>

#include "base/TextMark.h"

namespace zendry {

namespace {

// With at most this many bytes between two changes, writing those bytes is cheaper than beginning a
// new span.
constexpr size_t cNear = 16;

// The head of a step, before its changes. It is in this machine's byte order: the rescue folder
// stays on the machine.
struct StepHead {
  uint64_t checksum = 0;  // TextMark of all bytes after it
  uint64_t copy = 0;
  uint64_t number = 0;
  uint64_t lengthAfter = 0;
  uint64_t size = 0;  // bytes of changes
};

struct ChangeHead {
  uint32_t start = 0, removed = 0, added = 0;
};
static_assert(sizeof(ChangeHead) == TextChanges::cOverhead);

template <class T>
void AppendBytes(std::string& to, const T& value) {
  to.append(reinterpret_cast<const char*>(&value), sizeof value);
}

// Takes a value from the front of `from`; nothing when `from` is too short.
template <class T>
std::optional<T> TakeBytes(std::string_view& from) {
  T value;
  if (from.size() < sizeof value) return std::nullopt;
  std::memcpy(&value, from.data(), sizeof value);
  from.remove_prefix(sizeof value);
  return value;
}

struct Change {
  size_t start = 0, removed = 0;
  std::string_view added;
};

// The changes of a step to a text of `length` bytes; nothing when one of them is impossible.
std::optional<std::vector<Change>> ReadChanges(std::string_view changes, size_t& length) {
  std::vector<Change> read;
  while (!changes.empty()) {
    const auto head = TakeBytes<ChangeHead>(changes);
    if (!head || head->added > changes.size()) return std::nullopt;
    if (head->start > length || head->removed > length - head->start) return std::nullopt;
    read.push_back({head->start, head->removed, changes.substr(0, head->added)});
    changes.remove_prefix(head->added);
    length = length - head->removed + head->added;
  }
  return read;
}

// A text as a row of pieces of other texts, so that the cost of a change grows with the number of
// pieces.
class PieceRow {
 public:
  explicit PieceRow(std::string_view text) : length(text.size()) { pieces.push_back(text); }

  size_t Length() const { return length; }

  // The text must have the bytes that the change removes.
  void Apply(const Change& change) {
    const auto first = static_cast<ptrdiff_t>(SplitAt(change.start));
    const auto last = static_cast<ptrdiff_t>(SplitAt(change.start + change.removed));
    pieces.erase(pieces.begin() + first, pieces.begin() + last);
    if (!change.added.empty()) pieces.insert(pieces.begin() + first, change.added);
    length = length - change.removed + change.added.size();
  }

  std::string Text() const {
    std::string text;
    text.reserve(length);
    for (const std::string_view piece : pieces) text += piece;
    return text;
  }

 private:
  // Splits a piece so that one begins at `position`; answers the index of that piece.
  size_t SplitAt(size_t position) {
    size_t index = 0;
    for (; index < pieces.size() && position >= pieces[index].size(); ++index)
      position -= pieces[index].size();
    if (position == 0) return index;
    const std::string_view whole = pieces[index];
    pieces[index] = whole.substr(0, position);
    pieces.insert(pieces.begin() + static_cast<ptrdiff_t>(index) + 1, whole.substr(position));
    return index + 1;
  }

  std::vector<std::string_view> pieces;
  size_t length;
};

// Takes the first step from `steps` and answers its changes; nothing when the step is incomplete or
// not the next one.
std::optional<std::string_view> TakeStep(std::string_view& steps, uint64_t copy, uint64_t number,
                                         size_t& lengthAfter) {
  const std::string_view whole = steps;
  const auto head = TakeBytes<StepHead>(steps);
  if (!head || head->copy != copy || head->number != number) return std::nullopt;
  if (head->size > steps.size()) return std::nullopt;
  const size_t summed = sizeof *head - sizeof head->checksum + head->size;
  if (TextMark(whole.substr(sizeof head->checksum, summed)) != head->checksum) return std::nullopt;
  const std::string_view changes = steps.substr(0, head->size);
  steps.remove_prefix(head->size);
  lengthAfter = head->lengthAfter;
  return changes;
}

}  // namespace

void TextChanges::Begin(size_t length, size_t newMostBytes, size_t newMostCount) {
  Stop();
  collects = true;
  knownLength = length;
  mostBytes = newMostBytes;
  mostCount = newMostCount;
}

void TextChanges::Stop() {
  collects = false;
  hasSpan = false;
  closed.clear();
  closed.shrink_to_fit();
}

void TextChanges::Add(size_t start, size_t removed, size_t added, const TextPieces& text) {
  if (!collects) return;
  knownLength = knownLength - removed + added;
  const size_t end = spanStart + spanLength;
  if (hasSpan && (start > end + cNear || start + removed + cNear < spanStart)) Close(text);
  if (!collects) return;
  if (!hasSpan) {
    hasSpan = true;
    spanStart = start;
    spanRemoved = removed;
    spanLength = added;
    return;
  }
  const size_t newStart = std::min(spanStart, start);
  const size_t newEnd = std::max(end, start + removed);
  spanRemoved += (spanStart - newStart) + (newEnd - end);
  spanLength = newEnd - newStart - removed + added;
  spanStart = newStart;
}

void TextChanges::Close(const TextPieces& text) {
  hasSpan = false;
  const size_t needed = closed.size() + cOverhead + spanLength;
  if (needed > mostBytes || mostCount == 0) return Stop();
  --mostCount;
  AppendBytes(closed,
              ChangeHead{static_cast<uint32_t>(spanStart), static_cast<uint32_t>(spanRemoved),
                         static_cast<uint32_t>(spanLength)});
  text.AppendPiece(spanStart, spanStart + spanLength, closed);
  if (closed.size() != needed) Stop();  // an announced change was not made
}

std::string_view TextChanges::Take(const TextPieces& text) {
  if (hasSpan) Close(text);
  return closed;
}

void TextChanges::Forget() {
  mostBytes -= closed.size();
  closed.clear();
}

std::string MakeStep(uint64_t copy, uint64_t number, size_t lengthAfter, std::string_view changes) {
  std::string step;
  step.reserve(sizeof(StepHead) + changes.size());
  AppendBytes(step, StepHead{0, copy, number, lengthAfter, changes.size()});
  step += changes;
  const uint64_t sum = TextMark(std::string_view(step).substr(sizeof sum));
  std::memcpy(step.data(), &sum, sizeof sum);
  return step;
}

std::string ApplySteps(std::string text, uint64_t copy, std::string_view steps) {
  PieceRow row(text);
  for (uint64_t number = 1;; ++number) {
    size_t promised = 0;
    const auto step = TakeStep(steps, copy, number, promised);
    if (!step) break;
    size_t length = row.Length();
    const auto changes = ReadChanges(*step, length);
    if (!changes || length != promised) break;
    for (const Change& change : *changes) row.Apply(change);
  }
  return row.Text();
}

}  // namespace zendry
