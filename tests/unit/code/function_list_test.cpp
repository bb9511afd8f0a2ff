#include "code/FunctionList.h"

#include <gtest/gtest.h>

#include "tags/TagData.h"

namespace zendry {
namespace {

TagItem Item(const char* name, int kind, int line) {
  TagItem item;
  item.name = name;
  item.kind = kind;
  item.line = line;
  return item;
}

TEST(FunctionList, HasDefinitionsInTheOrderOfLines) {
  TagData module;
  module.globals = {Item("main", 'f', 9), Item("declared", 'p', 2), Item("count", 'v', 1)};
  TagClass& shape = module.classes["Shape"];
  shape.members = {Item("area", 'f', 4), Item("width", 'm', 3)};
  EXPECT_EQ(FunctionsOf(module), (std::vector<FunctionPlace>{{3, "Shape::area"}, {8, "main"}}));
}

}  // namespace
}  // namespace zendry
