#include "debug/GdbStream.h"

#include <gtest/gtest.h>

#include <random>

#include "GdbEvents.h"

namespace zendry {
namespace {

// A reader and what it has reported. "^" stands for the two bytes that begin an annotation.
struct GdbStreamTest : testing::Test {
  std::string Feed(std::string text) {
    for (size_t at; (at = text.find('^')) != std::string::npos;) text.replace(at, 1, "\x1A\x1A");
    stream.Feed(text);
    return events.Take();
  }

  test::GdbEvents events;
  GdbStream stream{events};
};

// --- Annotations

TEST_F(GdbStreamTest, Prompt_IsSeenUntilTheNextCommand) {
  EXPECT_FALSE(stream.promptSeen);
  EXPECT_EQ(Feed("^prompt\n"), "prompt\n");
  EXPECT_TRUE(stream.promptSeen);
  stream.CommandSent();
  EXPECT_FALSE(stream.promptSeen);
}

TEST_F(GdbStreamTest, PrePromptAndPostPrompt_AreNoPrompts) {
  EXPECT_EQ(Feed("^pre-prompt\n(gdb) \n^post-prompt\n^promp\n"), "");
  EXPECT_FALSE(stream.promptSeen);
}

TEST_F(GdbStreamTest, AnyWordThatBeginsWithAKnownOneCounts) {
  EXPECT_EQ(Feed("^prompt-for-continue\n^exitedly 3\n"), "prompt\nended with 3\n");
  EXPECT_EQ(Feed("^error-beginning\nbad\n^x\n"), "error bad\n");
}

TEST_F(GdbStreamTest, TheMarkAlone_IsAnEmptyAnnotation) {
  stream.lastAnnotation = "before";
  EXPECT_EQ(Feed("^\n"), "");
  EXPECT_EQ(stream.lastAnnotation, "");
  EXPECT_EQ(Feed("\x1A\n"), "output \x1A\n");
}

TEST_F(GdbStreamTest, LastAnnotation_HasNoLineEnd) {
  Feed("^starting up\r\n");
  EXPECT_EQ(stream.lastAnnotation, "starting up");
  Feed("^stopped\n");
  EXPECT_EQ(stream.lastAnnotation, "stopped");
}

TEST_F(GdbStreamTest, EmptyLines_AreIgnored) {
  events.showPlainLines = true;
  EXPECT_EQ(Feed("\n\r\n\n"), "");
}

TEST_F(GdbStreamTest, Exit_TellsTheCodeAndPauses) {
  EXPECT_EQ(Feed("^starting\n^exited 139\n^stopped\n"), "running\nended with 139\n");
  EXPECT_TRUE(stream.paused);
}

// --- Sources

TEST_F(GdbStreamTest, Source_PausesAndAsksForTheDisplaysOnce) {
  EXPECT_EQ(Feed("^source C:/p/a.cpp:12:34:beg:0x401000\n"), "source C:/p/a.cpp:12 level 0\n");
  EXPECT_TRUE(stream.paused);
  EXPECT_TRUE(stream.needsDisplay);
  EXPECT_EQ(Feed("^prompt\n^prompt\n"), "prompt\ndisplays due\nprompt\n");
  EXPECT_FALSE(stream.needsDisplay);
}

TEST_F(GdbStreamTest, ASourceThatCantBeRead_OnlyPauses) {
  for (const char* text :
       {"^source\n", "^source x\n", "^source /p/a.c:0:1\n", "^source /p/a.c:5\n"}) {
    stream.paused = false;
    EXPECT_EQ(Feed(text), "") << text;
    EXPECT_TRUE(stream.paused);
    EXPECT_FALSE(stream.needsDisplay);
  }
}

TEST_F(GdbStreamTest, ASourceOfAChosenFrame_HasItsLevel) {
  EXPECT_EQ(Feed("^frame-begin 3 0x40\n#3  0x40 in f () at a.c:9\n^source /p/a.c:9:1:beg:0x40\n"),
            "frame 3 #3  0x40 in f () at a.c:9\nsource /p/a.c:9 level 3\n");
  Feed("^prompt\n");
  EXPECT_EQ(Feed("^starting\n^source /p/a.c:10:1:beg:0x44\n"),
            "running\nsource /p/a.c:10 level 0\n");
}

// --- Breakpoints

TEST_F(GdbStreamTest, BreakReply_FollowsThePromptOrHasItsOwnLine) {
  const std::string reply = "Breakpoint 12 at 0x401136: file src/a b.cpp, line 7.\n";
  EXPECT_EQ(Feed("(gdb) " + reply), "breakpoint 12 at src/a b.cpp:7\n");
  EXPECT_EQ(Feed("(other) " + reply), "breakpoint 12 at src/a b.cpp:7\n");
  EXPECT_EQ(Feed(reply), "breakpoint 12 at src/a b.cpp:7\n");
}

TEST_F(GdbStreamTest, TemporaryReply_SaysSo) {
  EXPECT_EQ(Feed("(gdb) Temporary breakpoint 2 at 0x40: file a.c, line 7.\n"),
            "temporary breakpoint 2 at a.c:7\n");
}

TEST_F(GdbStreamTest, Hit_OnOneLineOrWithItsFrameApart) {
  EXPECT_EQ(Feed("Breakpoint 2, f (at=1) at /p/a.c:7\n"), "hit 2 at /p/a.c:7\n");
  EXPECT_EQ(Feed("(gdb) Breakpoint 2, f (at=1) at /p/a.c:7\n"), "hit 2 at /p/a.c:7\n");
  EXPECT_EQ(Feed("^breakpoint 2\nBreakpoint 2, \n^frame-begin 0 0x4\nf (at=1) at /p/a.c:7\n"),
            "hit 2 at /p/a.c:7\n");
}

TEST_F(GdbStreamTest, HitWithoutAPlace_IsForgottenWhenTheProgramGoesOn) {
  EXPECT_EQ(Feed("Breakpoint 2, 0x40 in f () from libc.so\n^starting\n"), "running\n");
  EXPECT_EQ(Feed("^frame-begin 0 0x4\nf () at /p/a.c:7\n"), "");
}

TEST_F(GdbStreamTest, ALineThatOnlyBeginsLikeABreakpoint_IsOutput) {
  EXPECT_EQ(Feed("Breakpoints are fine\n"), "output Breakpoints are fine\n");
  EXPECT_EQ(Feed("Breakpoint 3x\n"), "output Breakpoint 3x\n");
}

// --- Displays

TEST_F(GdbStreamTest, Display_EndsAtTheNextAnnotation) {
  events.watched = {"a"};
  EXPECT_EQ(Feed("1: a = {x = 1,\n  y = 2,\n  z = 3}\n"), "");
  EXPECT_EQ(stream.lineMode, GdbStream::cInDisplay);
  EXPECT_EQ(Feed("^pre-prompt\n"), "display 1 a is {x = 1,  y = 2,  z = 3}\n");
  EXPECT_EQ(stream.lineMode, GdbStream::cNormal);
}

TEST_F(GdbStreamTest, ADisplay_EndsTheOneBefore) {
  events.watched = {"a", "b"};
  EXPECT_EQ(Feed("1: a = 1\n2: b = 2\n3: c = 3\n^x\n"),
            "display 1 a is 1\ndisplay 2 b is 23: c = 3\n");
}

TEST_F(GdbStreamTest, ADisplayThatNobodyWatches_IsOutput) {
  events.watched = {"ab", "b"};
  EXPECT_EQ(Feed("1: a = 1\n"), "output 1: a = 1\n");
  EXPECT_EQ(Feed("12\n12: a\n12:b = 1\n"), "output 12\noutput 12: a\noutput 12:b = 1\n");
}

TEST_F(GdbStreamTest, AnExpressionMayContainBlanksAndEqualsSigns) {
  events.watched = {"a", "a == b", "a = b"};
  EXPECT_EQ(Feed("1: a == b = true\n^x\n"), "display 1 a == b is true\n");
  EXPECT_EQ(Feed("1: a = b = 3\n^x\n"), "display 1 a = b is 3\n");
  EXPECT_EQ(Feed("1: a = {b = 3}\n^x\n"), "display 1 a is {b = 3}\n");
}

TEST_F(GdbStreamTest, AnExpressionHasALimit) {
  const std::string most(4096, 'a');
  events.watched = {most, most + "a"};
  EXPECT_EQ(Feed("1: " + most + " = 5\n^x\n"), "display 1 " + most + " is 5\n");
  EXPECT_EQ(Feed("1: " + most + "a = 5\n^x\n"), "output 1: " + most + "a = 5\n");
}

TEST_F(GdbStreamTest, WhatFinishReturns_IsNoPartOfTheLastDisplay) {
  events.watched = {"a"};
  EXPECT_EQ(Feed("1: a = 1\nValue returned is $3 = 5\n"),
            "display 1 a is 1\noutput Value returned is $3 = 5\n");
}

TEST_F(GdbStreamTest, AnErrorThatBeginsLikeADisplay_IsTakenForOne) {
  events.watched = {"a"};
  EXPECT_EQ(Feed("^error-begin\n1: a = 5\n^error\n"), "display 1 a is 5\nerror 1: a = 5\n");
}

// --- Results and errors

TEST_F(GdbStreamTest, Result_IsTheTextAfterTheFirstEqualsSign) {
  EXPECT_EQ(Feed("$1 = {x = 1}\n^pre-prompt\n"), "result {x = 1}\n");
  EXPECT_EQ(Feed("$1\n^pre-prompt\n"), "");
  EXPECT_EQ(Feed("$1 =\n^pre-prompt\n"), "result \n");
}

TEST_F(GdbStreamTest, Results_WithoutAnAnnotationBetween) {
  EXPECT_EQ(Feed("$1 = 5\n$2 = {\n  x = 6\n}\n^pre-prompt\n"), "result 5\nresult {  x = 6}\n");
}

TEST_F(GdbStreamTest, Error_EndsAtAnyAnnotation) {
  EXPECT_EQ(Feed("^error-begin\nNo symbol.\n"), "");
  EXPECT_EQ(stream.lineMode, GdbStream::cInError);
  EXPECT_EQ(Feed("Really.\n^quit\n"), "error No symbol.\nReally.\n");
}

TEST_F(GdbStreamTest, Question_IsAskedWhenItIsWhole) {
  EXPECT_EQ(Feed("^pre-query\nThe program runs.\nQuit anyway? (y or n) \n"), "");
  EXPECT_EQ(Feed("^query\n"), "question The program runs.\nQuit anyway? (y or n) \n");
}

// --- Frames

TEST_F(GdbStreamTest, AFrameOf200CharactersCutByGdb_IsOneRow) {
  const std::string arguments(200, 'a');
  EXPECT_EQ(Feed("#0  f (" + arguments + ",\n"), "");
  EXPECT_TRUE(stream.continuedFrame);
  EXPECT_EQ(stream.frameHead, "#0  f (" + arguments + ",");
  EXPECT_EQ(Feed("    b=1) at a.c:7\n"), "frame 0 #0  f (" + arguments + ",    b=1) at a.c:7\n");
  EXPECT_FALSE(stream.continuedFrame);
}

TEST_F(GdbStreamTest, AFrameCutInAWord_IsJoined) {
  EXPECT_EQ(Feed("#0  f (a=0x7ff\nfe10) at a.c:7\n"), "frame 0 #0  f (a=0x7fffe10) at a.c:7\n");
  EXPECT_EQ(Feed("#0  f (a=0x7ff\nf1) at a.c:7\n"), "frame 0 #0  f (a=0x7fff1) at a.c:7\n");
  EXPECT_EQ(Feed("#0  f (a=\n#x) at a.c:7\n"), "frame 0 #0  f (a=#x) at a.c:7\n");
}

TEST_F(GdbStreamTest, AFrameWithoutASource_DoesntSwallowTheNext) {
  EXPECT_EQ(Feed("#0  0x40 in g () from libc.so.6\n#1  f () at a.c:7\n"),
            "frame 0 #0  0x40 in g () from libc.so.6\nframe 1 #1  f () at a.c:7\n");
  EXPECT_EQ(Feed("#12  0x40 in ?? ()\n(More stack frames follow...)\n^pre-prompt\n"),
            "frame 12 #12  0x40 in ?? ()\noutput (More stack frames follow...)\n");
}

TEST_F(GdbStreamTest, ForgedFrame_GivesNoRow) {
  EXPECT_EQ(Feed("#1\n^pre-prompt\n#include at\n^pre-prompt\n#1 at 7\n^pre-prompt\n"), "");
}

TEST_F(GdbStreamTest, TheFrameThatFinishLeaves_IsNoRow) {
  EXPECT_EQ(Feed("Run till exit from #0  f () at a.c:7\n"),
            "output Run till exit from #0  f () at a.c:7\n");
  EXPECT_EQ(Feed("Run till exit from \n^frame-begin 0 0x4\n#0  f () at a.c:7\n"),
            "output Run till exit from #0  f () at a.c:7\n");
  EXPECT_EQ(Feed("Run till exit from \n^error-begin\n#0  f () at a.c:7\n"),
            "output Run till exit from \nframe 0 #0  f () at a.c:7\n");
}

// --- Stops

TEST_F(GdbStreamTest, Prompt_AfterACallThatCameBack_IsPausedAsBefore) {
  Feed("^source /p/a.c:1:1:beg:0x40\n^stopped\n^prompt\n");
  EXPECT_EQ(Feed("^starting\n"), "running\n");
  EXPECT_FALSE(stream.paused);
  EXPECT_EQ(Feed("$1 = 5\n^prompt\n"), "result 5\nprompt\n");
  EXPECT_TRUE(stream.paused);
}

TEST_F(GdbStreamTest, ACallForADisplay_LeavesTheStopAndHasItsValue) {
  events.watched = {"f(k)", "k"};
  EXPECT_EQ(Feed("^source /p/a.c:4:1:beg:0x40\n1: f(k) = \n^starting\n^frames-invalid\n"
                 "[New Thread 0x7f (LWP 7)]\n8\n2: k = 1\n^stopped\n"),
            "source /p/a.c:4 level 0\ndisplay 1 f(k) is \nrunning\n"
            "output [New Thread 0x7f (LWP 7)]\ndisplay 1 f(k) is 8\ndisplay 2 k is 1\n"
            "stopped by step at /p/a.c:4\n");
  EXPECT_EQ(Feed("1: f(k) = \n^starting\n^error-begin\nno\n^prompt\n8\n"),
            "display 1 f(k) is \nrunning\nerror no\nprompt\ndisplays due\noutput 8\n")
      << "the value never came";
}

TEST_F(GdbStreamTest, Prompt_AfterAStartThatFailed_IsNotPaused) {
  EXPECT_EQ(Feed("^starting\n^prompt\n"), "running\nprompt\n");
  EXPECT_FALSE(stream.paused);
}

TEST_F(GdbStreamTest, Stop_NamesItsThread) {
  EXPECT_EQ(Feed("^signal\nThread 3 \"a hit b\" received signal SIGINT, Interrupt.\n^stopped\n"),
            "output Thread 3 \"a hit b\" received signal SIGINT, Interrupt.\n"
            "stopped by signal SIGINT (Interrupt) in thread 3 \"a hit b\"\n");
}

TEST_F(GdbStreamTest, AProgramThatWasKilled_HasEndedInAnyCase) {
  EXPECT_EQ(Feed("^signalled\nProgram terminated with signal SIGKILL, Killed.\n^stopped\n"),
            "output Program terminated with signal SIGKILL, Killed.\nended by SIGKILL (Killed)\n");
  EXPECT_EQ(Feed("^starting\n^signalled\n^stopped\n"), "running\nended by a signal ()\n");
  EXPECT_TRUE(stream.paused);
}

// --- Bounds

TEST_F(GdbStreamTest, AValueOfTenMegabytes_IsCutWithAMark) {
  events.watched = {"a"};
  Feed("1: a = " + std::string(10'000'000, 'x') + "\n" + std::string(1000, 'y') + "\n");
  const std::string text = Feed("^x\n");
  EXPECT_EQ(text.substr(0, 20), "display 1 a is xxxxx");
  EXPECT_EQ(text.find("xxx...\n"), 15 + cLongestValue - 3);
}

TEST_F(GdbStreamTest, AValueOfTheLimit_IsWhole) {
  events.watched = {"a"};
  const std::string most(cLongestValue, 'x');
  EXPECT_EQ(Feed("1: a = " + most + "\n^x\n"), "display 1 a is " + most + "\n");
  EXPECT_EQ(Feed("1: a = " + most + "y\n^x\n"), "display 1 a is " + most + "...\n");
}

TEST_F(GdbStreamTest, AColumn_TakesNoLineAfter255Characters) {
  events.watched = {"a"};
  const std::string short254(254, 'x'), long255(255, 'x');
  EXPECT_EQ(Feed("1: a = " + short254 + "\ny\n^x\n"), "display 1 a is " + short254 + "y\n");
  EXPECT_EQ(Feed("1: a = " + long255 + "\ny\n^x\n"),
            "display 1 a is " + long255 + "y\n  in a column " + long255 + "\n");
}

TEST_F(GdbStreamTest, ALongLine_IsCutTheSameInAnyPieces) {
  const std::string line =
      std::string(cLongestLine, 'x') + "y" + std::string(cLongestLine, 'z') + "\n";
  const std::string whole = Feed(line);
  EXPECT_EQ(whole, "output " + std::string(cLongestLine, 'x') + "\n");
  for (size_t at = 0; at < line.size(); at += 4099)
    stream.Feed(std::string_view(line).substr(at, 4099));
  EXPECT_TRUE(events.Take() == whole);
  stream.HandleLine(line);
  EXPECT_TRUE(events.Take() == whole);
}

TEST_F(GdbStreamTest, ErrorsAndAnnotationsAreBounded) {
  std::string text = "^error-begin\n";
  for (int i = 0; i < 200; ++i) text += std::string(1000, 'e') + "\n";
  EXPECT_EQ(Feed(text + "^error\n").size(), std::string("error ...\n").size() + cLongestValue);
  Feed("^" + std::string(cLongestAnnotation + 1, 'a') + "\n");
  EXPECT_EQ(stream.lastAnnotation.size(), cLongestAnnotation);
}

TEST_F(GdbStreamTest, AFrameInOneLine_MayBeLong) {
  const std::string text = "#0  f<" + std::string(3 * cLongestFrame, 'x') + "> ()";
  EXPECT_EQ(Feed(text + " at a.c:7\n"), "frame 0 " + text + " at a.c:7\n");
}

TEST_F(GdbStreamTest, AFrameInManyLines_IsDroppedBeyondItsLimit) {
  const std::string head = "#0  f (" + std::string(cLongestFrame - 8, 'x') + ",";
  EXPECT_EQ(Feed(head + "\n"), "");
  EXPECT_TRUE(stream.continuedFrame);
  EXPECT_EQ(Feed("y\n  at a.c:7\n"), "output   at a.c:7\n");
  EXPECT_FALSE(stream.continuedFrame);
}

TEST_F(GdbStreamTest, Garbage_LeavesAReaderThatReadsOn) {
  std::mt19937 random(7);
  constexpr std::string_view cBytes("\x1A\n\0#$(B:= 1}\xC3\x80", 15);
  for (int round = 0; round < 200; ++round) {
    std::string text;
    for (int i = 0; i < 200; ++i) text += cBytes[random() % cBytes.size()];
    stream.Feed(text);
  }
  stream.Feed("\n");
  Feed("^x\n^x\n");
  EXPECT_EQ(Feed("#0  f () at a.c:7\n^prompt\n").substr(0, 26), "frame 0 #0  f () at a.c:7\n");
}

// --- The end

TEST_F(GdbStreamTest, Finish_ReportsWhatWasIncomplete) {
  events.watched = {"a"};
  EXPECT_EQ(Feed("1: a = 5"), "");
  stream.Finish();
  EXPECT_EQ(events.Take(), "display 1 a is 5\n");
}

TEST_F(GdbStreamTest, Reset_ForgetsEverything) {
  events.watched = {"a"};
  Feed("^source /p/a.c:1:1:beg:0x40\n^prompt\n1: a = 5\n#0 ");
  stream.Reset();
  EXPECT_FALSE(stream.promptSeen || stream.paused || stream.needsDisplay || stream.continuedFrame);
  EXPECT_EQ(stream.lineMode, GdbStream::cNormal);
  EXPECT_EQ(Feed("x\n^prompt\n"), "output x\nprompt\n");
}

// --- Callees

// Sends a command from a callback and waits in it, as the window does.
struct WaitingEvents : test::GdbEvents {
  void OnStopped(const GdbStop& stop) override {
    GdbEvents::OnStopped(stop);
    stream->CommandSent();
    stream->Feed("\x1A\x1Apre-prompt\n$1 = 5\n\x1A\x1Aprompt\n");
    seenInside = stream->promptSeen;
  }

