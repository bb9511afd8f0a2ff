#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "DataPaths.h"
#include "GdbEvents.h"
#include "Golden.h"
#include "debug/GdbStream.h"

// What gdb has really printed (tests/data/gdb/record.py), with the events it means beside it.

namespace zendry {
namespace {

constexpr std::string_view cMarkShown = "\u241A";
constexpr std::string_view cCommand = "\u00BB";

// A stretch of the transcript: gdb's bytes up to the next command.
struct Stretch {
  std::string bytes;
  std::string command;  // written after the bytes; empty at the end
};

std::vector<Stretch> Read(const std::string& path) {
  std::vector<Stretch> stretches(1);
  std::string text = test::ReadData(path);
  for (size_t at; (at = text.find(cMarkShown)) != std::string::npos;)
    text.replace(at, cMarkShown.size(), "\x1A");
  for (size_t from = 0; from < text.size();) {
    const size_t end = std::min(text.find('\n', from), text.size() - 1) + 1;
    const std::string line = text.substr(from, end - from);
    from = end;
    if (!line.starts_with(cCommand)) {
      stretches.back().bytes += line;
      continue;
    }
    stretches.back().command = line.substr(cCommand.size());
    stretches.emplace_back();
  }
  return stretches;
}

// The events of a transcript whose bytes `feed` hands over.
template <class Feed>
std::string EventsOf(GdbStream& stream, test::GdbEvents& events,
                     const std::vector<Stretch>& stretches, Feed feed) {
  std::string text;
  for (const Stretch& stretch : stretches) {
    feed(stream, stretch.bytes);
    text += events.Take();
    if (stretch.command.empty()) continue;
    EXPECT_TRUE(stream.promptSeen) << "before " << stretch.command;
    stream.CommandSent();
    text += "> " + stretch.command;
  }
  stream.Finish();
  return text + events.Take();
}

template <class Feed>
std::string Events(const std::vector<Stretch>& stretches, Feed feed) {
  test::GdbEvents events;
  events.watched = {"*"};
  GdbStream stream(events);
  return EventsOf(stream, events, stretches, feed);
}

void FeedWhole(GdbStream& stream, std::string_view bytes) {
  stream.Feed(bytes);
}

void FeedBytes(GdbStream& stream, std::string_view bytes) {
  for (size_t at = 0; at < bytes.size(); ++at) stream.Feed(bytes.substr(at, 1));
}

// As the process runner hands lines on: with a carriage return.
void FeedLines(GdbStream& stream, std::string_view bytes) {
  while (!bytes.empty()) {
    const size_t end = bytes.find('\n');
    stream.Feed(std::string(bytes.substr(0, end)) + "\r\n");
    bytes.remove_prefix(end + 1);
  }
}

class GdbTranscripts : public testing::TestWithParam<std::string> {};

TEST_P(GdbTranscripts, MeanTheEventsBesideThem) {
  const std::string path = std::string(TEST_DATA) + "/gdb/" + GetParam();
  EXPECT_TRUE(test::MatchesGolden(path + ".events", Events(Read(path), FeedWhole)));
}

TEST_P(GdbTranscripts, MeanTheSameInAnyPieces) {
  const std::vector<Stretch> stretches = Read(std::string(TEST_DATA) + "/gdb/" + GetParam());
  const std::string whole = Events(stretches, FeedWhole);
  EXPECT_EQ(Events(stretches, FeedBytes), whole);
  EXPECT_EQ(Events(stretches, FeedLines), whole);
  for (unsigned seed = 1; seed <= 20; ++seed) {
    std::mt19937 random(seed);
    EXPECT_EQ(Events(stretches,
                     [&random](GdbStream& stream, std::string_view bytes) {
                       while (!bytes.empty()) {
                         const size_t count = std::min<size_t>(random() % 40, bytes.size());
                         stream.Feed(bytes.substr(0, count));
                         bytes.remove_prefix(count);
                       }
                     }),
              whole)
        << "seed " << seed;
  }
}

// A gdb that dies in the middle leaves a reader that the next one can use.
TEST_P(GdbTranscripts, CutAnywhereLeaveAReaderForTheNextGdb) {
  const std::vector<Stretch> stretches = Read(std::string(TEST_DATA) + "/gdb/" + GetParam());
  const std::string whole = Events(stretches, FeedWhole);
  std::string bytes;
  for (const Stretch& stretch : stretches) bytes += stretch.bytes;
  for (size_t cut = 0; cut < bytes.size(); cut += 97) {
    test::GdbEvents events;
    events.watched = {"*"};
    GdbStream stream(events);
    stream.Feed(std::string_view(bytes).substr(0, cut));
    stream.Finish();
    stream.Reset();
    events.Take();
    EXPECT_EQ(EventsOf(stream, events, stretches, FeedWhole), whole) << "cut at " << cut;
  }
}

std::vector<std::string> Names() {
  std::vector<std::string> names;
  for (const std::string& path : test::DataPaths("gdb"))
    if (path.ends_with(".txt")) names.push_back(path.substr(path.rfind('/') + 1));
  return names;
}

INSTANTIATE_TEST_SUITE_P(Recorded, GdbTranscripts, testing::ValuesIn(Names()),
                         [](const testing::TestParamInfo<std::string>& info) {
                           return info.param.substr(0, info.param.find('.'));
                         });

}  // namespace
}  // namespace zendry
