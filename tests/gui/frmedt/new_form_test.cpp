#include "frmedt/NewForm.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "DarkPalette.h"
#include "EditorFixture.h"
#include "Looks.h"
#include "frame/ToolActs.h"
#include "frmedt/FormCheck.h"
#include "frmedt/NewFormDlg.h"

// The class of a new form, by the key of its command.

namespace zendry {
namespace {

using test::IdeDriver;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class IdeNewForm : public test::EditorFixture {
 protected:
  // Presses the command's key and runs the script with its dialog.
  void Ask(const std::function<void(NewFormDlg&)>& script) {
    ide.OnDialog([=](mavro::Form& form) {
      auto* dialog = dynamic_cast<NewFormDlg*>(&form);
      ASSERT_TRUE(dialog);
      script(*dialog);
    });
    test::WidgetOf(*theMainForm)->activateWindow();
    ASSERT_TRUE(test::WaitFor([] { return mavro::activeForm == theMainForm; }));
    IdeDriver::Press(Qt::Key_F11, Qt::ShiftModifier);
  }
  std::string InFile(const std::string& name) { return ide.files.Read(name); }
};

constexpr char cCompact[] =
    "class Dlg: public Form\n{\n\ttypedef Dlg This;\npublic:\n\t//!decl\n\t//!end\n\tDlg() {\n"
    "\t\tInitialize();\n\t}\nprivate:\n\tvoid Initialize() {\n\t\t//!init\n\t\t//!end\n\t}\n};\n\n";

TEST_F(IdeNewForm, CurrentFile_GetsTheClassAtTheCaret_InOneStep) {
  ide.Run({ide.Project({{"a.h", "int first;\nint second;\n"}})}, [&] {
    CppEditor& editor = *Tabs().OpenFile(ide.files.Path("a.h"));
    editor.ShowLine(2);
    Ask([](NewFormDlg& dialog) {
      EXPECT_EQ(dialog.text, "New Dialog");
      EXPECT_TRUE(dialog.IsForCurrentFile());
      EXPECT_FALSE(dialog.fileEdit.enabled);
      Type("Dlg");
      test::Key(dialog, Qt::Key_Return);
    });
    EXPECT_EQ(editor.GetText(), std::string("int first;\n") + cCompact + "int second;\n");
    editor.Send(mavro::SCI_UNDO);
    EXPECT_EQ(editor.GetText(), "int first;\nint second;\n");
  });
}

TEST_F(IdeNewForm, LineEnds_AreThoseOfTheText) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.h", "int a;\r\n");
    Ask([](NewFormDlg& dialog) {
      Type("Dlg");
      test::Key(dialog, Qt::Key_Return);
    });
    const std::string text = editor.GetText();
    EXPECT_THAT(text, HasSubstr("\t//!decl\r\n"));
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'),
              std::count(text.begin(), text.end(), '\r'));
  });
}

struct BlockCase {
  int blockLine, caretLine, wantedLine;  // from 1
};

TEST_F(IdeNewForm, JustInsideABlock_TheClassGoesAboveIt) {
  // The block's line, the caret's, and the line that the class begins at.
  const BlockCase cases[] = {{6, 8, 5}, {5, 7, 7}, {6, 15, 5}, {6, 16, 16}};
  ide.Run({}, [&] {
    for (const BlockCase& one : cases) {
      std::string text;
      for (int line = 1; line < one.blockLine; ++line)
        text += "int v" + std::to_string(line) + ";\n";
      text += "void f() {\n";
      for (int line = 0; line < 20; ++line) text += "  g();\n";
      text += "}\n";
      const std::string name = "b" + std::to_string(one.blockLine * 100 + one.caretLine) + ".cpp";
      CppEditor& editor = Open(name, text);
      editor.Send(mavro::SCI_COLOURISE, 0, -1);
      editor.ShowLine(one.caretLine);
      Ask([](NewFormDlg& dialog) {
        Type("Dlg");
        test::Key(dialog, Qt::Key_Return);
      });
      EXPECT_THAT(editor.LineText(one.wantedLine - 1), HasSubstr("class Dlg"))
          << one.blockLine << " " << one.caretLine;
    }
  });
}

TEST_F(IdeNewForm, NewFile_IsWrittenAddedAndShown) {
  ide.Run({ide.Project({{"a.cpp", "int a;\n"}})}, [&] {
    Ask([](NewFormDlg& dialog) {
      EXPECT_EQ(dialog.placeGroup.items.GetCount(), 1) << "no file is open";
      EXPECT_TRUE(dialog.fileEdit.enabled);
      Type("Dlg");
      test::Key(dialog, Qt::Key_Tab);
      Type("dialogs");
      test::Key(dialog, Qt::Key_Return);
    });
    EXPECT_EQ(InFile("dialogs.h"), std::string("#pragma once\n#include<mavro>\n\n\n") + cCompact);
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("dialogs.h"));
    EXPECT_THAT(IdeDriver::Tree(), HasSubstr("dialogs.h"));
    EXPECT_TRUE(theProject.modified);
    EXPECT_TRUE(theProject.ModuleOf(ide.files.Path("dialogs.h")).classes.contains("Dlg"));
  });
}

