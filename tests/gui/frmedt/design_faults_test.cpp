#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "DesignSessionFixture.h"
#include "FileFaults.h"
#include "NextDialog.h"
#include "Privileges.h"
#include "frmedt/EventDlg.h"
#include "frmedt/FontPropDlg.h"

// The designer while something goes wrong around it: nothing is lost unseen, nothing is
// overwritten.

namespace zendry {
namespace {

using test::IdeDriver;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class DesignFaults : public test::DesignSessionFixture {
 protected:
  // A user without rights may look into the folder.
  DesignFaults() { chmod(ide.files.Path().c_str(), 0755); }

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
  // Opens a dialog of the designer, and tells the main window to close under it.
  template <class Dialog>
  static void CloseMainWindowUnder(DesignFrame& frame, const std::function<void()>& open) {
    bool isOpened = false;
    test::OnNextDialog(frame, [&](mavro::Form& form) {
      EXPECT_TRUE(dynamic_cast<Dialog*>(&form)) << form.text;
      isOpened = true;
      test::WidgetOf(*theMainForm)->close();
      EXPECT_TRUE(theMainForm->impl->hwnd);
      EXPECT_TRUE(form.IsOnScreen());
      EXPECT_EQ(mavro::activeForm, &form);
      test::Key(form, Qt::Key_Escape);
    });
    open();
    EXPECT_TRUE(isOpened);
    EXPECT_TRUE(frame.IsOnScreen());
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

// The text can be unlocked, designed and undone. Only the save is refused, by the disk.
TEST_F(DesignFaults, AFileThatMayNotBeWritten_IsRefusedUntilItsTextIsUnlocked) {
  const std::string path = ide.files.Write("dlg.h", cDialogForm);
  ASSERT_EQ(chmod(path.c_str(), 0444), 0);
  ide.Run({}, [&] {
    const test::WithoutRights user;
    Tabs().OpenFile(path);
    IdeDriver::Press(Qt::Key_F11);
    EXPECT_THAT(ide.dialogs.texts, ElementsAre(HasSubstr("you may not write this file")));
    EXPECT_EQ(theDesignFrame, nullptr);
    Front().OnCommand(mavro::cSciReadOnly);
    Design([](DesignFrame& frame) {
      MoveButton(frame);
      frame.Command(cSaveAndCloseCommand);
    });
    EXPECT_EQ(Front().GetText(), Moved());
    EXPECT_FALSE(Tabs().SaveActive(EditTabs::SaveName::cOwn));
    EXPECT_TRUE(Front().dirty);
    EXPECT_EQ(Front().GetText(), Moved());
    EXPECT_EQ(ide.files.Read("dlg.h"), cDialogForm);
    Front().Send(mavro::SCI_UNDO);
    EXPECT_EQ(Front().GetText(), cDialogForm);
    EXPECT_FALSE(Front().dirty);
  });
}

TEST_F(DesignFaults, AFileThatMayNoLongerBeWritten_RefusesTheSave) {
  ide.Run({}, [&] {
    Open("dlg.h", cDialogForm);
    Design([&](DesignFrame& frame) {
      ASSERT_EQ(chmod(ide.files.Path("dlg.h").c_str(), 0444), 0);
      const test::WithoutRights user;
      ExpectRefused(frame, "you may not write this file");
    });
    EXPECT_EQ(Front().GetText(), cDialogForm);
    EXPECT_EQ(ide.files.Read("dlg.h"), cDialogForm);
  });
}

TEST_F(DesignFaults, ASourceOfMoreThan64MB_IsRefusedWithAWord) {
  const std::string line = "// " + std::string(4000, '-') + "\n";
  std::string text = cDialogForm;
  while (text.size() <= size_t{64} << 20) text += line;
  const std::string path = ide.files.Write("dlg.h", text);
  ide.Run({}, [&] {
    ASSERT_TRUE(Tabs().OpenFile(path));
    ASSERT_TRUE(Front().IsHuge());
    ide.dialogs.texts.clear();
    IdeDriver::Press(Qt::Key_F11);
    EXPECT_THAT(ide.dialogs.texts, ElementsAre(HasSubstr("more than 64 MB")));
    EXPECT_EQ(theDesignFrame, nullptr);
    EXPECT_FALSE(Front().dirty);
  });
}

// The surface loads no pictures: their statements are the user's own, and are listed.
TEST_F(DesignFaults, APictureThatIsNotThere_IsListedAndKeptToTheByte) {
  const std::string load = "\t\tbutton1.picture.Load(\"nowhere.png\");\n";
  ide.Run({}, [&] {
    Open("dlg.h", Replaced(Replaced(Replaced(cDialogForm, "Button button1", "Image button1"),
                                    "<Button>", "<Image>"),
                           "\t\tbutton1.text = \"Go\";\n", load));
    std::vector<std::string> rows;
    DesignAfter(&LossDlg::keep, rows, [](DesignFrame& frame) {
      MoveButton(frame);
      frame.Command(cSaveAndCloseCommand);
    });
    EXPECT_THAT(rows, ElementsAre(HasSubstr("button1.picture.Load(\"nowhere.png\");")));
    const std::string text = Front().GetText();
    EXPECT_THAT(text, HasSubstr("(41, 40,"));
    EXPECT_THAT(text, HasSubstr("\t\t//!end\n" + load));
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

TEST_F(DesignFaults, TheMainWindow_DoesNotCloseUnderTheDialogsOfTheDesigner) {
  ide.Run({}, [&] {
    Open("dlg.h", cDialogForm);
    Design([&](DesignFrame& frame) {
      MoveButton(frame);
      CloseMainWindowUnder<EventDlg>(frame, [&] {
        frame.pages.selectedIndex = 2;
        frame.eventBox.box.FocusRow(0);
        test::Key(frame, Qt::Key_Space);
      });
      CloseMainWindowUnder<FontPropDlg>(frame, [&] {
        frame.pages.selectedIndex = 1;
        mavro::PropertyBox& box = frame.propBox.box;
        int row = 0;
        while (row < box.Count() && box.Item(row).title.text != "font") ++row;
        ASSERT_LT(row, box.Count());
        box.FocusRow(row);
        test::Key(frame, Qt::Key_Space);
      });
      frame.Command(cSaveAndCloseCommand);
    });
    EXPECT_THAT(ide.dialogs.texts, IsEmpty());
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
