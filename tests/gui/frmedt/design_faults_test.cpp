#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "DesignSessionFixture.h"
#include "FileFaults.h"
#include "NextDialog.h"

// The designer while something goes wrong around it: nothing is lost unseen, nothing is
// overwritten.

namespace zendry {
namespace {

using test::IdeDriver;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class DesignFaults : public test::DesignSessionFixture {
 protected:
  static const std::string& Moved() {
    static const std::string text = Replaced(cDialogForm, "(40, 40,", "(41, 40,");
    return text;
  }
  // Moves the button and tries to save; the window must stay. The user gives up then.
  void ExpectRefused(DesignFrame& frame, const std::string& words) {
    ide.dialogs.texts.clear();
    MoveButton(frame);
    frame.Command(cSaveAndCloseCommand);
    EXPECT_TRUE(frame.IsOnScreen());
    EXPECT_THAT(ide.dialogs.texts, Contains(HasSubstr(words)));
    ide.dialogs.answers = {mavro::Answer::cNo};
    frame.Close();
  }
  // Opens the designer, which has to write a statement that will not come back, and answers.
  void SaveWhatIsChanged(mavro::Button LossDlg::*choice, std::vector<std::string>& rows) {
    Design([&](DesignFrame& frame) {
      frame.editor.FindControl("button1")->props.push_back({nullptr, "Foo(1)"});
      test::OnNextDialog(frame, [&](mavro::Form& form) {
        auto* dialog = dynamic_cast<LossDlg*>(&form);
        ASSERT_TRUE(dialog) << form.text;
        rows = IdeDriver::Rows(dialog->list);
        test::Click(dialog->*choice);
      });
      frame.Command(cSaveAndCloseCommand);
      if (choice != &LossDlg::cancel) return;
      EXPECT_TRUE(frame.IsOnScreen());
      ide.dialogs.answers = {mavro::Answer::cNo};
      frame.Close();
    });
  }
};

TEST_F(DesignFaults, AFullDisk_AtTheSaveAfterwards_KeepsTheWork) {
  ide.Run({}, [&] {
    Open("dlg.h", cDialogForm);
    Design([](DesignFrame& frame) {
      MoveButton(frame);
      frame.Command(cSaveAndCloseCommand);
    });
    {
      const test::FileFaults faults(1, ENOSPC, test::FileFaults::Extent::cAllFrom);
      EXPECT_FALSE(Tabs().SaveActive(EditTabs::SaveName::cOwn));
      EXPECT_TRUE(faults.hit);
    }
    EXPECT_THAT(ide.dialogs.texts, Contains(HasSubstr("Error on save file")));
    EXPECT_TRUE(Front().dirty);
    EXPECT_EQ(Front().GetText(), Moved());
    EXPECT_EQ(ide.files.Read("dlg.h"), cDialogForm);
    EXPECT_TRUE(Tabs().SaveActive(EditTabs::SaveName::cOwn));
    EXPECT_EQ(ide.files.Read("dlg.h"), Moved());
  });
}

TEST_F(DesignFaults, TheProjectClosedMeanwhile_LosesNothing) {
  ide.Run({ide.Project({{"dlg.h", cDialogForm}})}, [&] {
    Tabs().OpenFile(ide.files.Path("dlg.h"));
    Design([&](DesignFrame& frame) {
      MoveButton(frame);
      theFileActs.CloseProject();
      EXPECT_FALSE(theProject.isOpen);
      EXPECT_EQ(Tabs().TabCount(), 0);
      frame.Command(cSaveAndCloseCommand);
    });
    ASSERT_EQ(Tabs().TabCount(), 1) << "the file is opened again";
    EXPECT_EQ(Front().GetText(), Moved());
    EXPECT_TRUE(Front().dirty);
  });
}

TEST_F(DesignFaults, ATextLockedMeanwhile_RefusesTheSave) {
  ide.Run({}, [&] {
    Open("dlg.h", cDialogForm);
    Design([&](DesignFrame& frame) {
      Front().Send(mavro::SCI_SETREADONLY, 1);
      ExpectRefused(frame, "Read only");
    });
    EXPECT_EQ(Front().GetText(), cDialogForm);
  });
}

TEST_F(DesignFaults, AFormTakenAwayByAnotherProgram_IsToldAndNothingWritten) {
  ide.Run({}, [&] {
    Open("dlg.h", cDialogForm);
    Design([&](DesignFrame& frame) {
      ide.files.Write("dlg.h", "int theirs;\n");
      ide.dialogs.answers = {mavro::Answer::cYes};
      ExpectRefused(frame, "The form is no longer in the text");
    });
    EXPECT_EQ(Front().GetText(), "int theirs;\n");
    EXPECT_EQ(ide.files.Read("dlg.h"), "int theirs;\n");
  });
}

TEST_F(DesignFaults, AFormChangedByAnotherProgram_IsReplacedOnlyAfterAQuestion) {
  const std::string theirs = Replaced(cDialogForm, "\"Go\"", "\"Theirs\"");
  ide.Run({}, [&] {
    Open("dlg.h", cDialogForm);
    Design([&](DesignFrame& frame) {
      ide.files.Write("dlg.h", theirs);
      // The file is loaded, the form isn't replaced.
      ide.dialogs.answers = {mavro::Answer::cYes, mavro::Answer::cNo};
      ExpectRefused(frame, "has been changed by another program while it was designed here");
    });
    EXPECT_EQ(Front().GetText(), theirs);
    EXPECT_EQ(ide.files.Read("dlg.h"), theirs);
  });
}

TEST_F(DesignFaults, AFileGoneMeanwhile_IsWrittenIntoItsTextOnly) {
  ide.Run({}, [&] {
    Open("dlg.h", cDialogForm);
    Design([&](DesignFrame& frame) {
      MoveButton(frame);
      std::filesystem::remove(ide.files.Path("dlg.h"));
      frame.Command(cSaveAndCloseCommand);
      if (!frame.IsOnScreen()) return;
      ide.dialogs.answers = {mavro::Answer::cNo};
      frame.Close();
    });
    EXPECT_EQ(Front().GetText(), Moved());
    EXPECT_FALSE(ide.files.Exists("dlg.h"));
  });
}

TEST_F(DesignFaults, WhatWillNotComeBack_IsListedBeforeItIsWritten_AndKept) {
  ide.Run({}, [&] {
    Open("dlg.h", cDialogForm);
    std::vector<std::string> rows;
    SaveWhatIsChanged(&LossDlg::keep, rows);
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_THAT(rows[0], HasSubstr("button1.Foo(1);"));
    const std::string text = Front().GetText();
    EXPECT_GT(text.find("button1.Foo(1);"), text.rfind("//!end")) << text;
  });
}

TEST_F(DesignFaults, WhatWillNotComeBack_IsWrittenAfterGoOn) {
  ide.Run({}, [&] {
    Open("dlg.h", cDialogForm);
    std::vector<std::string> rows;
    SaveWhatIsChanged(&LossDlg::goOn, rows);
    const std::string text = Front().GetText();
    EXPECT_LT(text.find("button1.Foo(1);"), text.rfind("//!end")) << text;
  });
}

TEST_F(DesignFaults, WhatWillNotComeBack_CancelLeavesEveryByte) {
  ide.Run({}, [&] {
    Open("dlg.h", cDialogForm);
    std::vector<std::string> rows;
    SaveWhatIsChanged(&LossDlg::cancel, rows);
    EXPECT_EQ(rows.size(), 1u);
    EXPECT_EQ(Front().GetText(), cDialogForm);
  });
}

TEST_F(DesignFaults, AnUnknownClass_IsToldAndItsStatementsAreKept) {
  const std::string gizmo =
      "\t\t//!<Gizmo>\n\t\tgizmo1.SetBounds(1, 2, 3, 4);\n\t\tgizmo1.spin = 7;\n"
      "\t\tgizmo1.onSpin.Add_H(this, &This::Spun);\n\t\tthis->Add(&gizmo1);\n";
  std::string text =
      Replaced(cDialogForm, "\tButton button1;\n", "\tButton button1;\n\tGizmo gizmo1;\n");
  text = Replaced(text, "\t\tthis->Add(&button1);\n", "\t\tthis->Add(&button1);\n" + gizmo);
  ide.Run({}, [&] {
    Open("dlg.h", text);
    Design([](DesignFrame& frame) {
      MoveButton(frame);
      frame.Command(cSaveAndCloseCommand);
    });
    EXPECT_THAT(ide.dialogs.texts, Contains(HasSubstr("gizmo1")));
    EXPECT_TRUE(HasText(gizmo)) << Front().GetText();
    EXPECT_TRUE(HasText("button1.SetBounds(41, 40, 80, 24);"));
  });
}

TEST_F(DesignFaults, AHandlerThatDoesNotExist_StaysBound) {
  const std::string bound = "button1.onClick.Add_H(this, &This::Nowhere);\n";
  ide.Run({}, [&] {
    Open("dlg.h", Replaced(cDialogForm, "\t\tthis->Add(&button1);\n",
                           "\t\t" + bound + "\t\tthis->Add(&button1);\n"));
    Design([](DesignFrame& frame) {
      MoveButton(frame);
      frame.Command(cSaveAndCloseCommand);
    });
    EXPECT_TRUE(HasText(bound)) << Front().GetText();
    EXPECT_TRUE(HasText("(41, 40,"));
  });
}

TEST_F(DesignFaults, AHandler_OfAClassWithoutAPrivatePart_IsAdded) {
  const std::string text = Replaced(cDialogForm, "private:\n", "");
  ide.Run({ide.Project({{"dlg.h", text}})}, [&] {
    Tabs().OpenFile(ide.files.Path("dlg.h"));
    Design([](DesignFrame& frame) {
      frame.editor.FindControl("button1")->events.push_back({"onClick", "Button1DoOnClick"});
      frame.RequestHandler("Dlg", "Button1DoOnClick", "NotifyArgs");
    });
    EXPECT_TRUE(HasText("button1.onClick.Add_H(this, &This::Button1DoOnClick);"));
    EXPECT_TRUE(HasText("void Button1DoOnClick(NotifyArgs &e)")) << Front().GetText();
  });
}

TEST_F(DesignFaults, AClassMadeByAMacro_IsRefusedWithAWord) {
  const std::string text =
      Replaced(Replaced(cDialogForm, "#include<mavro>\n",
                        "#include<mavro>\n#define DIALOG(name) class name: public Form\n"),
               "\nclass Dlg: public Form\n", "\nDIALOG(Dlg)\n");
  ide.Run({}, [&] {
    Open("dlg.h", text);
    IdeDriver::Press(Qt::Key_F11);
    EXPECT_THAT(ide.dialogs.texts, Not(IsEmpty()));
    EXPECT_EQ(theDesignFrame, nullptr);
    EXPECT_EQ(Front().GetText(), text);
  });
}

TEST_F(DesignFaults, TheMainWindow_DoesNotCloseUnderTheDesigner) {
  ide.Run({}, [&] {
    Open("dlg.h", cDialogForm);
    Design([&](DesignFrame& frame) {
      MoveButton(frame);
      test::WidgetOf(*theMainForm)->close();
      ASSERT_TRUE(theMainForm->impl->hwnd);
      ASSERT_TRUE(frame.IsOnScreen());
      frame.Command(cSaveAndCloseCommand);
    });
    EXPECT_EQ(Front().GetText(), Moved());
  });
}

TEST_F(DesignFaults, TheMainWindow_DoesNotCloseUnderTheListOfLosses) {
  const std::string text =
      Replaced(cDialogForm, "\t\tthis->Add(&button1);\n", "\t\tthis->Add(&button1);\n\t\tx();\n");
  ide.Run({}, [&] {
    Open("dlg.h", text);
    ide.OnDialog([&](mavro::Form& form) {
      ASSERT_TRUE(dynamic_cast<LossDlg*>(&form)) << form.text;
      test::WidgetOf(*theMainForm)->close();
      EXPECT_TRUE(form.IsOnScreen());
      test::Key(form, Qt::Key_Escape);
    });
    IdeDriver::Press(Qt::Key_F11);
    ASSERT_TRUE(theMainForm->impl->hwnd);
    EXPECT_EQ(Front().GetText(), text);
  });
}

}  // namespace
}  // namespace zendry
