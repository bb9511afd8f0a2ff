#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace mavro {

// Runs several console programs side by side. Each follows the rules of a blocking run of
// SpawnConsole: a session of its own without a terminal, empty standard input, lines without their
// ending, no waiting for other processes that hold its output. The owner of the pool waits, and
// gets lines and ends only within Wait.
//
//   pool.Start(1, {"gcc -c a.c"}, [](const std::string& line) { ... });
//   while (pool.Running() > 0)
//     for (const SpawnPool::Ended& ended : pool.Wait(100)) ...
class SpawnPool {
 public:
  using LineHandler = std::function<void(const std::string& line)>;

  // How a program is started; see SpawnConsole for the three.
  struct Command {
    std::string line;
    std::string folder = {};
    std::vector<std::string> environment = {};
  };
  // A program that can't be started. No text: it was started.
  struct Failure {
    std::string text = {};
    bool isForLackOfRoom = false;  // of processes or descriptors: another one's end makes room
  };
  // How a program has ended: the exit code, or 128 and the signal that killed it.
  struct Ended {
    int key = 0;
    int exitCode = -1;
    int exitSignal = 0;       // 0 for none
    bool wasStopped = false;  // it was running when Stop was called
  };

  SpawnPool();
  // Kills what is still running.
  ~SpawnPool();
  SpawnPool(const SpawnPool&) = delete;
  SpawnPool& operator=(const SpawnPool&) = delete;

  // Starts a program under a key that no running one has. The handler must not use the pool.
  Failure Start(int key, const Command& command, LineHandler handler);
  // The number of programs whose end Wait has not reported.
  size_t Running() const;
  // Waits until something has arrived or `milliseconds` have passed, delivers a limited amount of
  // what has arrived, and returns the programs that have ended. Windows are painted meanwhile.
  std::vector<Ended> Wait(int milliseconds);
  // A paused program is not read: it has to wait once its pipe is full.
  void Pause(int key, bool isPaused);
  // Asks the process groups of all running programs to end, and kills those that don't in time.
  void Stop();

 private:
  struct Impl;
  std::unique_ptr<Impl> impl;
};

// Shows a failure of a start in a message box with the caption "Compiler error".
void ShowStartFailure(const SpawnPool::Failure& failure);

}  // namespace mavro
