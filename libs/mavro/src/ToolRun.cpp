#include "ToolRun.h"

#include <signal.h>

#include <algorithm>

#include "SpawnLimits.h"

namespace mavro {

namespace {

constexpr int cFetchesPerTurn = 2;
constexpr std::chrono::seconds cKilled(1);  // time for a killed child to end
constexpr char cOutputIsHeld[] =
    "A process started by the tool still holds its output; what it prints is not read any more.";
constexpr char cOutputWasClosed[] =
    "The tool has closed its output and does not end; it is being stopped.";

std::chrono::milliseconds Milliseconds(int count) {
  return std::chrono::milliseconds(count);
}

}  // namespace

void ToolRun::Advance() {
  FollowStop();
  if (phase == Phase::cReading && !isPaused) Read();
  if (phase == Phase::cReading && !isPaused) GiveUpHeldOutput();
  if (phase == Phase::cEnding) FollowEnd();
}

void ToolRun::Read() {
  for (int fetches = 0; !ended && fetches < cFetchesPerTurn; ++fetches) {
    const PipeReader::Fetch result = reader.FetchAhead(child.Output());
    if (result == PipeReader::Fetch::cNone) return;
    if (result != PipeReader::Fetch::cBytes) {
      EndOutput();
      if (result == PipeReader::Fetch::cError) ShowRunFailure("Pipe read error");
      return;
    }
    lastArrival = Clock::now();
    while (!ended && reader.BytesAhead()) DeliverRound();
  }
}

void ToolRun::EndOutput() {
  DeliverRest();
  outputEnd = Clock::now();
  phase = Phase::cEnding;
}

// Only a quiet time that began after the child's end counts, since in an earlier one the child's
// last output may still be on its way.
void ToolRun::GiveUpHeldOutput() {
  if (!child.HasEnded()) return;
  const Time now = Clock::now();
  if (endSeen == Time()) endSeen = now;
  if (now < std::max(endSeen, lastArrival) + Milliseconds(TheSpawnLimits().quiet)) return;
  EndOutput();
  Hand(cOutputIsHeld);
}

void ToolRun::FollowEnd() {
  const Time now = Clock::now();
  if (child.HasEnded()) {
    phase = Phase::cOver;
  } else if (killTime == Time()) {
    if (now < outputEnd + Milliseconds(TheSpawnLimits().closedOutput)) return;
    Hand(cOutputWasClosed);
    AskToEnd();
  } else if (wasKilled && now >= killTime + cKilled) {
    phase = Phase::cOver;
  }
}

void ToolRun::AskToEnd() {
  killTime = Clock::now() + Milliseconds(TheSpawnLimits().kill);
  child.Signal(SIGTERM);
}

void ToolRun::Stop() {
  if (isStopping) return;
  isStopping = true;
  AskToEnd();
}

void ToolRun::FollowStop() {
  if (killTime == Time() || wasKilled || Clock::now() < killTime) return;
  wasKilled = true;
  child.Signal(SIGKILL);
}

ToolRun::Time ToolRun::Deadline() const {
  if (phase == Phase::cReading && endSeen != Time())
    return std::max(endSeen, lastArrival) + Milliseconds(TheSpawnLimits().quiet);
  if (killTime != Time()) return wasKilled ? killTime + cKilled : killTime;
  if (phase == Phase::cEnding) return outputEnd + Milliseconds(TheSpawnLimits().closedOutput);
  return {};
}

int ToolRun::Patience() const {
  const Time deadline = Deadline();
  if (deadline == Time()) return -1;
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
  return static_cast<int>(std::max<decltype(left)>(left, 0));
}

// The child's process id is still reserved, so no other process can have its group.
ChildEnd ToolRun::Finish() {
  if (isStopping || ended) child.Kill();
  return child.Collect();
}

}  // namespace mavro
