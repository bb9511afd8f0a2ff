#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>

#include "IdeDriver.h"
#include "Looks.h"
#include "config/BuildSettings.h"
#include "config/EditorSettings.h"
#include "config/WindowSettings.h"
#include "frame/IdeOptForm.h"
#include "frame/ToolActs.h"

// The dialog of the program's options, and what its values do.

namespace zendry {
namespace {

using test::IdeDriver;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class IdeOptions : public testing::Test {
 protected:
  ~IdeOptions() override {
    theIdeFonts = {};
    theEditorSettings = {};
    theBuildSettings = {};
    theWindowSettings = {};
    ApplyLook();
  }
  void Show(const std::function<void(IdeOptForm&)>& script) {
    ide.OnDialog([&](mavro::Form& form) { script(dynamic_cast<IdeOptForm&>(form)); });
    theToolActs.OnCommand(cIdeOptionsCommand);
  }
  static void TypeNumber(mavro::SpinEdit& field, const char* number) {
    field.Focus();
    test::Key(*field.GetForm(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), number);
  }
  std::string Ini() {
    const std::string path = ide.home.Folder(".zendry") + "/zendry.ini";
    return mavro::ReadFileText(path).text;
  }
  // Every file of the home folder with its content.
  std::map<std::string, std::string> Home() {
    std::map<std::string, std::string> found;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(ide.home.Folder("")))
      if (entry.is_regular_file())
        found[entry.path().string()] = mavro::ReadFileText(entry.path().string()).text;
    return found;
  }

