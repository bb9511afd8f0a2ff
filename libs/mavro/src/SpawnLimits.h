#pragma once

namespace mavro {

// How long the process runner is patient, in milliseconds. Tests shorten it.
struct SpawnLimits {
  // A tool that has closed its output may live on for so long before it is asked to end.
  int closedOutput = 10'000;
  // One that was asked to end may take so long before it is killed.
  int kill = 2'000;
  // When a tool has ended but another process still holds its output, it is read until nothing has
  // come for so long.
  int quiet = 500;
  // An attached child that doesn't read may hold up a write for so long.
  int write = 1'000;
  // An attached child may take so long to end after its output has ended.
  int attachedEnd = 100;
};

SpawnLimits& TheSpawnLimits();

}  // namespace mavro
