#include <cstdlib>
#include <new>

#include "LargeBlocks.h"

// The program's operators new and delete. They do what those of the library do, and tell about
// large blocks, so that the editor can give back what it doesn't need of them. The sanitizers have
// operators of their own.

#ifndef __SANITIZE_ADDRESS__

void* operator new(std::size_t size) {
  for (;;) {
    if (void* block = std::malloc(size > 0 ? size : 1)) {
      if (size >= mavro::LargeBlocks::cLeast) mavro::LargeBlocks::Note(block, size);
      return block;
    }
    const std::new_handler handler = std::get_new_handler();
    if (!handler) throw std::bad_alloc();
    handler();
  }
}

void operator delete(void* block) noexcept {
  mavro::LargeBlocks::Forget(block);
  std::free(block);
}

void operator delete(void* block, std::size_t) noexcept {
  operator delete(block);
}

#endif