  GdbStream* stream = nullptr;
  bool seenInside = false;
};

TEST(GdbStreamCallees, MayWaitForThePrompt) {
  WaitingEvents events;
  GdbStream stream(events);
  events.stream = &stream;
  stream.Feed("\x1A\x1Astopped\noutput before\n\x1A\x1Aprompt\n");
  EXPECT_EQ(events.Take(), "stopped by step\noutput output before\nprompt\nresult 5\nprompt\n");
  EXPECT_TRUE(events.seenInside);
}

struct ResettingEvents : test::GdbEvents {
  void OnEnded(const GdbEnd& end) override {
    GdbEvents::OnEnded(end);
    stream->Reset();
  }

  GdbStream* stream = nullptr;
};

TEST(GdbStreamCallees, MayResetTheReader) {
  ResettingEvents events;
  GdbStream stream(events);
  events.stream = &stream;
  stream.Feed(
      "1\n\x1A\x1A"
      "exited 3\nmore\n\x1A\x1Aprompt\n");
  EXPECT_EQ(events.Take(), "output 1\nended with 3\n");
  stream.Feed("2\n");
  EXPECT_EQ(events.Take(), "output 2\n");
}

TEST_F(GdbStreamTest, PlainLines_AreReportedBeforeTheyAreUnderstood) {
  events.showPlainLines = true;
  EXPECT_EQ(Feed("(gdb) $1 = 5\n^x\n"), "line (gdb) $1 = 5\nresult 5\n");
}

}  // namespace
}  // namespace zendry
