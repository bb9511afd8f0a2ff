#pragma once

#include <chrono>
#include <utility>

#include "ChildRun.h"

namespace mavro {

// A tool whose output is read to its end in pieces: the caller waits in between and may have
// several of them. The rules are those of a blocking run of SpawnConsole.
class ToolRun : public ChildRun {
 public:
  explicit ToolRun(Handler handler) : ChildRun(LineBuffer::Rule::cBlocking, std::move(handler)) {}

  // Delivers what has arrived, at most about 100 KB, and follows the limits of time. To be called
  // when the output can be read, when the child has ended, and when Patience is over.
  void Advance();
  bool IsOver() const { return ended || phase == Phase::cOver; }
  // True as long as more output may come; else only the child's end is awaited.
  bool IsReading() const { return phase == Phase::cReading; }
  // The child's end has been seen: its end descriptor needs no more watching.
  bool HasSeenEnd() const { return endSeen != Time(); }
  // Milliseconds until Advance must be called even if nothing happens; -1: no such time.
  int Patience() const;
  // Asks the process group to end; it is killed if it doesn't in time.
  void Stop();
  bool IsStopping() const { return isStopping; }
  // How the child has ended; to be called once, when the run is over. Kills what is left of the
  // group of a run that was stopped.
  ChildEnd Finish();

  bool isPaused = false;  // nothing is read; a child that prints must wait

 private:
  using Clock = std::chrono::steady_clock;
  using Time = Clock::time_point;
  enum class Phase { cReading, cEnding, cOver };

  void Read();
  void EndOutput();
  void GiveUpHeldOutput();
  void FollowEnd();
  void FollowStop();
  void AskToEnd();
  // The moment when something must be done even if nothing happens; the default value for none.
  Time Deadline() const;

  Phase phase = Phase::cReading;
  Time lastArrival, endSeen, outputEnd, killTime;
  bool isStopping = false;
  bool wasKilled = false;
};

}  // namespace mavro
