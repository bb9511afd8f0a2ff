#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

#include "GdbEvents.h"
#include "debug/GdbCommands.h"
#include "debug/GdbStream.h"

// Reads bytes as gdb's output: the events don't depend on how they are cut, what is kept stays
// within its bounds, and a reader that has seen anything reads on after a prompt. The same bytes
// become commands, none of which is more than one line.

namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

void CheckState(const zendry::GdbStream& stream) {
  Require(stream.frameHead.size() <= zendry::cLongestFrame + 3);
  Require(stream.lastAnnotation.size() <= zendry::cLongestAnnotation);
  Require(stream.lineMode >= 0 && stream.lineMode <= 2);
}

// The events of bytes that come in pieces of a length, then of what no bytes before may spoil.
std::string Events(std::string_view bytes, size_t length) {
  test::GdbEvents events;
  events.watched = {"*"};
  events.showPlainLines = true;
  zendry::GdbStream stream(events);
  for (; !bytes.empty(); bytes.remove_prefix(std::min(length, bytes.size()))) {
    stream.Feed(bytes.substr(0, length));
    CheckState(stream);
  }
  stream.Finish();
  stream.Feed("\x1A\x1Apre-prompt\n");
  const std::string text = events.Take();
  stream.Feed("#7  f () at a.c:3\n\x1A\x1Aprompt\n");
  Require(events.Take().starts_with("line #7  f () at a.c:3\nframe 7 #7  f () at a.c:3\nprompt\n"));
  Require(stream.promptSeen && stream.lineMode == zendry::GdbStream::cNormal);
  return text;
}

void CheckCommand(const std::optional<std::string>& command) {
  if (!command) return;
  Require(command->find_first_of(std::string_view("\n\r\0", 3)) == std::string::npos);
  Require(!command->ends_with('\\'));
}

void CheckCommands(std::string_view text) {
  CheckCommand(zendry::GdbBreak(text, 3, ""));
  CheckCommand(zendry::GdbBreak("a.c", 3, text));
  CheckCommand(zendry::GdbTemporaryBreak(text, 3));
  CheckCommand(zendry::GdbClear(text, 3));
  CheckCommand(zendry::GdbCondition(1, text));
  CheckCommand(zendry::GdbPrint(text));
  CheckCommand(zendry::GdbTerminal(text));
  if (const auto commands = zendry::GdbArguments(text))
    for (const std::string& command : *commands) CheckCommand(command);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  const std::string_view bytes(reinterpret_cast<const char*>(data + 1), size - 1);
  const size_t length = 1 + data[0] % 64;
  Require(Events(bytes, length) == Events(bytes, std::string_view::npos));
  CheckCommands(bytes);
  return 0;
}
