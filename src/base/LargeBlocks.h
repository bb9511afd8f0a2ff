#pragma once

#include <cstddef>

namespace zendry {

// Memory for objects of any size, to be given back by std::free. Null if there is none.
//
// A block of at least cLargeBlock bytes asks for huge pages: the text of a large file is written
// once from its beginning to its end, and a fault for each 4 KB of it took a quarter of the time
// that opening it takes.
constexpr size_t cLargeBlock = 4 * 1024 * 1024;
void* NewBlock(size_t size) noexcept;

// From now on blocks that are no longer used go back to the system, also if they lie between others
// that are: the tables of a large text are made anew several times while they grow.
void ReturnFreedBlocks();

}  // namespace zendry
