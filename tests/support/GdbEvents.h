#pragma once

#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "debug/GdbListener.h"

namespace test {

// Writes what a stream of gdb means, a line each. Every expression counts as watched if it is one
// of `watched`; a set with "*" watches whatever has no " = " in it.
//
//   test::GdbEvents events;
//   zendry::GdbStream stream(events);
//   stream.Feed("\x1A\x1Aprompt\n");
//   EXPECT_EQ(events.Take(), "prompt\n");
class GdbEvents : public zendry::GdbListener {
 public:
  std::set<std::string, std::less<>> watched;
  bool showPlainLines = false;

  // The events since the last call.
  std::string Take() { return std::exchange(lines, {}); }

  void OnPrompt() override { Add("prompt"); }
  void OnDisplaysDue() override { Add("displays due"); }
  void OnRunning() override { Add("running"); }
  void OnSource(const zendry::GdbPlace& place) override {
    Add("source " + Text(place) + " level " + std::to_string(place.level));
  }
  void OnStopped(const zendry::GdbStop& stop) override {
    static constexpr const char* cReasons[] = {"step", "breakpoint", "watchpoint", "catchpoint",
                                               "signal"};
    std::string text = std::string("stopped by ") + cReasons[stop.reason];
    if (stop.number) text += " " + std::to_string(stop.number);
    if (!stop.signalName.empty()) text += " " + stop.signalName + " (" + stop.signalText + ")";
    if (!stop.thread.empty()) text += " in thread " + stop.thread;
    if (!stop.frame.empty()) text += " in " + stop.frame;
    if (!stop.place.file.empty()) text += " at " + Text(stop.place);
    Add(text);
  }
  void OnEnded(const zendry::GdbEnd& end) override {
    Add(end.signalName.empty() ? "ended with " + std::to_string(end.exitCode)
                               : "ended by " + end.signalName + " (" + end.signalText + ")");
  }
  void OnBreakpointSet(const zendry::GdbBreakpoint& set) override {
    std::string text =
        (set.isTemporary ? "temporary " : "") + ("breakpoint " + std::to_string(set.number));
    if (set.isPending) text += " pending";
    if (set.locations != 1) text += " with " + std::to_string(set.locations) + " locations";
    if (!set.place.file.empty()) text += " at " + Text(set.place);
    Add(text);
  }
  void OnBreakpointHit(const zendry::GdbHit& hit) override {
    Add("hit " + std::to_string(hit.number) + " at " + Text(hit.place));
  }
  bool IsWatched(std::string_view expression) const override {
    if (watched.contains(expression)) return true;
    return watched.contains("*") && expression.find(" = ") == std::string_view::npos;
  }
  void OnDisplay(const zendry::GdbDisplay& display) override {
    Add("display " + std::to_string(display.number) + " " + display.expression + " is " +
        display.value.text);
    if (display.value.column != display.value.text) Add("  in a column " + display.value.column);
  }
  void OnResult(const zendry::GdbValue& value) override { Add("result " + value.text); }
  void OnFrame(const zendry::GdbFrame& frame) override {
    Add("frame " + std::to_string(frame.place.level) + " " + frame.text +
        (frame.place.file.empty() ? "" : " at " + Text(frame.place)));
  }
  void OnError(const std::string& text) override { Add("error " + text); }
  void OnQuestion(const std::string& text) override { Add("question " + text); }
  void OnOutput(const std::string& line) override { Add("output " + line); }
  void OnPlainLine(const std::string& line) override {
    if (showPlainLines) Add("line " + line);
  }

 private:
  static std::string Text(const zendry::GdbPlace& place) {
    return place.file + ":" + std::to_string(place.line);
  }
  void Add(const std::string& line) { lines += line + "\n"; }

  std::string lines;
};

}  // namespace test