  IdeDriver ide;
};

TEST_F(IdeOptions, Fields_ShowTheSettings_FontsInFront) {
  ide.Run({}, [&] {
    theEditorSettings.tabSize = 3;
    theEditorSettings.indentSize = 2;
    theEditorSettings.useTabs = 0;
    theIdeFonts.fonts[cOutputFont] = {2, 1, "Ariel", 12};
    Show([](IdeOptForm& form) {
      EXPECT_EQ(form.width, 306);
      EXPECT_EQ(form.height, 377);
      EXPECT_EQ(form.tabs.selectedIndex, 1);
      EXPECT_EQ(form.tabs.GetPage(0)->text.Get(), "Editor");
      EXPECT_EQ(form.tabs.GetPage(1)->text.Get(), "Fonts");
      EXPECT_EQ(form.outputFont.name.text.Get(), "Ariel");
      EXPECT_EQ(form.outputFont.size.value, 12);
      EXPECT_TRUE(form.outputFont.style.checked);
      EXPECT_FALSE(form.variableFont.style.checked);
      EXPECT_THAT(form.fontNote.text.Get(), HasSubstr("Not on this machine: "));
      EXPECT_EQ(form.tabSize.value, 3);
      EXPECT_EQ(form.indentSize.value, 2);
      EXPECT_FALSE(form.useTabs.checked);
      form.Close();
    });
  });
}

TEST_F(IdeOptions, Cancel_KeepsAllAndWritesNothing) {
  ide.Run({}, [&] {
    Show([](IdeOptForm& form) {
      form.tabs.selectedIndex = 0;
      TypeNumber(form.tabSize, "7");
      form.theme.selectedIndex = 2;
      form.outputFont.size.value = 20;
      form.rescue.checked = false;
      form.launcher.text = "ccache";
      test::Key(form, Qt::Key_Escape);
    });
    EXPECT_EQ(theEditorSettings.tabSize, 4);
    EXPECT_EQ(theWindowSettings, WindowSettings());
    EXPECT_EQ(theBuildSettings, BuildSettings());
    EXPECT_EQ(theIdeFonts.fonts[cOutputFont].size, 10);
    EXPECT_EQ(mavro::CurrentTheme(), mavro::Theme::cSystem);
    EXPECT_EQ(Ini(), "");
  });
}

TEST_F(IdeOptions, Ok_WorksInOpenEditorsAtOnce_AndIsWritten) {
  const std::string path = ide.files.Write("a.cpp", "\tint a;\n");
  ide.Run({path}, [&] {
    const CppEditor& editor = *theMainForm->editTabs.Active()->editor;
    theMainForm->SetBounds(10, 20, 900, 600);
    EXPECT_TRUE(test::WaitFor([] { return theMainForm->Bounds().width == 900; }));
    Show([](IdeOptForm& form) {
      form.tabs.selectedIndex = 0;
      TypeNumber(form.tabSize, "7");
      TypeNumber(form.indentSize, "5");
      test::Click(form.useTabs);
      test::Click(form.showWhiteSpace);
      test::Click(form.closePairs);
      test::Key(form, Qt::Key_Return);
    });
    EXPECT_EQ(editor.Send(mavro::SCI_GETTABWIDTH), 7);
    EXPECT_NE(editor.Send(mavro::SCI_GETVIEWWS), 0);
    EXPECT_FALSE(editor.options->closePairs);
    for (const char* line : {"ed-tabsize=7\n", "ed-indsize=5\n", "ed-usetab=0\n", "ed-blanks=1\n",
                             "ed-closepairs=0\n", ";900;600;\n"})
      EXPECT_THAT(Ini(), HasSubstr(line));
    for (const char* key : {"theme", "ui-font", "rescue", "reload", "jobs", "Verdana", "ed-wrap"})
      EXPECT_THAT(Ini(), Not(HasSubstr(key)));
  });
  ide.Run({path}, [&] {
    EXPECT_EQ(theEditorSettings.tabSize, 7);
    EXPECT_EQ(theEditorSettings.closePairs, 0);
  });
}

TEST_F(IdeOptions, OnlyTheSettingsFileIsWritten_AndNothingByCancel) {
  ide.Run({}, [&] {
    const auto change = [](IdeOptForm& form) {
      form.tabs.selectedIndex = 0;
      TypeNumber(form.tabSize, "7");
      test::Click(form.lineNumbers);
      form.tabs.selectedIndex = 1;
      form.fixedFont.name.text = "No Such Font";
      form.fixedFont.size.value = 33;
      form.tabs.selectedIndex = 2;
      form.theme.selectedIndex = 1;
      form.launcher.text = "ccache";
    };
    const auto before = Home();
    Show([&](IdeOptForm& form) {
      change(form);
      test::Click(form.cancel);
    });
    EXPECT_EQ(Home(), before);
    Show([&](IdeOptForm& form) {
      change(form);
      test::Click(form.okButton);
    });
    auto after = Home();
    EXPECT_THAT(after[ide.home.Folder(".zendry") + "/zendry.ini"], HasSubstr("launcher0=ccache\n"));
    after.erase(ide.home.Folder(".zendry") + "/zendry.ini");
    auto others = before;
    others.erase(ide.home.Folder(".zendry") + "/zendry.ini");
    EXPECT_EQ(after, others);
  });
}

TEST_F(IdeOptions, Fonts_ReachEditorsAndOutput_AndLastUntilTheEnd) {
  ide.Run({ide.files.Write("a.cpp", "text\n")}, [&] {
    const CppEditor& editor = *theMainForm->editTabs.Active()->editor;
    const std::string face = mavro::FontFaces().front();
    Show([&](IdeOptForm& form) {
      form.outputFont.name.text = face;
      form.outputFont.size.value = 17;
      form.outputFont.style.checked = true;
      form.variableFont.size.value = 19;
      test::Click(form.okButton);
    });
    const mavro::Font output = theMainForm->output.font;
    EXPECT_EQ(output, mavro::Font(17, mavro::Font::cBold, face));
    EXPECT_EQ(editor.options->fontSize, 19);
    EXPECT_THAT(Ini(), Not(HasSubstr("=17")));
  });
}

TEST_F(IdeOptions, NumbersOutOfRange_BecomeTheNearest) {
  ide.Run({}, [&] {
    Show([](IdeOptForm& form) {
      TypeNumber(form.outputFont.size, "999");
      form.tabs.selectedIndex = 0;
      TypeNumber(form.tabSize, "0");
      form.tabs.selectedIndex = 2;
      TypeNumber(form.jobs, "9999");
      TypeNumber(form.letters, "3");
      test::Click(form.okButton);
    });
    EXPECT_EQ(theIdeFonts.fonts[cOutputFont].size, 72);
    EXPECT_EQ(theEditorSettings.tabSize, 1);
    EXPECT_EQ(theBuildSettings.jobs, 256);
    EXPECT_EQ(theWindowSettings.letters, 6);
  });
}

TEST_F(IdeOptions, More_WorksAtOnce_AndIsReadAgain) {
  ide.Run({}, [&] {
    Show([](IdeOptForm& form) {
      form.tabs.selectedIndex = 2;
      form.theme.Focus();
      test::Key(form, Qt::Key_End);
      TypeNumber(form.letters, "14");
      TypeNumber(form.jobs, "3");
      form.launcher.Focus();
      QTest::keyClicks(QApplication::focusWidget(), "ccache");
      form.launcherSet.Focus();
      test::Key(form, Qt::Key_Down);
      EXPECT_EQ(form.launcher.text.Get(), "");
      test::Key(form, Qt::Key_Up);
      EXPECT_EQ(form.launcher.text.Get(), "ccache");
      test::Click(form.allHeaders);
      test::Click(form.rescue);
      form.reload.Focus();
      test::Key(form, Qt::Key_Down);
      test::Click(form.okButton);
    });
    EXPECT_EQ(mavro::CurrentTheme(), mavro::Theme::cDark);
    EXPECT_LT(QApplication::palette().color(QPalette::Window).lightness(), 100);
    EXPECT_EQ(QApplication::font("QMenu").pointSize(), 14);
    EXPECT_EQ(test::WidgetOf(theMainForm->projectTree)->font().pointSize(), 14);
    EXPECT_EQ(theBuildSettings.jobs, 3);
    for (const char* line : {"theme=dark\n", "ui-font=14\n", "jobs=3\n", "launcher0=ccache\n",
                             "all-headers=1\n", "rescue=0\n", "reload=load\n"})
      EXPECT_THAT(Ini(), HasSubstr(line));
  });
  ide.Run({}, [&] {
    EXPECT_EQ(mavro::CurrentTheme(), mavro::Theme::cDark);
    EXPECT_FALSE(theWindowSettings.rescue);
    EXPECT_EQ(theWindowSettings.reload, WindowSettings::cLoadIfNothingIsLost);
    Show([](IdeOptForm& form) {
      form.theme.selectedIndex = 0;
      form.letters.value = 0;
      test::Click(form.okButton);
    });
    EXPECT_EQ(mavro::CurrentTheme(), mavro::Theme::cSystem);
    EXPECT_THAT(Ini(), HasSubstr("theme=system\n"));
  });
}

TEST_F(IdeOptions, WithoutRescue_NoCopyIsWritten) {
  const auto copies = [&] {
    int count = 0;
    for (const auto& file : std::filesystem::directory_iterator(ide.home.Folder(".zendry/rescue")))
      count += file.path().filename().string().starts_with("text");
    return count;
  };
  ide.Run({ide.files.Write("a.cpp", "text\n")}, [&] {
    CppEditor& editor = *theMainForm->editTabs.Active()->editor;
    theWindowSettings.rescue = false;
    ApplyLook();
    editor.Send(mavro::SCI_INSERTTEXT, 0, std::string(300, 'x').c_str());
    EXPECT_TRUE(test::WaitFor([&] { return editor.dirty; }));
    editor.TickRescue(TextRescue::Clock::now() + std::chrono::hours(1));
    EXPECT_EQ(copies(), 0);
    EXPECT_EQ(editor.WhyNoRescue(), "") << "it is the user's choice";
    theWindowSettings.rescue = true;
    ApplyLook();
    editor.Send(mavro::SCI_INSERTTEXT, 0, std::string(300, 'y').c_str());
    EXPECT_TRUE(test::WaitFor([&] { return copies() == 1; }));
    theWindowSettings.rescue = false;
    ApplyLook();
    EXPECT_EQ(copies(), 0);
    ide.dialogs.answers = {mavro::Answer::cNo};
  });
}

TEST_F(IdeOptions, ChangedFile_IsLoadedOrLeft_AsChosen) {
  const std::string path = ide.files.Write("a.cpp", "old\n");
  ide.Run({path}, [&] {
    CppEditor& editor = *theMainForm->editTabs.Active()->editor;
    theWindowSettings.reload = WindowSettings::cLeave;
    ide.files.Write("a.cpp", "other text\n");
    theMainForm->editTabs.CheckDisk();
    EXPECT_EQ(editor.GetText(), "old\n");
    EXPECT_THAT(IdeDriver::Status(), HasSubstr("Changed by another program: "));
    theWindowSettings.reload = WindowSettings::cLoadIfNothingIsLost;
    ide.files.Write("a.cpp", "a third text\n");
    theMainForm->editTabs.CheckDisk();
    EXPECT_EQ(editor.GetText(), "a third text\n");
    EXPECT_THAT(ide.dialogs.texts, IsEmpty());
    editor.Send(mavro::SCI_INSERTTEXT, 0, "mine");
    ide.files.Write("a.cpp", "a fourth, longer text\n");
    ide.dialogs.answers = {mavro::Answer::cNo};
    theMainForm->editTabs.CheckDisk();
    EXPECT_EQ(ide.dialogs.texts.size(), 1u) << "something would be lost";
    EXPECT_EQ(editor.GetText(), "minea third text\n");
    ide.dialogs.answers = {mavro::Answer::cNo};
  });
}

TEST_F(IdeOptions, Looks) {
  for (const bool isDark : {false, true}) {
    ide.Run({}, [&] {
      if (isDark) mavro::SetTheme(mavro::Theme::cDark);
      Show([&](IdeOptForm& form) {
        for (int page = 0; page < 3; ++page) {
          form.tabs.selectedIndex = page;
          EXPECT_THAT(test::UnreadableCaptions(form), IsEmpty());
          test::Shot(form, "ide-options-" + std::to_string(page) + (isDark ? "-dark" : ""));
        }
        form.Close();
      });
      mavro::SetTheme(mavro::Theme::cSystem);
    });
  }
}

}  // namespace
}  // namespace zendry
