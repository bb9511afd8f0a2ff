#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace zendry {

// A text in bytes that can be read in pieces.
class TextPieces {
 public:
  virtual ~TextPieces() = default;
  virtual size_t PieceLength() const = 0;  // of the whole text
  // Appends the bytes from `start` up to `end` to `to`.
  virtual void AppendPiece(size_t start, size_t end, std::string& to) const = 0;
};

// Collects the changes of a text. The cost grows with the changes and not with the text: changes
// close to each other are one span. The bytes of a span are read once, when a change elsewhere
// begins or when the changes are taken. Add must be called before each change.
class TextChanges {
 public:
  // The bytes that a change needs in addition to its text.
  static constexpr size_t cOverhead = 3 * sizeof(uint32_t);

  // Begins with a text of `length` bytes. When the changes need more than `newMostBytes` in written
  // form, or there are more than `newMostCount` of them, the collection is given up.
  void Begin(size_t length, size_t newMostBytes, size_t newMostCount);
  void Stop();

  // At `start`, `removed` bytes are about to be replaced by `added` other bytes. `text` is still in
  // its old state.
  void Add(size_t start, size_t removed, size_t added, const TextPieces& text);

  // Closes the span and answers all changes in the form that ApplySteps reads. The answer is valid
  // until the next call of any other member.
  std::string_view Take(const TextPieces& text);
  // Forgets the changes that were taken; call it after they are written.
  void Forget();

  // True if the changes result in a text of this length; false also when they were given up.
  bool LeadTo(size_t length) const { return collects && knownLength == length; }

 private:
  void Close(const TextPieces& text);

  bool collects = false;
  size_t knownLength = 0;
  size_t mostBytes = 0;
  size_t mostCount = 0;
  std::string closed;
  // The running span: `spanRemoved` bytes of the text before it are `spanLength` bytes now.
  bool hasSpan = false;
  size_t spanStart = 0, spanRemoved = 0, spanLength = 0;
};

// Makes a step for a file of steps from changes. A step has the name of its copy, its number among
// the steps, counted from 1, and a checksum, which shows if it was written only in part.
// `lengthAfter` is the length of the text after the step.
std::string MakeStep(uint64_t copy, uint64_t number, size_t lengthAfter, std::string_view changes);

// The text of a copy with its steps applied. It stops at the first step that is incomplete,
// damaged, of another copy or impossible; the steps before it count.
std::string ApplySteps(std::string text, uint64_t copy, std::string_view steps);

}  // namespace zendry
