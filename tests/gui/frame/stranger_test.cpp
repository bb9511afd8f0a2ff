#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "IdeDriver.h"
#include "frame/PrjOptionsDlg.h"

// Projects of others: what they could start by themselves is asked about before a build.

namespace zendry {
namespace {

using test::IdeDriver;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class IdeStranger : public testing::Test {
 protected:
  static void ShowOptions(const std::function<void(PrjOptionsDlg&)>& script, IdeDriver& ide) {
    ide.OnDialog([&](mavro::Form& form) { script(dynamic_cast<PrjOptionsDlg&>(form)); });
    thePrjActs.OnCommand(cProjectOptionsCommand);
  }
  // A project that has a script of its own run in front of the compiler.
  std::string Project(const std::string& switches = "-O2 -wrapper ./w") {
    const std::string script = ide.files.Write("w", "#!/bin/sh\ntouch ran\nexec \"$@\"\n");
    chmod(script.c_str(), 0755);
    const std::string path = ide.Project({{"a.cpp", "int main() { return 0; }\n"}});
    std::string text = ide.files.Read("p.zpj");
    text.replace(text.find("-O2"), 3, switches);
    ide.files.Write("p.zpj", text);
    return path;
  }
  bool HasRun() { return ide.files.Exists("ran"); }

  IdeDriver ide;
};

TEST_F(IdeStranger, Build_AsksWithTheList_AndNoRunsNothing) {
  ide.Run({Project()}, [&] {
    EXPECT_THAT(ide.dialogs.texts, IsEmpty()) << "opening starts nothing";
    IdeDriver::Press(Qt::Key_F7);
    EXPECT_THAT(ide.dialogs.texts, ElementsAre(AllOf(HasSubstr(ide.files.Path("p.zpj")),
                                                     HasSubstr("Relase, Compile:  -wrapper ./w\n"),
                                                     HasSubstr("Build anyway?"))));
    EXPECT_TRUE(ide.dialogs.flags.back() & mavro::cDefaultNo);
    EXPECT_FALSE(HasRun());
    EXPECT_FALSE(ide.files.Exists("out-rel"));
    EXPECT_EQ(IdeDriver::Status(), "Nothing is run, as you wished");
  });
}

TEST_F(IdeStranger, Run_AfterANo_StartsNothing) {
  const std::string project = Project();
  const std::string program = ide.files.Write("out-dbg/p.exe", "#!/bin/sh\ntouch ran\n");
  chmod(program.c_str(), 0755);
  ide.Run({project}, [&] {
    theProject.SetMode(cDebug);
    theDebugger.OnCommand(cRunPlainCommand);
    theDebugger.OnCommand(cRunCommand);
    theDebugger.OnCommand(cStepIntoCommand);
    theMainForm->editTabs.OpenFile(ide.files.Path("a.cpp"));
    theDebugger.OnCommand(cRunToCursorCommand);
    EXPECT_THAT(ide.dialogs.texts, SizeIs(4));
    EXPECT_THAT(ide.dialogs.texts, testing::Each(HasSubstr("Build anyway?")));
    EXPECT_EQ(theDebugger.State(), DebugState::cNotRunning);
  });
  EXPECT_FALSE(HasRun());
}

TEST_F(IdeStranger, Yes_IsRemembered_UntilTheSwitchesChange) {
  ide.Run({Project()}, [&] {
    ide.dialogs.answers = {mavro::Answer::cYes};
    IdeDriver::Press(Qt::Key_F7);
    EXPECT_TRUE(HasRun());
    EXPECT_TRUE(ide.files.Exists("out-rel/p.exe"));
    IdeDriver::Press(Qt::Key_F7, Qt::ShiftModifier);
    EXPECT_THAT(ide.dialogs.texts, SizeIs(1));
  });
  ide.Run({ide.files.Path("p.zpj")}, [&] {
    IdeDriver::Press(Qt::Key_F7, Qt::ShiftModifier);
    EXPECT_THAT(ide.dialogs.texts, SizeIs(1));
  });
  ide.Run({Project("-O2 -wrapper ./w -fplugin=./x.so")}, [&] {
    IdeDriver::Press(Qt::Key_F7);
    ASSERT_THAT(ide.dialogs.texts, SizeIs(2));
    EXPECT_THAT(ide.dialogs.texts.back(), HasSubstr("-fplugin=./x.so"));
    EXPECT_THAT(ide.dialogs.texts.back(), testing::Not(HasSubstr("-wrapper"))) << "known";
  });
}

TEST_F(IdeStranger, SwitchOfTheUser_IsNotAskedAbout) {
  ide.Run({Project("-O2")}, [&] {
    ShowOptions(
        [](PrjOptionsDlg& dialog) {
          dialog.release.compile.text = "-O2 -wrapper ./w";
          test::Click(dialog.okButton);
        },
        ide);
    theBuildActs.OnCommand(cMakeCommand);
    EXPECT_THAT(ide.dialogs.texts, IsEmpty());
    EXPECT_TRUE(HasRun());
  });
}

TEST_F(IdeStranger, DialogOverAStrangersSwitch_DoesNotTrustIt) {
  ide.Run({Project()}, [&] {
    ShowOptions(
        [](PrjOptionsDlg& dialog) {
          dialog.libs.text = "-lm";
          test::Click(dialog.okButton);
        },
        ide);
    theBuildActs.OnCommand(cMakeCommand);
    EXPECT_THAT(ide.dialogs.texts, SizeIs(1));
    EXPECT_FALSE(HasRun());
  });
}

TEST_F(IdeStranger, FileOfOptions_IsAskedAboutAgain_WhenItsTextIsAnother) {
  ide.files.Write("flags", "-DX=1\n");
  ide.Run({Project("-O2 @flags")}, [&] {
    ide.dialogs.answers = {mavro::Answer::cYes};
    IdeDriver::Press(Qt::Key_F7);
    IdeDriver::Press(Qt::Key_F7, Qt::ShiftModifier);
    EXPECT_THAT(ide.dialogs.texts, SizeIs(1));
    ide.files.Write("flags", "-wrapper ./w\n");
    IdeDriver::Press(Qt::Key_F7, Qt::ShiftModifier);
    EXPECT_THAT(ide.dialogs.texts, SizeIs(2));
    EXPECT_FALSE(HasRun());
  });
}

}  // namespace
}  // namespace zendry
