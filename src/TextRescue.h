#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "RescueCopies.h"

namespace zendry {

// An open file whose text may be unsaved.
class RescueSource {
 public:
  virtual ~RescueSource() = default;
  virtual std::string RescuePath() const = 0;     // empty for a file without a name
  virtual std::string RescueContent() const = 0;  // the text as the editor holds it
};

// Keeps a copy of one open file's unsaved text in the rescue folder, never more than 200 bytes of
// typing or 5 seconds behind. A file that is closed has nothing left to rescue: with the object
// goes the copy. What it is told costs nothing until a copy is due.
class TextRescue {
 public:
  using Clock = std::chrono::steady_clock;

  static constexpr int cMostBytesBehind = 200;
  static constexpr std::chrono::seconds cLongestBehind{5};

  explicit TextRescue(const RescueSource& newSource);
  ~TextRescue();
  TextRescue(const TextRescue&) = delete;
  TextRescue& operator=(const TextRescue&) = delete;

  // That many bytes were put in or taken out just now.
  void Changed(int bytes, Clock::time_point now);
  // Writes what has waited long enough; called now and then.
  void Tick(Clock::time_point now);
  // Writes what is not in the copy yet; false when that fails, and then it is tried again later.
  bool KeepNow();
  // The file on disk holds the text, or the user does not want it.
  void Drop();

  // KeepNow for all open files: when the program is about to end against its will.
  static void KeepAll();

 private:
  const RescueSource& source;
  const int number;
  int bytesBehind = 0;
  Clock::time_point behindSince;
};

// The texts of programs that have ended without a word.
std::vector<RescueCopy> FindRescuedTexts();

}  // namespace zendry
