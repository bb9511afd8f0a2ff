#pragma once

#include <cstdint>

#include "WindresCursor.h"

namespace zendry {

// A constant expression: numbers, names of the version block's constants, ( ) - + ~ * / & | with
// the precedence of C. Fails at any other text.
struct RcNumber {
  int64_t value = 0;
  bool isLong = false;
};
RcNumber ReadExpression(RcCursor& cursor);
// True if an expression may begin with this word.
bool BeginsExpression(const RcToken& token);

}  // namespace zendry
