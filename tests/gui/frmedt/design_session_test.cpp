#include "frmedt/DesignSession.h"

// Before the toolkit, which has a macro "emit".
#include "frmedt/CtrlReg.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "DesignSessionFixture.h"
#include "frmedt/SelectDlg.h"

// The designer on a source of the user's, from its key to the text in the editor.

namespace zendry {
namespace {

using test::IdeDriver;
using testing::HasSubstr;
using testing::Not;

class DesignSessionTest : public test::DesignSessionFixture {};

TEST_F(DesignSessionTest, UntouchedForm_ChangesNothing) {
  ide.Run({}, [&] {
    Open("dlg.h", cDialogForm);
    Design([](DesignFrame& frame) {
      EXPECT_EQ(frame.editor.FindControl("button1")->ctrl->text, "Go");
      test::Shot(frame, "designer-session");
      frame.Command(cSaveAndCloseCommand);
    });
    EXPECT_EQ(Front().GetText(), cDialogForm);
    EXPECT_FALSE(Front().dirty);
  });
}

TEST_F(DesignSessionTest, Change_IsTheOnlyDifferenceAndOneUndoStep) {
  ide.Run({}, [&] {
    Open("dlg.h", cDialogForm);
    Design([](DesignFrame& frame) {
      MoveButton(frame);
      frame.Command(cSaveAndCloseCommand);
    });
    EXPECT_EQ(Front().GetText(), Replaced(cDialogForm, "(40, 40,", "(41, 40,"));
    Front().Send(mavro::SCI_UNDO);
    EXPECT_EQ(Front().GetText(), cDialogForm);
    EXPECT_EQ(ide.files.Read("dlg.h"), cDialogForm) << "nothing is written to the disk";
  });
}

TEST_F(DesignSessionTest, CalculatorDemo_IsOpenedAndChanged) {
  const std::filesystem::path demo = std::filesystem::path(DEMOS_FOLDER) / "calculator";
  std::filesystem::copy(demo, ide.files.Path("calculator"));
  const std::string header = ide.files.Read("calculator/calcform.h");
  const std::string source = ide.files.Read("calculator/calcform.cpp");
  ide.Run({ide.files.Path("calculator/calculator.zpj")}, [&] {
    const auto textOf = [&](const std::string& name) {
      return Tabs().OpenFile(ide.files.Path("calculator/" + name))->GetText();
    };
    EXPECT_EQ(textOf("calcform.cpp"), source);
    Design([](DesignFrame& frame) {
      EXPECT_EQ(frame.editor.FindControl("divide")->ctrl->text, "\303\267");
      test::Shot(frame, "designer-calculator");
      frame.Command(cSaveAndCloseCommand);
    });
    EXPECT_EQ(textOf("calcform.h"), header);
    EXPECT_EQ(textOf("calcform.cpp"), source) << "opening and saving changes nothing";
    test::WidgetOf(*theMainForm)->activateWindow();
    ASSERT_TRUE(test::WaitFor([] { return mavro::activeForm == theMainForm; }));
    Design([](DesignFrame& frame) {
      frame.editor.Select(frame.editor.FindControl("tape")->ctrl, false);
      frame.Command(cWiderCommand);
      frame.Command(cSaveAndCloseCommand);
    });
    EXPECT_EQ(textOf("calcform.h"), header);
    EXPECT_EQ(textOf("calcform.cpp"),
              Replaced(source, "tape.SetBounds(290, 12, 180,", "tape.SetBounds(290, 12, 181,"));
  });
}

TEST_F(DesignSessionTest, ClosedWithoutSaving_LeavesTheText) {
  ide.Run({}, [&] {
    Open("dlg.h", cDialogForm);
    Design([&](DesignFrame& frame) {
      MoveButton(frame);
      ide.dialogs.answers = {mavro::Answer::cNo};
      frame.Close();
    });
    EXPECT_EQ(Front().GetText(), cDialogForm);
  });
}

TEST_F(DesignSessionTest, TextWithoutAForm_SaysSo) {
  ide.Run({}, [&] {
    Open("a.cpp", "int main() {}\n");
    IdeDriver::Press(Qt::Key_F11);
    EXPECT_EQ(IdeDriver::Status(), "There is no form in this text");
    EXPECT_TRUE(ide.dialogs.texts.empty());
  });
}

TEST_F(DesignSessionTest, FormInTwoFiles_OpensFromEither) {
  const std::string header =
      "#pragma once\nclass Dlg: public Form\n{\n\ttypedef Dlg This;\npublic:\n\t//!decl\n"
      "\tButton button1;\n\t//!end\n\tvoid Initialize();\n};\n";
  const std::string source =
      "#include \"dlg.h\"\n\nvoid Dlg::Initialize()\n{\n\t//!init\n\tthis->SetBounds(0, 0, 300, "
      "200);\n"
      "\t//!<Button>\n\tbutton1.SetBounds(40, 40, 80, 24);\n\tthis->Add(&button1);\n\t//!end\n}\n";
  ide.Run({}, [&] {
    ide.files.Write("dlg.h", header);
    Open("dlg.cpp", source);
    Design([](DesignFrame& frame) {
      MoveButton(frame);
      frame.Command(cSaveAndCloseCommand);
    });
    EXPECT_EQ(Tabs().Active()->caption, "dlg.h") << "the declarations are in front";
    EXPECT_EQ(Front().GetText(), header);
    EXPECT_EQ(Tabs().Activate(ide.files.Path("dlg.cpp"), false)->GetText(),
              Replaced(source, "(40, 40,", "(41, 40,"));
  });
}

TEST_F(DesignSessionTest, OtherHalfMissing_IsTold) {
  ide.Run({}, [&] {
    Open("dlg.h", "class Dlg: public Form\n{\n\t//!decl\n\t//!end\n};\n");
    IdeDriver::Press(Qt::Key_F11);
    EXPECT_THAT(ide.dialogs.texts,
                testing::ElementsAre("Information: The //!init section not found!"));
  });
}

TEST_F(DesignSessionTest, HandlerIsAddedAndShown) {
  ide.Run({ide.Project({{"dlg.h", cDialogForm}})}, [&] {
    Tabs().OpenFile(ide.files.Path("dlg.h"));
    Design([](DesignFrame& frame) {
      frame.editor.FindControl("button1")->events.push_back({"onClick", "Button1DoOnClick"});
      frame.RequestHandler("Dlg", "Button1DoOnClick", "NotifyArgs");
    });
    EXPECT_TRUE(HasText("button1.onClick.Add_H(this, &This::Button1DoOnClick);"));
    EXPECT_TRUE(HasText("void Button1DoOnClick(NotifyArgs &e)")) << Front().GetText();
  });
}

TEST_F(DesignSessionTest, HandlerIsRemovedWithItsBinding) {
  std::string text = Replaced(cDialogForm, "\t\tthis->Add(&button1);\n",
                              "\t\tbutton1.onClick.Add_H(this, &This::Pressed);\n"
                              "\t\tthis->Add(&button1);\n");
  text = Replaced(text, "\t}\n};\n", "\t}\n\tvoid Pressed(NotifyArgs &e) {\n\t}\n};\n");
  ide.Run({ide.Project({{"dlg.h", text}})}, [&] {
    Tabs().OpenFile(ide.files.Path("dlg.h"));
    Design([](DesignFrame& frame) {
      frame.editor.Select(frame.editor.FindControl("button1")->ctrl, false);
      frame.Show(frame.editor.FindControl("button1")->ctrl);
      frame.eventBox.RemoveHandler(0);
    });
    EXPECT_FALSE(HasText("Pressed")) << Front().GetText();
    EXPECT_TRUE(HasText("button1.text = \"Go\";"));
  });
}

TEST_F(DesignSessionTest, OfSeveralForms_TheChosenOneIsDesigned) {
  const std::string other =
      Replaced(Replaced(Replaced(cDialogForm, "#pragma once\n#include<mavro>\n\n", "\n"),
                        "class Dlg:", "class Other:"),
               "typedef Dlg", "typedef Other");
  const std::string text = cDialogForm + Replaced(other, "\tDlg() {", "\tOther() {");
  ide.Run({}, [&] {
    Open("dlg.h", text);
    ide.OnDialog([&](mavro::Form& form) {
      auto* dialog = dynamic_cast<SelectDlg*>(&form);
      ASSERT_TRUE(dialog) << form.text;
      EXPECT_EQ(dialog->formList.rowCount, 2);
      dialog->formList.selectedIndex = 1;
      ide.OnDialog([](mavro::Form& next) {
        auto* frame = dynamic_cast<DesignFrame*>(&next);
        ASSERT_TRUE(frame) << next.text;
        MoveButton(*frame);
        frame->Command(cSaveAndCloseCommand);
      });
      test::Click(dialog->okButton);
    });
    IdeDriver::Press(Qt::Key_F11);
    const size_t second = text.rfind("(40, 40,");
    EXPECT_EQ(Front().GetText(), std::string(text).replace(second, 8, "(41, 40,"));
  });
}

TEST_F(DesignSessionTest, Keep_MovesForeignStatementsBehindTheirRegion) {
  const std::string text = Replaced(cDialogForm, "\t\tthis->Add(&button1);\n",
                                    "\t\tthis->Add(&button1);\n\t\tif (x) y();\n");
  std::vector<std::string> rows;
  ide.Run({}, [&] {
    Open("dlg.h", text);
    DesignAfter(&LossDlg::keep, rows, [](DesignFrame& frame) {
      MoveButton(frame);
      frame.Command(cSaveAndCloseCommand);
    });
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_THAT(rows[0], HasSubstr("if (x) y();"));
    EXPECT_TRUE(HasText("button1.SetBounds(41, 40, 80, 24);"));
    EXPECT_TRUE(HasText("//!end\n\t\tif (x) y();\n")) << Front().GetText();
  });
}

TEST_F(DesignSessionTest, GoOn_LosesWhatWasListed) {
  const std::string text = Replaced(cDialogForm, "\t\tthis->Add(&button1);\n",
                                    "\t\tthis->Add(&button1);\n\t\tif (x) y();\n");
  std::vector<std::string> rows;
  ide.Run({}, [&] {
    Open("dlg.h", text);
    DesignAfter(&LossDlg::goOn, rows, [](DesignFrame& frame) {
      MoveButton(frame);
      frame.Command(cSaveAndCloseCommand);
    });
    EXPECT_EQ(rows.size(), 1u);
    EXPECT_EQ(Front().GetText(), Replaced(cDialogForm, "(40, 40,", "(41, 40,"));
  });
}

TEST_F(DesignSessionTest, Cancel_LeavesEveryByte) {
  const std::string text = Replaced(cDialogForm, "\t\tthis->Add(&button1);\n",
                                    "\t\tthis->Add(&button1);\n\t\tif (x) y();\n");
  std::vector<std::string> rows;
  ide.Run({}, [&] {
    Open("dlg.h", text);
    DesignAfter(&LossDlg::cancel, rows, nullptr);
    EXPECT_EQ(rows.size(), 1u);
    EXPECT_EQ(Front().GetText(), text);
  });
}

TEST_F(DesignSessionTest, FileChangedByAnotherProgram_IsAskedAboutAndNotOverwritten) {
  const std::string theirs = std::string(cDialogForm) + "// theirs\n";
  ide.Run({}, [&] {
    Open("dlg.h", cDialogForm);
    Design([&](DesignFrame& frame) {
      MoveButton(frame);
      ide.files.Write("dlg.h", theirs);
      ide.dialogs.answers = {mavro::Answer::cYes};
      frame.Command(cSaveAndCloseCommand);
    });
    EXPECT_FALSE(ide.dialogs.texts.empty());
    EXPECT_EQ(ide.files.Read("dlg.h"), theirs);
    EXPECT_EQ(Front().GetText(), Replaced(theirs, "(40, 40,", "(41, 40,"));
  });
}

TEST_F(DesignSessionTest, ControlWithoutAdd_IsNotOpened) {
  ide.Run({}, [&] {
    Open("dlg.h", Replaced(cDialogForm, "\t\tthis->Add(&button1);\n", ""));
    IdeDriver::Press(Qt::Key_F11);
    ASSERT_FALSE(ide.dialogs.texts.empty());
    EXPECT_THAT(ide.dialogs.texts.back(), HasSubstr("button1 hasn't Add statment!"));
  });
}

TEST_F(DesignSessionTest, ReadOnlyText_IsRefused) {
  ide.Run({}, [&] {
    Open("dlg.h", cDialogForm);
    Front().Send(mavro::SCI_SETREADONLY, 1);
    IdeDriver::Press(Qt::Key_F11);
    ASSERT_EQ(ide.dialogs.texts.size(), 1u);
    EXPECT_THAT(ide.dialogs.texts[0], HasSubstr("Read only"));
  });
}

}  // namespace
}  // namespace zendry
