#include "frmedt/CtrlReg.h"

#include <gtest/gtest.h>

#include "Golden.h"
#include "frmedt/PropClass.h"

namespace zendry {
namespace {

std::string OrDash(const char* text) {
  if (!text) return "-";
  return *text ? text : "''";
}

std::string TypeText(const PropClass& type) {
  std::string text = std::to_string(type.type);
  if (type.type == cSelectionType) text += std::string(" ") + type.ref + ' ' + OrDash(type.prefix);
  if (&type == &thePropStrItems) text += " quoted";
  if (&type == &thePropTbItems) text += " verbatim";
  return text;
}

std::string ClassText(const CtrlClass& one) {
  std::string text = "class " + one.name + ' ' + std::to_string(one.ctrlId);
  if (one.noBounds) text += " noBounds";
  if (one.isContainer) text += " isContainer";
  if (one.thirdFlag) text += " thirdFlag";
  if (one.alwaysRefresh) text += " alwaysRefresh";
  if (one.isPage) text += " isPage";
  text += '\n';
  for (const PropDef& row : one.props)
    text += std::string("  ") + row.name + ' ' + std::to_string(row.kind) +
            (row.emit ? " 1 " : " 0 ") + OrDash(row.defaultValue) + ' ' + TypeText(*row.cvt) + '\n';
  for (const EventDef& row : one.events)
    text += std::string("  ") + row.name + '(' + row.argType + ")\n";
  return text;
}

TEST(CtrlReg, EveryRow_IsAsInTheGolden) {
  std::string text = ClassText(WindowRegClass);
  for (const CtrlClass& one : Registry()) text += ClassText(one);
  EXPECT_TRUE(test::MatchesGolden(TEST_DATA "/forms/registry.golden", text));
}

TEST(CtrlReg, FindClass_NeedsTheWholeName) {
  InitRegistry();
  EXPECT_EQ(FindClass("TabPage")->ctrlId, cTabPageId);
  EXPECT_EQ(FindClass("Butto"), nullptr);
  EXPECT_EQ(FindClass("Buttons"), nullptr);
  EXPECT_EQ(FindClass("Form"), nullptr);
  EXPECT_EQ(FindClass(""), nullptr);
}

TEST(CtrlReg, FindRow_IsThePlaceInTheTable) {
  EXPECT_EQ(WindowRegClass.FindRow("dock"), 0);
  EXPECT_EQ(WindowRegClass.FindRow("windowType"), 15);
  EXPECT_EQ(WindowRegClass.FindRow("nothing"), -1);
  EXPECT_EQ(WindowRegClass.DefaultOf("resizable"), "true");
  EXPECT_EQ(WindowRegClass.DefaultOf("text"), "");
}

// The position of a default among its options is what the control has at first.
TEST(CtrlReg, EveryDefaultOfASelection_IsAnOption) {
  for (const CtrlClass& one : Registry())
    for (const PropDef& row : one.props) {
      if (row.cvt->type != cSelectionType) continue;
      const std::vector<std::string> options = SplitOptions(row.cvt->ref);
      EXPECT_NE(std::find(options.begin(), options.end(), row.defaultValue), options.end())
          << one.name << "." << row.name;
    }
}

}  // namespace
}  // namespace zendry
