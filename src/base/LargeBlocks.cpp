#include "base/LargeBlocks.h"

#include <malloc.h>
#include <sys/mman.h>

#include <cstdlib>

namespace zendry {

namespace {

constexpr size_t cHugePage = 2 * 1024 * 1024;
constexpr int cOwnMapping = 1024 * 1024;  // larger blocks aren't cut from memory that others share

}  // namespace

// The last part of a block that doesn't fill a huge page takes small ones, so that no memory is
// used that nobody has asked for.
void* NewBlock(size_t size) noexcept {
  if (size < cLargeBlock) return std::malloc(size ? size : 1);
  void* block = std::aligned_alloc(cHugePage, size);
  if (block) madvise(block, size / cHugePage * cHugePage, MADV_HUGEPAGE);
  return block;
}

// Left to itself, the library takes ever larger blocks from its heap, up to 32 MB.
void ReturnFreedBlocks() {
  mallopt(M_MMAP_THRESHOLD, cOwnMapping);
  mallopt(M_TRIM_THRESHOLD, cOwnMapping);
}

}  // namespace zendry
