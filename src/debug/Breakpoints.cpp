#include "debug/Breakpoints.h"

#include <algorithm>

namespace zendry {

int Breakpoints::Add(const std::string& file, int line, int handle) {
  Breakpoint added;
  added.file = file;
  added.line = line;
  added.handle = handle;
  added.key = ++lastKey;
  entries.push_back(std::move(added));
  return static_cast<int>(entries.size()) - 1;
}

void Breakpoints::Remove(int index) {
  if (Has(index)) entries.erase(entries.begin() + index);
}

void Breakpoints::Clear() {
  entries.clear();
  awaited = cNone;
}

int Breakpoints::Find(std::string_view file, int line) const {
  const auto found = std::find_if(entries.begin(), entries.end(), [&](const Breakpoint& entry) {
    return entry.line == line && entry.file == file;
  });
  return found == entries.end() ? cNone : static_cast<int>(found - entries.begin());
}

int Breakpoints::FindKey(int key) const {
  const auto found = std::find_if(entries.begin(), entries.end(),
                                  [key](const Breakpoint& entry) { return entry.key == key; });
  return found == entries.end() ? cNone : static_cast<int>(found - entries.begin());
}

bool Breakpoints::Has(int index) const {
  return index >= 0 && index < static_cast<int>(entries.size());
}

void Breakpoints::ForgetNumbers() {
  for (Breakpoint& entry : entries) {
    entry.id = 0;
    entry.isPending = false;
    entry.refusal.clear();
    entry.locations = 1;
  }
  awaited = cNone;
}

}  // namespace zendry
