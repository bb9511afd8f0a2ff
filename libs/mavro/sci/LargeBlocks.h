#pragma once

#include <array>
#include <cstddef>

namespace mavro {

// The large blocks of memory that this thread gets from `operator new` while an object of this
// class lives and that are not freed before it asks. The innermost object counts. It knows them in
// programs whose operators new and delete call Note and Forget; in others it does nothing.
class LargeBlocks {
 public:
  static constexpr size_t cLeast = size_t{4} << 20;  // bytes

  LargeBlocks();
  ~LargeBlocks();
  LargeBlocks(const LargeBlocks&) = delete;
  LargeBlocks& operator=(const LargeBlocks&) = delete;

  // Gives back to the system the pages that hold only zeros: they read as zeros as before, and take
  // memory again when they are written. No other thread may write to the blocks meanwhile. Returns
  // the number of bytes.
  size_t ReleaseZeroPages() const;

  // A block of at least cLeast bytes has been made; any block is about to be freed.
  static void Note(void* block, size_t size);
  static void Forget(void* block) {
    if (innermost) innermost->Remove(block);
  }

 private:
  struct Block {
    void* start = nullptr;
    size_t size = 0;
  };
  void Remove(const void* block);

  static constinit thread_local LargeBlocks* innermost;

  LargeBlocks* const outer;
  std::array<Block, 16> blocks;  // those beyond are not known
};

}  // namespace mavro
