#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "DarkPalette.h"
#include "EditorFixture.h"
#include "Looks.h"
#include "base/HelpCommands.h"
#include "frame/ToolActs.h"
#include "help/HelpActs.h"

// The dialogs of searches, help and the about box, light and dark: nothing in them is cut or too
// pale. build/shots/round-*.png are for people to look at.

namespace zendry {
namespace {

using test::IdeDriver;

class SearchShots : public test::EditorFixture, public testing::WithParamInterface<const char*> {
 protected:
  void Shot(const mavro::Control& control, const std::string& name) {
    EXPECT_THAT(test::UnreadableCaptions(control), testing::IsEmpty()) << name;
    test::Shot(control, "round-" + name + "-" + GetParam());
    ++shots;
  }
  void Run(const std::function<void()>& script) {
    const QPalette light = QApplication::palette();
    if (std::string(GetParam()) == "dark") QApplication::setPalette(test::DarkPalette());
    std::vector<IdeDriver::File> files = {
        {"a.cpp", "int shapes;\nint main() { return shapes; }\n"}};
    for (int i = 0; i < 12; ++i)
      files.push_back({"shape" + std::to_string(i) + ".cpp", "int shapes;\n// shapes, aaab aab\n"});
    ide.Run({ide.Project(files)}, [&] {
      theMainForm->SetBounds(0, 0, 1000, 700);
      Tabs().OpenFile(ide.files.Path("a.cpp"));
      script();
    });
    QApplication::setPalette(light);
  }
  // Shows the dialog of a key, types into it, takes its picture and ends it.
  void Dialog(const std::string& name, Qt::Key key, Qt::KeyboardModifiers modifiers,
              const std::string& typed) {
    ide.OnDialog([&](mavro::Form& form) {
      Type(typed);
      Shot(form, name);
      test::Key(form, Qt::Key_Escape);
    });
    IdeDriver::Press(key, modifiers);
    test::WidgetOf(*theMainForm)->activateWindow();
    EXPECT_TRUE(test::WaitFor([] { return mavro::activeForm == theMainForm; }));
  }

  int shots = 0;
};

TEST_P(SearchShots, DialogsOfSearches) {
  const Qt::KeyboardModifiers both = Qt::ControlModifier | Qt::ShiftModifier;
  Run([&] {
    Dialog("find", Qt::Key_F, Qt::ControlModifier, "shapes");
    Dialog("find-broken", Qt::Key_F, Qt::ControlModifier, "nowhere at all");
    Dialog("replace", Qt::Key_R, Qt::ControlModifier, "shapes");
    Dialog("find-in-project", Qt::Key_F, both, "shapes");
    Dialog("replace-in-project", Qt::Key_R, both, "shapes");
    Dialog("go-to-line", Qt::Key_G, Qt::ControlModifier, "2");
    EXPECT_EQ(shots, 6);
  });
}

TEST_P(SearchShots, ListOfReplacements) {
  Run([&] {
    ide.OnDialog([&](mavro::Form& dialog) {
      Type("shapes");
      test::Key(dialog, Qt::Key_P, Qt::AltModifier);
      Type("figures");
      ide.OnDialog([&](mavro::Form& list) {
        if (&list == &dialog) return;
        Shot(list, "replace-list");
        test::Key(list, Qt::Key_Escape);
      });
      test::Key(dialog, Qt::Key_Return);
    });
    IdeDriver::Press(Qt::Key_R, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(shots, 1);
  });
}

TEST_P(SearchShots, HelpAndAbout) {
  Run([&] {
    ide.OnDialog([&](mavro::Form& form) {
      Shot(form, "about");
      test::Key(form, Qt::Key_Escape);
    });
    theHelpActs.OnCommand(cAboutCommand);
    theHelpActs.OnCommand(cShowHelpCommand);
    Shot(*theHelpActs.Window(), "help");
    theHelpActs.Window()->showHelp("nowhere");
    Shot(*theHelpActs.Window(), "help-missing");
    theHelpActs.Window()->Close();
    EXPECT_EQ(shots, 3);
  });
}

INSTANTIATE_TEST_SUITE_P(Looks, SearchShots, testing::Values("light", "dark"),
                         [](const auto& info) { return std::string(info.param); });

}  // namespace
}  // namespace zendry
