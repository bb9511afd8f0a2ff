#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "base/DiskStamp.h"
#include "rescue/RescueCopies.h"
#include "rescue/RescueSteps.h"

namespace zendry {

// What belongs to a text beside its bytes and its path.
struct TextFacts {
  int encoding = 0;     // a TextEncoding: what makes a file's bytes of the text
  std::string oddByte;  // of UTF-16, behind the text
  DiskStamp disk;       // the state of the file that the text was made from
  friend bool operator==(const TextFacts&, const TextFacts&) = default;
};

// An open file whose text may be unsaved. The pieces are those of the text as the editor holds it.
class RescueSource : public TextPieces {
 public:
  virtual std::string RescuePath() const = 0;  // empty for a file without a name
  virtual TextFacts RescueFacts() const = 0;
};

// Keeps a copy of one open file's unsaved text in the rescue folder, never more than 200 bytes of
// typing or 5 seconds behind. A file that is closed has nothing left to rescue: with the object
// goes the copy. What it is told costs nothing until a copy is due; then the first time the text is
// written, and from there on what has changed, as long as that is less than a part of the text.
class TextRescue {
 public:
  using Clock = std::chrono::steady_clock;

  static constexpr int cMostBytesBehind = 200;
  static constexpr std::chrono::seconds cLongestBehind{5};

  explicit TextRescue(const RescueSource& newSource);
  ~TextRescue();
  TextRescue(const TextRescue&) = delete;
  TextRescue& operator=(const TextRescue&) = delete;

  // At `start`, `removed` bytes are about to give way to `added` others. Must be told of each
  // change of the text but those that Drop follows.
  void WillChange(long start, long removed, long added);
  // The text is about to change, nobody knows how: the next copy is a whole one.
  void LoseTrack() { changes.Stop(); }
  // That many bytes were put in or taken out just now.
  void Changed(int bytes, Clock::time_point now);
  // Writes what has waited long enough; called now and then.
  void Tick(Clock::time_point now);
  // Why there is no copy of what is unsaved, although one was due; empty as long as all is well.
  const std::string& WhyNone() const { return whyNone; }
  // Writes what is not in the copy yet; false when that fails, and then it is tried again later.
  bool KeepNow();
  // The file on disk holds the text, or the user does not want it.
  void Drop();
  // Leaves a copy of the text beside, which is about to be replaced by what the file holds now: it
  // stays as long as undoing can bring the text back. False when there is no such copy.
  bool LeaveReplaced();
  // What was left so is wanted no longer.
  void DropReplaced();

  // Writes all open files that are behind, when the program is about to end against its will: whole
  // texts, because what has been collected may be half done; where there is no room, a step.
  static void KeepAll();

 private:
  bool KeepStep();
  bool KeepCopy();
  mavro::SaveResult WriteCopy(int asNumber, uint64_t name) const;
  void KeepDue(Clock::time_point now);

  const RescueSource& source;
  const int number;
  int bytesBehind = 0;
  Clock::time_point behindSince;
  // The copy in the rescue folder, and the steps behind it.
  uint64_t copyName = 0;
  std::string copyPath;
  TextFacts copyFacts;
  DiskStamp copyStamp;
  TextChanges changes;
  uint64_t steps = 0;
  size_t stepBytes = 0;
  std::string whyNone;
  std::vector<int> replaced;  // numbers of the copies left beside
};

// A text that was left behind, whole.
struct RescuedText : RescueCopy {
  TextFacts facts;
};

// The texts of programs that have ended without a word.
std::vector<RescuedText> FindRescuedTexts();

}  // namespace zendry
