#include "LargeBlocks.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <thread>
#include <vector>

namespace mavro {
namespace {

const auto cPage = static_cast<size_t>(sysconf(_SC_PAGESIZE));

// Memory of the system, all of it written with zeros.
struct Pages {
  explicit Pages(size_t count)
      : size(count * cPage),
        start(static_cast<char*>(
            mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0))) {
    std::memset(start, 1, size);
    std::memset(start, 0, size);
  }
  ~Pages() { munmap(start, size); }
  Pages(const Pages&) = delete;
  Pages& operator=(const Pages&) = delete;

  // For each page, if it takes memory.
  std::vector<bool> Taken() const {
    std::vector<unsigned char> states(size / cPage);
    EXPECT_EQ(mincore(start, size, states.data()), 0);
    std::vector<bool> taken(states.size());
    std::transform(states.begin(), states.end(), taken.begin(),
                   [](unsigned char state) { return (state & 1) != 0; });
    return taken;
  }

  const size_t size;
  char* const start;
};

TEST(LargeBlocks, PagesOfZeros_AreGivenBackAndReadAsZeros) {
  const Pages pages(6);
  pages.start[1 * cPage] = 'a';
  pages.start[4 * cPage - 1] = 'b';
  const LargeBlocks blocks;
  LargeBlocks::Note(pages.start, pages.size);
  EXPECT_EQ(blocks.ReleaseZeroPages(), 4 * cPage);
  EXPECT_EQ(pages.Taken(), (std::vector<bool>{false, true, false, true, false, false}));
  EXPECT_EQ(pages.start[1 * cPage], 'a');
  EXPECT_EQ(pages.start[4 * cPage - 1], 'b');
  EXPECT_EQ(std::count(pages.start, pages.start + pages.size, 0),
            static_cast<ptrdiff_t>(pages.size) - 2);
}

TEST(LargeBlocks, PagesThatTheBlockOnlyTouches_Stay) {
  const Pages pages(4);
  const LargeBlocks blocks;
  LargeBlocks::Note(pages.start + 16, 3 * cPage - 17);
  EXPECT_EQ(blocks.ReleaseZeroPages(), cPage);
  EXPECT_EQ(pages.Taken(), (std::vector<bool>{true, false, true, true}));
}

TEST(LargeBlocks, BlockWithoutAWholePage_Stays) {
  const Pages pages(2);
  const LargeBlocks blocks;
  LargeBlocks::Note(pages.start + 1, 2 * cPage - 2);
  EXPECT_EQ(blocks.ReleaseZeroPages(), 0u);
  LargeBlocks::Note(pages.start, cPage);
  EXPECT_EQ(blocks.ReleaseZeroPages(), cPage);
}

TEST(LargeBlocks, FreedBlock_IsLeftAlone) {
  const Pages pages(2);
  const LargeBlocks blocks;
  LargeBlocks::Note(pages.start, pages.size);
  LargeBlocks::Forget(nullptr);
  LargeBlocks::Forget(pages.start);
  EXPECT_EQ(blocks.ReleaseZeroPages(), 0u);
  EXPECT_EQ(pages.Taken(), (std::vector<bool>{true, true}));
}

TEST(LargeBlocks, BlockOfAnotherTimeOrThread_IsLeftAlone) {
  const Pages pages(2);
  LargeBlocks::Note(pages.start, pages.size);
  const LargeBlocks blocks;
  std::thread([&] { LargeBlocks::Note(pages.start, pages.size); }).join();
  { const LargeBlocks inner; }
  EXPECT_EQ(blocks.ReleaseZeroPages(), 0u);
  LargeBlocks::Note(pages.start, pages.size);
  EXPECT_EQ(blocks.ReleaseZeroPages(), 2 * cPage);
}

TEST(LargeBlocks, BlocksBeyondTheSixteenth_Stay) {
  const Pages pages(17);
  const LargeBlocks blocks;
  for (size_t i = 0; i < 17; ++i) LargeBlocks::Note(pages.start + i * cPage, cPage);
  EXPECT_EQ(blocks.ReleaseZeroPages(), 16 * cPage);
}

}  // namespace
}  // namespace mavro
