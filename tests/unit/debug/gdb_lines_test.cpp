#include "debug/GdbLines.h"

#include <gtest/gtest.h>

namespace zendry {
namespace {

std::string Source(std::string_view annotation) {
  const auto place = ReadSource(annotation);
  return place ? place->file + "|" + std::to_string(place->line) : "";
}

TEST(GdbSource, FileMayContainColonsAndBlanks) {
  EXPECT_EQ(Source("source /p/a.c:12:34:beg:0x401000"), "/p/a.c|12");
  EXPECT_EQ(Source("source /p/a:9:b c.c:12:34:middle:0x401000"), "/p/a:9:b c.c|12");
  EXPECT_EQ(Source("source C:\\p\\q\\..\\a.c:12:34:beg:0x401000"), "C:/p/a.c|12");
}

TEST(GdbSource, WithoutItsTail_EndsAtTheFirstColonAfterADrive) {
  EXPECT_EQ(Source("source C:/p/a.c:12:34"), "C:/p/a.c|12");
  EXPECT_EQ(Source("source /p/a.c:12:"), "/p/a.c|12");
  EXPECT_EQ(Source("source ab:12:34"), "ab|12");
  EXPECT_EQ(Source("source /p/a:3:b.c:12:z:beg:0x1"), "/p/a|3");
  EXPECT_EQ(Source("source /p/a:3:b.c:12::beg:0x1"), "/p/a|3");
  EXPECT_EQ(Source("source /p/a.c:12"), "");
  EXPECT_EQ(Source("source /p/a.c:x:34:beg:0x1"), "");
  EXPECT_EQ(Source("source "), "");
}

std::string Breakpoint(std::string_view line) {
  const auto found = ReadBreakpoint(line);
  if (!found) return "";
  return std::to_string(found->number) + (found->isTemporary ? " temporary" : "") +
         (found->isPending ? " pending" : "") + " " + std::to_string(found->locations) + " " +
         found->place.file + "|" + std::to_string(found->place.line);
}

TEST(GdbBreakReply, Forms) {
  EXPECT_EQ(Breakpoint("Breakpoint 1 at 0x1133: file /p/a.c, line 3."), "1 1 /p/a.c|3");
  EXPECT_EQ(Breakpoint("Breakpoint 123456 at 0x1: file a.c, line 3."), "123456 1 a.c|3");
  EXPECT_EQ(Breakpoint("Breakpoint 1 at 0x1: file my, line 7, file x.c, line 3."),
            "1 1 my, line 7, file x.c|3");
  EXPECT_EQ(Breakpoint("Temporary breakpoint 2 at 0x1: file a.c, line 3."), "2 temporary 1 a.c|3");
  EXPECT_EQ(Breakpoint("Breakpoint 1 at 0x1: twice. (12 locations)"), "1 12 |0");
  EXPECT_EQ(Breakpoint("Breakpoint 1 at 0x1"), "1 1 |0");
  EXPECT_EQ(Breakpoint("Breakpoint 1 at 0x1, line 3: file a.c"), "1 1 |0");
  EXPECT_EQ(Breakpoint("Breakpoint 1 (nowhere.c:3) pending."), "1 pending 1 |0");
}

TEST(GdbBreakReply, OtherLines) {
  EXPECT_EQ(Breakpoint("Breakpoint 1, f () at a.c:3"), "");
  EXPECT_EQ(Breakpoint("Breakpoint -1 at 0x1"), "");
  EXPECT_EQ(Breakpoint("Breakpoint 99999999999 at 0x1"), "");
  EXPECT_EQ(Breakpoint("breakpoint 1 at 0x1"), "");
}

std::string Frame(std::string_view line) {
  const auto frame = ReadFrame(line);
  if (!frame) return "";
  return frame->text + "|" + frame->place.file + "|" + std::to_string(frame->place.line) + "|" +
         std::to_string(frame->place.level);
}

TEST(GdbFrames, PlaceIsWhatFollowsTheArguments) {
  EXPECT_EQ(Frame("#1  0x40 in f (a=0x0) at /p/a.c:7"), "#1  0x40 in f (a=0x0)|/p/a.c|7|1");
  EXPECT_EQ(Frame("f (s=0x1 \"x at y:1\") at a.c:7"), "f (s=0x1 \"x at y:1\")|a.c|7|0");
  EXPECT_EQ(Frame("#0  f () at /look at me/a:1.c:7"), "#0  f ()|/look at me/a:1.c|7|0");
  EXPECT_EQ(Frame("#0  f ()    at a.c:7"), "#0  f ()|a.c|7|0");
}

TEST(GdbFrames, WithoutAPlace) {
  EXPECT_EQ(Frame("#1  0x40 in f () from /lib/libc.so.6"), "");
  EXPECT_EQ(Frame("#1  f (a:1) at a.c"), "");
  EXPECT_EQ(Frame(" at a.c:7"), "");
  EXPECT_EQ(Frame(""), "");
  EXPECT_TRUE(IsFrameWithoutPlace("#1  0x40 in f () from /lib/libc.so.6"));
  EXPECT_TRUE(IsFrameWithoutPlace("#1  0x40 in ?? ()"));
  EXPECT_TRUE(IsFrameWithoutPlace("#1  <signal handler called>"));
  EXPECT_FALSE(IsFrameWithoutPlace("#1  f (a=1,"));
}

TEST(GdbThreads, AreTakenOffTheLine) {
  std::string_view line = "Thread 2 \"a hit b\" hit Breakpoint 1, ";
  EXPECT_EQ(TakeThread(line), "2 \"a hit b\"");
  EXPECT_EQ(line, "Breakpoint 1, ");
  line = "Thread 1.2 hit Breakpoint 1, ";
  EXPECT_EQ(TakeThread(line), "1.2");
  line = "Thread 2 is asleep";
  EXPECT_EQ(TakeThread(line), "");
  EXPECT_EQ(line, "Thread 2 is asleep");
}

TEST(GdbHits, NumberBeforeAComma) {
  EXPECT_EQ(ReadHit("Breakpoint 12, "), 12);
  EXPECT_EQ(ReadHit("Breakpoint 1.2, "), 1);
  EXPECT_EQ(ReadHit("Temporary breakpoint 3, main () at a.c:1"), 3);
  EXPECT_EQ(ReadHit("Breakpoint 12 at 0x1"), std::nullopt);
  EXPECT_EQ(ReadHit("Breakpoint , "), std::nullopt);
}

TEST(GdbSignals, NameAndText) {
  const auto received = ReadSignal("Program received signal SIGSEGV, Segmentation fault.");
  EXPECT_EQ(received->name + "|" + received->text, "SIGSEGV|Segmentation fault");
  const auto killed = ReadSignal("Program terminated with signal SIGKILL, Killed.");
  EXPECT_EQ(killed->name + "|" + killed->text, "SIGKILL|Killed");
  EXPECT_FALSE(ReadSignal("Program stopped."));
  EXPECT_FALSE(ReadSignal("Program received signal SIGSEGV"));
}

TEST(GdbNumbers, OfAnnotations) {
  EXPECT_EQ(AnnotationNumber("exited 3"), 3);
  EXPECT_EQ(AnnotationNumber("frame-begin 12 0x40"), 12);
  EXPECT_EQ(AnnotationNumber("exited"), 0);
}

}  // namespace
}  // namespace zendry
