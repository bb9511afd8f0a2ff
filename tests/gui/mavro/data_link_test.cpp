#include "DataLink.h"

#include <gtest/gtest.h>

#include "Button.h"
#include "ButtonGroup.h"
#include "Edit.h"
#include "Form.h"
#include "SysImpl.h"

namespace mavro {
namespace {

struct Source : DataSource {
  explicit Source(std::string its) : value(std::move(its)) {}
  void Get(std::string& out) override { out = value; }
  void Set(const std::string& text) override { value = text; }
  std::string value;
};

TEST(DataLink, Text_IsCopiedBothWays) {
  Edit edit;
  Source source("from the source");
  edit.dataLink = &source;
  EXPECT_EQ(edit.dataLink.Get(), &source);
  edit.impl->dataLink->Load();
  EXPECT_EQ(edit.text.Get(), "from the source");
  edit.text = "typed";
  edit.impl->dataLink->Save();
  EXPECT_EQ(source.value, "typed");
}

TEST(DataLink, CheckBox_IsSetByA1Alone) {
  CheckBox box;
  Source source("1");
  box.dataLink = &source;
  box.impl->dataLink->Load();
  EXPECT_TRUE(box.checked);
  for (const char* other : {"0", "", "11", " 1", "true"}) {
    box.checked = true;
    source.value = other;
    box.impl->dataLink->Load();
    EXPECT_FALSE(box.checked) << other;
  }
}

TEST(DataLink, CheckBox_GivesA1OrA0) {
  CheckBox box;
  Source source("?");
  box.dataLink = &source;
  box.checked = true;
  box.impl->dataLink->Save();
  EXPECT_EQ(source.value, "1");
  box.checked = false;
  box.impl->dataLink->Save();
  EXPECT_EQ(source.value, "0");
}

TEST(DataLink, WithoutASource_NothingIsCopied) {
  CheckBox box;
  Edit edit;
  RadioGroup group;
  Source source("1");
  EXPECT_EQ(edit.dataLink.Get(), nullptr);
  for (Control* control : std::initializer_list<Control*>{&box, &edit, &group}) {
    control->dataLink = &source;
    control->dataLink = nullptr;
    EXPECT_EQ(control->dataLink.Get(), nullptr);
  }
  box.checked = true;
  edit.text = "kept";
  for (Control* control : std::initializer_list<Control*>{&box, &edit, &group}) {
    control->impl->dataLink->Load();
    control->impl->dataLink->Save();
  }
  EXPECT_TRUE(box.checked);
  EXPECT_EQ(edit.text.Get(), "kept");
  EXPECT_EQ(source.value, "1");
}

TEST(DataLink, SaveDataLinks_ReachesEveryDepth_AndPassesOthersOver) {
  Panel outer, inner, plain;
  Edit first, second, unlinked;
  Source one("1"), two("2");
  outer.Add(&first);
  outer.Add(&inner);
  outer.Add(&plain);
  inner.Add(&unlinked);
  inner.Add(&second);
  first.dataLink = &one;
  second.dataLink = &two;
  first.text = "a";
  second.text = "b";
  SaveDataLinks(&outer);
  EXPECT_EQ(one.value, "a");
  EXPECT_EQ(two.value, "b");
}

}  // namespace
}  // namespace mavro
