#include "LargeBlocks.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace mavro {

namespace {

bool IsZero(const char* page, size_t size) {
  return page[0] == 0 && std::memcmp(page, page + 1, size - 1) == 0;
}

size_t Release(char* start, char* end) {
  const auto size = static_cast<size_t>(end - start);
  return size > 0 && madvise(start, size, MADV_DONTNEED) == 0 ? size : 0;
}

// Runs of pages of zeros are released at once.
size_t ReleaseIn(char* block, size_t size) {
  const auto page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
  const size_t before = -reinterpret_cast<std::uintptr_t>(block) % page;
  if (size < before + page) return 0;
  char* const end = block + before + (size - before) / page * page;
  size_t released = 0;
  char* run = block + before;
  for (char* at = run; at < end; at += page) {
    if (IsZero(at, page)) continue;
    released += Release(run, at);
    run = at + page;
  }
  return released + Release(run, end);
}

}  // namespace

constinit thread_local LargeBlocks* LargeBlocks::innermost = nullptr;

LargeBlocks::LargeBlocks() : outer(innermost) {
  innermost = this;
}

LargeBlocks::~LargeBlocks() {
  innermost = outer;
}

size_t LargeBlocks::ReleaseZeroPages() const {
  size_t released = 0;
  for (const Block& block : blocks)
    if (block.start) released += ReleaseIn(static_cast<char*>(block.start), block.size);
  return released;
}

void LargeBlocks::Note(void* block, size_t size) {
  if (!innermost) return;
  auto& blocks = innermost->blocks;
  const auto free =
      std::find_if(blocks.begin(), blocks.end(), [](const Block& b) { return !b.start; });
  if (free != blocks.end()) *free = {block, size};
}

void LargeBlocks::Remove(const void* block) {
  if (!block) return;
  for (Block& known : blocks)
    if (known.start == block) known = {};
}

}  // namespace mavro
