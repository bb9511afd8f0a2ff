#pragma once

namespace mavro {

// The time limits of the process runner, in milliseconds. Tests shorten them.
struct SpawnLimits {
  // The time that a tool may run after it has closed its output, before it is asked to end.
  int closedOutput = 10'000;
  // The time that a tool has to end after it was asked to, before it is killed.
  int kill = 2'000;
  // After a tool has ended while another process still holds its output, the output is read until
  // nothing has arrived for this time.
  int quiet = 500;
  // The time that a write waits for an attached child that doesn't read.
  int write = 1'000;
  // The time that an attached child has to end after its output has ended.
  int attachedEnd = 100;
};

SpawnLimits& TheSpawnLimits();

}  // namespace mavro