TEST_F(IdeNewForm, AnExistingFile_IsReplacedOnlyAfterAQuestion) {
  ide.Run({ide.Project({{"a.h", "int kept;\n"}})}, [&] {
    const auto fill = [](NewFormDlg& dialog) {
      Type("Dlg");
      test::Key(dialog, Qt::Key_Tab);
      Type("a");
      test::Key(dialog, Qt::Key_Return);
    };
    ide.dialogs.answers = {mavro::Answer::cNo};
    Ask(fill);
    EXPECT_EQ(InFile("a.h"), "int kept;\n");
    ide.dialogs.answers = {mavro::Answer::cYes};
    Ask(fill);
    EXPECT_THAT(InFile("a.h"), HasSubstr("class Dlg"));
    EXPECT_EQ(ide.dialogs.texts.size(), 2u);
  });
}

TEST_F(IdeNewForm, MissingNames_KeepTheDialogOpen) {
  ide.Run({ide.Project({{"a.cpp", "int a;\n"}})}, [&] {
    Ask([&](NewFormDlg& dialog) {
      for (const char* wrong : {"", "two words"}) {
        dialog.classEdit.text = wrong;
        test::Key(dialog, Qt::Key_Return);
        ASSERT_TRUE(dialog.impl->hwnd) << wrong;
      }
      dialog.classEdit.text = "Dlg";
      test::Key(dialog, Qt::Key_Return);
      ASSERT_TRUE(dialog.impl->hwnd) << "no file name";
      EXPECT_TRUE(dialog.fileEdit.IsFocused());
      test::Key(dialog, Qt::Key_Escape);
    });
    EXPECT_THAT(ide.dialogs.texts, ElementsAre("Information: Enter the class name",
                                               "Information: The class name must be a C++ name",
                                               "Information: Enter the file name"));
    EXPECT_THAT(IdeDriver::Captions(), IsEmpty());
  });
}

TEST_F(IdeNewForm, FileName_IsAskedForInANewFileOnly) {
  ide.Run({}, [&] {
    Open("a.h", "int a;\n");
    Ask([&](NewFormDlg& dialog) {
      QWidget* group = test::WidgetOf(dialog.placeGroup);
      group->setFocus();
      EXPECT_FALSE(dialog.fileLabel.enabled);
      dialog.placeGroup.itemIndex = 1;
      for (auto* button : group->findChildren<QAbstractButton*>())
        if (button->text() == "Create in a new file") button->click();
      EXPECT_TRUE(dialog.fileEdit.enabled);
      EXPECT_TRUE(dialog.fileLabel.enabled);
      test::Key(dialog, Qt::Key_Escape);
    });
  });
}

TEST_F(IdeNewForm, AReadOnlyText_IsLeftAlone) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.h", "int a;\n");
    editor.SetReadOnly(true);
    Ask([](NewFormDlg& dialog) {
      Type("Dlg");
      test::Key(dialog, Qt::Key_Return);
    });
    EXPECT_EQ(editor.GetText(), "int a;\n");
    EXPECT_THAT(IdeDriver::Status(), HasSubstr("Read only"));
  });
}

TEST_F(IdeNewForm, WhatItWrites_IsAFormThatComesBackWhole) {
  ide.Run({ide.Project({{"a.cpp", "int a;\n"}})}, [&] {
    Ask([](NewFormDlg& dialog) {
      dialog.classEdit.text = "Dlg";
      dialog.fileEdit.text = "made";
      test::Key(dialog, Qt::Key_Return);
    });
    FormLocator locator;
    locator.Scan(std::make_shared<FormText>(ide.files.Path("made.h"), InFile("made.h")));
    ASSERT_EQ(locator.targets.size(), 1u);
    EXPECT_EQ(locator.targets[0].className, "Dlg");
    EXPECT_THAT(CheckForm(locator.targets[0]), IsEmpty());
  });
}

class NewFormLook : public testing::TestWithParam<bool> {};

INSTANTIATE_TEST_SUITE_P(Looks, NewFormLook, testing::Bool(),
                         [](const auto& look) { return look.param ? "dark" : "light"; });

TEST_P(NewFormLook, EverythingCanBeRead) {
  const QPalette before = QApplication::palette();
  if (GetParam()) QApplication::setPalette(test::DarkPalette());
  for (const bool hasFile : {false, true}) {
    NewFormDlg dialog(hasFile);
    test::RunForm(dialog, true, [&] {
      EXPECT_THAT(test::UnreadableCaptions(dialog), IsEmpty());
      test::Shot(dialog,
                 std::string("new-form") + (hasFile ? "" : "-alone") + (GetParam() ? "-dark" : ""));
    });
  }
  QApplication::setPalette(before);
}

}  // namespace
}  // namespace zendry
