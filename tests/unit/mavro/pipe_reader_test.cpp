#include "PipeReader.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

namespace mavro {
namespace {

class PipeReaderTest : public testing::Test {
 protected:
  PipeReaderTest() { EXPECT_EQ(pipe(ends), 0); }
  ~PipeReaderTest() override {
    close(ends[0]);
    CloseWriter();
  }
  void Write(const std::string& bytes) {
    EXPECT_EQ(write(ends[1], bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
  }
  void CloseWriter() {
    if (ends[1] >= 0) close(ends[1]);
    ends[1] = -1;
  }

  int ends[2] = {-1, -1};
  PipeReader reader;
};

TEST_F(PipeReaderTest, Read_GivesAtMost80Bytes) {
  Write(std::string(200, 'x'));
  EXPECT_EQ(reader.FetchAhead(ends[0]), PipeReader::Fetch::cBytes);
  EXPECT_EQ(reader.BytesAhead(), 200u);
  for (const size_t size : {80u, 80u, 40u, 0u}) EXPECT_EQ(reader.Read().size(), size);
  EXPECT_EQ(reader.BytesAhead(), 0u);
}

TEST_F(PipeReaderTest, FetchAhead_KeepsWhatWasNotReadYet) {
  Write(std::string(90, 'x'));
  reader.FetchAhead(ends[0]);
  EXPECT_EQ(reader.Read(), std::string(80, 'x'));
  Write("yz\n");
  reader.FetchAhead(ends[0]);
  EXPECT_EQ(reader.Read(), std::string(10, 'x') + "yz\r\n");
}

TEST_F(PipeReaderTest, FetchAhead_TellsEndAndError) {
  CloseWriter();
  EXPECT_EQ(reader.FetchAhead(ends[0]), PipeReader::Fetch::cEnd);
  EXPECT_EQ(reader.FetchAhead(-1), PipeReader::Fetch::cError);
}

}  // namespace
}  // namespace mavro
