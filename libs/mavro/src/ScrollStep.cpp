#include "ScrollStep.h"

#include <cstdint>

#include "Scroller.h"

namespace mavro {

namespace {

constexpr int cCodeMask = 0xF;

// 64 bits, so that huge ranges don't overflow.
std::optional<int64_t> Target(int code, int64_t position, int64_t page, int64_t maximum) {
  switch (code & cCodeMask) {
    case SB_LINEUP:
      return position - 1;
    case SB_LINEDOWN:
      return position + 1;
    case SB_PAGEUP:
      return position - page + 1;
    case SB_PAGEDOWN:
      return position + page - 1;
    case SB_THUMBPOSITION:
    case SB_THUMBTRACK:
      return position;
    case SB_TOP:
      return 0;
    case SB_BOTTOM:
      return maximum;
    default:
      return std::nullopt;
  }
}

}  // namespace

std::optional<int> ScrollStep(int code, int position, int page, int maximum) {
  std::optional<int64_t> target = Target(code, position, page, maximum);
  if (!target) return std::nullopt;
  if (*target < 0) target = 0;
  if (*target >= maximum) target = static_cast<int64_t>(maximum) - 1;
  return static_cast<int>(*target);
}

}  // namespace mavro
