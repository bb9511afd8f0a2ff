// Included before each source that tests/mutate.py has changed. All changes of a source are
// compiled in; one of them is in force, the one whose number ZENDRY_MUTANT holds, or none.
#pragma once

namespace mutant {

constexpr int cMost = 100000;
extern int chosen;
extern unsigned char* reached;

// True if change `number` is in force. Notes that a test came by.
inline bool Is(int number) {
  reached[number] = 1;
  return number == chosen;
}

}  // namespace mutant
