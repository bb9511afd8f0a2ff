#pragma once

namespace test {

// How often the program has asked for memory so far. Always 0 under the address sanitizer, which
// brings operators of its own.
long AllocationCount();
constexpr bool cCountsAllocations =
#ifdef __SANITIZE_ADDRESS__
    false;
#else
    true;
#endif

}  // namespace test
