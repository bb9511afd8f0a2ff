#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace zendry {

// A text of bytes that can be read in pieces.
class TextPieces {
 public:
  virtual ~TextPieces() = default;
  virtual size_t PieceLength() const = 0;  // of the whole text
  // Puts the bytes from `start` up to `end` behind `to`.
  virtual void AppendPiece(size_t start, size_t end, std::string& to) const = 0;
};

// Collects what becomes of a text, at a cost that grows with the changes and not with the text:
// changes close to each other are one span, whose bytes are read once, when a change elsewhere
// begins or the collection is taken. It is told of each change before it happens.
class TextChanges {
 public:
  // A change costs this much beside its bytes.
  static constexpr size_t cOverhead = 3 * sizeof(uint32_t);

  // Begins with a text of `length` bytes. When the changes, as they are written, need more than
  // `newMostBytes`, or are more than `newMostCount`, they are given up.
  void Begin(size_t length, size_t newMostBytes, size_t newMostCount);
  void Stop();

  // At `start`, `removed` bytes are about to give way to `added` others. `text` is as it was before
  // that.
  void Add(size_t start, size_t removed, size_t added, const TextPieces& text);

  // Closes the span and answers all changes as ApplySteps reads them. The answer lives until the
  // next call of any other member.
  std::string_view Take(const TextPieces& text);
  // What was taken is written: forgets it.
  void Forget();

  // Whether the changes lead to a text of this length; false also when they were given up.
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

// Changes as a step of a file: it names the copy that it belongs to and its place among the steps,
// counted from 1, and has a checksum, so that a torn one is known. `lengthAfter` is that of the
// text.
std::string MakeStep(uint64_t copy, uint64_t number, size_t lengthAfter, std::string_view changes);

// The text of a copy after the steps behind it. The first that is torn, damaged, of another copy or
// impossible ends them: what stands before it is kept.
std::string ApplySteps(std::string text, uint64_t copy, std::string_view steps);

}  // namespace zendry
