#include "code/ExpressionAt.h"

#include "Assert.h"
#include "code/TextScanner.h"

namespace zendry {

namespace {

// The number of bytes directly before `place` that belong to the expression.
int StepLeft(std::string_view line, int place) {
  if (place > 0 && (IsWordChar(line[place - 1]) || line[place - 1] == '.')) return 1;
  return line.substr(0, place).ends_with("->") ? 2 : 0;
}

}  // namespace

std::string ExpressionAt(std::string_view line, int pos) {
  const int len = static_cast<int>(line.size());
  MAVRO_ASSERT_AS(pos < len && pos >= 0, "pos<len && pos>=0");
  int begin = pos;
  while (const int step = StepLeft(line, begin)) begin -= step;
  int end = pos;
  while (end < len && (line[end] == '[' || IsWordChar(line[end]))) ++end;
  if (end < len && line[end] == ']') ++end;
  return std::string(line.substr(begin, end - begin));
}

}  // namespace zendry
