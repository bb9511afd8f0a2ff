#include <gtest/gtest.h>

#include "DesignTest.h"
#include "OwnForms.h"

// The program's own dialogs on the surface: opened with real controls, saved untouched.

namespace zendry {
namespace {

class OwnDialogsSurface : public testing::Test {
 protected:
  void ExpectUntouched(const std::filesystem::path& path) {
    SCOPED_TRACE(path.string());
    FormLocator locator;
    locator.Scan(test::ReadForm(path));
    ASSERT_EQ(locator.targets.size(), 1u);
    ASSERT_TRUE(locator.Select(0, test::OtherHalf));
    FormData form;
    form.root.declClass = locator.Selected().className;
    form.ReadDecl(locator.Selected().decl.Lines());
    form.ReadInit(locator.Selected().init.Lines());
    DesignFrame frame(form);
    frame.SetBounds(0, 0, 1000, 640);
    test::RunForm(frame, true, [&] { frame.Command(cSaveAndCloseCommand); });
    EXPECT_TRUE(frame.editor.live.failures.empty());
    for (const RegionEdit& edit : locator.ReplaceRegions(frame.declLines, frame.initLines)) {
      const std::string text = mavro::ReadFileText(edit.path).text;
      EXPECT_EQ(text.substr(edit.edit.offset, edit.edit.length), edit.edit.text) << edit.path;
    }
  }

  test::ScriptedDialogs dialogs;
};

TEST_F(OwnDialogsSurface, EachIsSavedWithoutAChange) {
  const auto sources = test::FormSources();
  EXPECT_GT(sources.size(), 20u);
  for (const auto& path : sources) ExpectUntouched(path);
  EXPECT_TRUE(dialogs.texts.empty());
}

}  // namespace
}  // namespace zendry
