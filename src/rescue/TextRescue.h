#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "base/DiskStamp.h"
#include "rescue/RescueCopies.h"
#include "rescue/RescueSteps.h"

namespace zendry {

// The properties of a text other than its bytes and its path.
struct TextFacts {
  int encoding = 0;     // a TextEncoding: converts the text to a file's bytes
  std::string oddByte;  // of UTF-16, after the text
  DiskStamp disk;       // the state of the file that the text was made from
  friend bool operator==(const TextFacts&, const TextFacts&) = default;
};

// An open file whose text may be unsaved. The pieces are from the text in the editor.
class RescueSource : public TextPieces {
 public:
  virtual std::string RescuePath() const = 0;  // empty for a file without a name
  virtual TextFacts RescueFacts() const = 0;
};

// Keeps a copy of one open file's unsaved text in the rescue folder, never more than 200 bytes of
// typing or 5 seconds old. A closed file has nothing left to rescue: the destructor removes the
// copy. A change costs nothing until a copy is due. The first copy is the whole text; after that,
// only the changes are written, as long as they are smaller than a certain part of the text.
class TextRescue {
 public:
  using Clock = std::chrono::steady_clock;

  static constexpr int cMostBytesBehind = 200;
  static constexpr std::chrono::seconds cLongestBehind{5};

  explicit TextRescue(const RescueSource& newSource);
  ~TextRescue();
  TextRescue(const TextRescue&) = delete;
  TextRescue& operator=(const TextRescue&) = delete;

  // At `start`, `removed` bytes are about to be replaced by `added` other bytes. Must be called
  // before each change of the text, except before changes that Drop follows.
  void WillChange(long start, long removed, long added);
  // The text is about to change in an unknown way: the next copy is a whole one.
  void LoseTrack() { changes.Stop(); }
  // This many bytes have just been inserted or removed.
  void Changed(int bytes, Clock::time_point now);
  // Writes the copy if it is due; called regularly.
  void Tick(Clock::time_point now);
  // Why the unsaved text has no copy, although one was due; empty as long as there is no error.
  const std::string& WhyNone() const { return whyNone; }
  // Writes the changes that are not in the copy yet. False when that fails; then it is tried again
  // later.
  bool KeepNow();
  // Removes the copy: the file on disk holds the text, or the user does not want it.
  void Drop();
  // Keeps an extra copy of the text, which is about to be replaced by the content of the file. The
  // copy stays as long as undo can bring the text back. An error when the copy can't be written.
  mavro::FileResult LeaveReplaced();
  // Removes the extra copies.
  void DropReplaced();

  // While it is off, no copies of unsaved texts are written; those that are there are removed. A
  // text that was unsaved before gets a copy again with its next change.
  static void SetOn(bool on);

  // Writes the copies of all open files that are out of date, when a failure is about to end the
  // program. Writes whole texts, because the collected changes may be incomplete; where there is no
  // room, a step.
  static void KeepAll();

 private:
  bool KeepStep();
  bool KeepCopy();
  mavro::FileResult WriteCopy(int asNumber, uint64_t name) const;
  void KeepDue(Clock::time_point now);

  const RescueSource& source;
  const int number;
  int bytesBehind = 0;
  Clock::time_point behindSince;
  // The copy in the rescue folder, and its steps.
  uint64_t copyName = 0;
  std::string copyPath;
  TextFacts copyFacts;
  DiskStamp copyStamp;
  TextChanges changes;
  uint64_t steps = 0;
  size_t stepBytes = 0;
  std::string whyNone;
  std::vector<int> replaced;  // numbers of the extra copies
};

// A whole text that an ended program has left in the rescue folder.
struct RescuedText : RescueCopy {
  TextFacts facts;
};

// The texts of runs of the program that have ended unexpectedly.
std::vector<RescuedText> FindRescuedTexts();

}  // namespace zendry
