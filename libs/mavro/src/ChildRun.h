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

// One child with what it has printed. Whoever calls its handler keeps the run alive meanwhile,
// since the handler may end the run, start the next one or destroy the console.
class ChildRun {
 public:
  using Handler = std::shared_ptr<const SpawnConsole::LineHandler>;
  // What became of a write: all is written; the child has died; it doesn't read.
  enum class Written { cAll, cDropped, cFailed };

  ChildRun(LineBuffer::Rule rule, Handler handler) : lines(rule), handler(std::move(handler)) {}

  // Hands a line to the handler, unless the run was ended.
  void Hand(const std::string& line) const;
  // One round of delivery: a read, then the lines that are whole with it.
  void DeliverRound();
  // The lines that are whole already: those that a handler calling back from within a round finds.
  void DeliverLines();
  // What is left at the end of the output.
  void DeliverRest();
  // Writes to the child. While it is in the way of the write, its output is fetched, which may be
  // what it waits for.
  Written Write(std::string_view bytes);

  ChildProcess child;
  PipeReader reader;
  bool ended = false;  // nothing may be delivered any more, and the console may be gone

 private:
  bool WaitUntilWritable();

  LineBuffer lines;
  Handler handler;
};

// Shows a failure of the runner in a message box.
void ShowRunFailure(const std::string& text);

}  // namespace mavro
