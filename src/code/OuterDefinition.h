#pragma once

#include "tags/TagData.h"

namespace zendry {

// True for a member function's tag that stands for its definition outside of the class; the class
// has the declaration as a tag of its own.
inline bool IsOuterDefinition(const TagItem& item) {
  return item.kind == 'f' && item.access == 0;
}

// True for a member that the block of its class declares: neither a definition outside of it nor a
// function that is a friend only.
inline bool IsOwnMember(const TagItem& item) {
  return !IsOuterDefinition(item) && !item.isFriend;
}

}  // namespace zendry
