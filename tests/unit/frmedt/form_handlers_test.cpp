#include "frmedt/FormHandlers.h"

#include <gtest/gtest.h>

#include "code/TagLookup.h"

namespace zendry {
namespace {

TEST(CollectHandlers, TakesFunctionsWithOneArgumentClass) {
  TagClass record;
  const auto add = [&](char kind, const char* name, const char* signature) {
    TagItem item;
    item.kind = kind;
    item.name = name;
    item.signature = signature;
    record.members.push_back(item);
  };
  add('p', "DoClick", "(NotifyArgs &e)");
  add('f', "DoKey", "(KeyArgs& e, int)");
  add('f', "DoConst", "(const NotifyArgs &e)");
  add('m', "data", "(NotifyArgs)");
  add('f', "Plain", "(int x)");
  add('f', "None", "");
  std::vector<FormHandler> handlers;
  CollectHandlers(record, handlers);
  EXPECT_EQ(handlers,
            (std::vector<FormHandler>{
                {"DoClick", "NotifyArgs"}, {"DoKey", "KeyArgs"}, {"DoConst", "const NotifyArgs"}}));
}

}  // namespace
}  // namespace zendry
