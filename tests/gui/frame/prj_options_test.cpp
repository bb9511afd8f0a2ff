#include "frame/PrjOptionsDlg.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "DarkPalette.h"
#include "IdeDriver.h"
#include "Looks.h"

// The dialog of the project's options, and what its values do.

namespace zendry {
namespace {

using test::IdeDriver;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class IdePrjOptions : public testing::Test {
 protected:
  IdePrjOptions() { Forget(); }
  ~IdePrjOptions() override { Forget(); }
  // A load replaces these; what a test leaves is not for others.
  static void Forget() {
    theProject.outName.clear();
    theProject.libSet.clear();
    theProject.linkLibs.clear();
  }
  // Opens the dialog by its command and calls `script` with it.
  void Show(const std::function<void(PrjOptionsDlg&)>& script) {
    ide.OnDialog([&](mavro::Form& form) { script(dynamic_cast<PrjOptionsDlg&>(form)); });
    thePrjActs.OnCommand(cProjectOptionsCommand);
  }
  static void Type(mavro::Control& field, const char* text) {
    field.Focus();
    test::Key(*field.GetForm(), Qt::Key_End);
    QTest::keyClicks(QApplication::focusWidget(), text);
  }
  std::string File() { return ide.files.Read("p.zpj"); }
  std::string Project() { return ide.Project({{"a.cpp", "int main() { return 0; }\n"}}); }

  IdeDriver ide;
};

TEST_F(IdePrjOptions, Fields_ShowTheProject) {
  theIdeConfig.toolSets = {{{"one", "", ""}, {"two", "", ""}, {"", "", ""}}};
  PrjOptionsDlg empty(theProject);
  EXPECT_EQ(empty.type.items.GetCount(), 6);
  ide.Run({Project()}, [&] {
    theProject.type = cDynamicLib;
    theProject.libSet = "unknown set";
    theProject.outName = "x.so";
    theProject.debugOptions = {1, "-g -O1", "-lm"};
    Show([](PrjOptionsDlg& dialog) {
      EXPECT_EQ(dialog.width, 514);
      EXPECT_EQ(dialog.height, 295);
      EXPECT_TRUE(dialog.type.IsFocused());
      EXPECT_EQ(dialog.type.text.Get(), "Dynamic lib");
      EXPECT_EQ(dialog.libSet.text.Get(), "unknown set");
      EXPECT_EQ(dialog.outName.text.Get(), "x.so");
      EXPECT_EQ(dialog.include.text.Get(), "-I@/mylib");
      EXPECT_EQ(dialog.linker.text.Get(), "-L@/mylib");
      EXPECT_EQ(dialog.tabs.GetPage(2)->text.Get(), "Relase");
      EXPECT_EQ(dialog.debug.package.selectedIndex, 1);
      EXPECT_EQ(dialog.debug.compile.text.Get(), "-g -O1");
      EXPECT_EQ(dialog.release.compile.text.Get(), "-O2");
      test::Key(dialog, Qt::Key_Escape);
    });
    EXPECT_EQ(theProject.libSet, "unknown set");
  });
}

TEST_F(IdePrjOptions, Cancel_ChangesNothing) {
  const std::string path = Project();
  const std::string before = File();
  ide.Run({path}, [&] {
    Show([](PrjOptionsDlg& dialog) {
      Type(dialog.libs, "-lm");
      test::Click(dialog.cancel);
    });
    EXPECT_EQ(theProject.linkLibs, "");
    EXPECT_FALSE(theProject.modified);
  });
  EXPECT_EQ(File(), before);
}

TEST_F(IdePrjOptions, Ok_WritesTheValues) {
  ide.Run({Project()}, [&] {
    Show([](PrjOptionsDlg& dialog) {
      dialog.type.Focus();
      test::Key(dialog, Qt::Key_Down);
      Type(dialog.libSet, "mavro");
      Type(dialog.outName, "tool");
      Type(dialog.include, " -Iinc");
      Type(dialog.libs, "-lm");
      dialog.tabs.selectedIndex = 1;
      Type(dialog.debug.compile, " -Wall");
      dialog.tabs.selectedIndex = 2;
      Type(dialog.release.link, " -static");
      test::Key(dialog, Qt::Key_Return);
    });
    EXPECT_FALSE(theProject.modified);
  });
  for (const char* line :
       {"<targ id=\"1\" opt=\"mavro\"/>", "<inc value=\"-I@/mylib -Iinc\"/>",
        "<lib value=\"-lm\"/>", "<out value=\"tool\"/>", "<comp opt=\"-g -Wall\"/>",
        "<comp opt=\"-O2\"/>", "<link opt=\"-s -static\"/>"})
    EXPECT_THAT(File(), HasSubstr(line));
}

TEST_F(IdePrjOptions, Ok_OfNewSwitches_WorksAtTheNextBuild) {
  ide.Run({ide.Project({{"a.cpp", "int main() { return CODE; }\n"}})}, [&] {
    Show([](PrjOptionsDlg& dialog) {
      dialog.tabs.selectedIndex = 2;
      Type(dialog.release.compile, " -DCODE=0");
      test::Click(dialog.okButton);
    });
    theBuildActs.OnCommand(cMakeCommand);
    EXPECT_TRUE(ide.files.Exists("out-rel/p.exe"));
    EXPECT_THAT(theMainForm->output.text.Get(), HasSubstr("-DCODE=0"));
    Show([](PrjOptionsDlg& dialog) {
      dialog.type.selectedIndex = cStaticLib;
      test::Click(dialog.okButton);
    });
    EXPECT_EQ(theProject.target, "p.a");
    theBuildActs.OnCommand(cMakeCommand);
    EXPECT_TRUE(ide.files.Exists("out-rel/p.a"));
  });
}

TEST_F(IdePrjOptions, ValueThatTheFileCantHold_IsSaidAtItsField) {
  ide.Run({Project()}, [&] {
    const std::string before = File();
    Show([&](PrjOptionsDlg& dialog) {
      dialog.tabs.selectedIndex = 1;
      Type(dialog.debug.compile, " -DX=\"a b\"");
      EXPECT_THAT(dialog.note.text.Get(), HasSubstr("Debug, Compile: "));
      dialog.tabs.selectedIndex = 0;
      test::Click(dialog.okButton);
      ASSERT_TRUE(dialog.impl->hwnd) << "it stays open";
      EXPECT_EQ(dialog.tabs.selectedIndex, 1);
      EXPECT_TRUE(dialog.debug.compile.IsFocused());
      EXPECT_EQ(dialog.debug.compile.text.Get(), "-g -DX=\"a b\"");
      EXPECT_THAT(test::UnreadableCaptions(dialog), IsEmpty());
      test::Shot(dialog, "ide-project-options-refused");
      dialog.debug.compile.text = "-g -DX=\"ab\"";
      test::Click(dialog.okButton);
    });
    EXPECT_EQ(ide.dialogs.beeps, 1);
    EXPECT_NE(File(), before);
    EXPECT_EQ(theProject.debugOptions.comp, "-g -DX=\"ab\"") << "such quotes can be read again";
  });
}

TEST_F(IdePrjOptions, LongestValue_IsSaved_OneMoreIsNot) {
  ide.Run({Project()}, [&] {
    Show([](PrjOptionsDlg& dialog) {
      dialog.libs.text = std::string(509, 'l');
      test::Click(dialog.okButton);
      EXPECT_THAT(dialog.note.text.Get(), HasSubstr("509 characters of 508"));
      dialog.libs.text = std::string(508, 'l');
      test::Click(dialog.okButton);
    });
    EXPECT_THAT(File(), HasSubstr(std::string(508, 'l')));
  });
}

TEST_F(IdePrjOptions, FolderButtons_AppendASwitch) {
  ide.Run({Project()}, [&] {
    const std::string root = InstallRoot(theIdeConfig.appDir);
    ide.dialogs.folders = {root + "libs/one", "/usr/two", root.substr(0, root.size() - 1), ""};
    Show([](PrjOptionsDlg& dialog) {
      for (int i = 0; i < 4; ++i) test::Click(dialog.addInclude);
      EXPECT_EQ(dialog.include.text.Get(), "-I@/mylib -I@/libs/one -I/usr/two -I@/");
      test::Click(dialog.addLinker);
      EXPECT_EQ(dialog.linker.text.Get(), "-L@/mylib") << "cancelled";
      dialog.Close();
    });
    EXPECT_EQ(ide.dialogs.folderTitles.front(), "Ref path");
  });
}

TEST_F(IdePrjOptions, FolderWithABlank_IsSaidAtOnce) {
  ide.Run({Project()}, [&] {
    ide.dialogs.folders = {"/usr/a b"};
    Show([](PrjOptionsDlg& dialog) {
      test::Click(dialog.addLinker);
      EXPECT_THAT(dialog.note.text.Get(), HasSubstr("Linker search path: "));
      dialog.Close();
    });
  });
}

TEST_F(IdePrjOptions, LibraryButton_TakesTheNameWithoutLibAndEnding) {
  ide.Run({Project()}, [&] {
    ide.dialogs.files = {{"/x/libfoo.a"}, {"/x/bar.a"}, {}};
    Show([](PrjOptionsDlg& dialog) {
      for (int i = 0; i < 3; ++i) test::Click(dialog.addLibrary);
      EXPECT_EQ(dialog.libs.text.Get(), " -lfoo -lbar");
      dialog.Close();
    });
    ASSERT_EQ(ide.dialogs.questions.size(), 3u);
    EXPECT_EQ(ide.dialogs.questions[0].title, "Open...");
    EXPECT_EQ(ide.dialogs.questions[0].filter, "Lib files|*.a");
    EXPECT_EQ(ide.dialogs.questions[0].defaultExtension, "a");
  });
}

TEST_F(IdePrjOptions, NumbersWithoutAMeaning_StayUntilAnotherIsChosen) {
  ide.Run({Project()}, [&] {
    theProject.type = 77;
    theProject.debugOptions.gcc = -3;
    Show([](PrjOptionsDlg& dialog) {
      EXPECT_EQ(dialog.type.text.Get(), "Other");
      test::Click(dialog.okButton);
    });
    EXPECT_EQ(theProject.type, 77);
    EXPECT_EQ(theProject.debugOptions.gcc, -3);
    Show([](PrjOptionsDlg& dialog) {
      dialog.type.selectedIndex = cConsole;
      dialog.debug.package.selectedIndex = 2;
      test::Click(dialog.okButton);
    });
    EXPECT_EQ(theProject.type, cConsole);
    EXPECT_EQ(theProject.debugOptions.gcc, 2);
  });
}

TEST_F(IdePrjOptions, WithoutAProject_OkWritesNoFile) {
  ide.Run({}, [&] {
    ide.OnDialog([](mavro::Form& form) {
      auto& dialog = dynamic_cast<PrjOptionsDlg&>(form);
      dialog.libs.text = "-lm";
      test::Click(dialog.okButton);
    });
    ShowOptions(theProject);
    EXPECT_EQ(theProject.linkLibs, "-lm");
    EXPECT_FALSE(theProject.modified);
    EXPECT_THAT(ide.dialogs.questions, IsEmpty());
    theProject.linkLibs.clear();
  });
}

TEST_F(IdePrjOptions, FileThatCantBeWritten_LeavesTheProjectChanged) {
  ide.Run({Project()}, [&] {
    std::filesystem::remove(ide.files.Path("p.zpj"));
    std::filesystem::create_directory(ide.files.Path("p.zpj"));
    Show([](PrjOptionsDlg& dialog) {
      dialog.libs.text = "-lm";
      test::Click(dialog.okButton);
    });
    EXPECT_TRUE(theProject.modified);
    EXPECT_EQ(theProject.linkLibs, "-lm");
  });
}

TEST_F(IdePrjOptions, Looks) {
  for (const bool isDark : {false, true}) {
    ide.Run({Project()}, [&] {
      if (isDark) mavro::SetTheme(mavro::Theme::cDark);
      Show([&](PrjOptionsDlg& dialog) {
        for (int page = 0; page < 3; ++page) {
          dialog.tabs.selectedIndex = page;
          EXPECT_THAT(test::UnreadableCaptions(dialog), IsEmpty());
          test::Shot(dialog,
                     "ide-project-options-" + std::to_string(page) + (isDark ? "-dark" : ""));
        }
        dialog.Close();
      });
      mavro::SetTheme(mavro::Theme::cSystem);
    });
  }
}

}  // namespace
}  // namespace zendry
