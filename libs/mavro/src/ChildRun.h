#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "ChildProcess.h"
#include "LineRules.h"
#include "PipeReader.h"
#include "SpawnConsole.h"

namespace mavro {

// One child with its output. The caller of its handler keeps the run alive during the call, since
// the handler may end the run, start the next one or destroy the console.
class ChildRun {
 public:
  using Handler = std::shared_ptr<const SpawnConsole::LineHandler>;
  // The result of a write: all is written; the child has died; it doesn't read.
  enum class Written { cAll, cDropped, cFailed };

  ChildRun(LineBuffer::Rule rule, Handler handler) : lines(rule), handler(std::move(handler)) {}

  // Passes a line to the handler, unless the run was ended.
  void Hand(const std::string& line) const;
  // One round of delivery: a read, then the lines that are complete after it.
  void DeliverRound();
  // Delivers the lines that are already complete; also for a handler that calls back during a
  // round.
  void DeliverLines();
  // Delivers the rest at the end of the output.
  void DeliverRest();
  // Writes to the child. While the child doesn't read, its output is fetched: the child may be
  // waiting for that.
  Written Write(std::string_view bytes);

  ChildProcess child;
  PipeReader reader;
  bool ended = false;  // nothing more may be delivered, and the console may be gone

 private:
  bool WaitUntilWritable();

  LineBuffer lines;
  Handler handler;
};

// The message for a tool that can't be started.
std::string StartFailure(ChildProcess::Start failure, const std::string& commandLine);

// Shows a failure of the runner in a message box.
void ShowRunFailure(const std::string& text);

}  // namespace mavro
