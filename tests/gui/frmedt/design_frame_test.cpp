#include "frmedt/DesignFrame.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QPointer>

#include "Clipboard.h"
#include "DesignTest.h"

// The designer's window: undo, clipboard, Tab order, preview, and how it is closed.

namespace zendry {
namespace {

using mavro::Rect;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class DesignFrameTest : public test::DesignTest {};

TEST_F(DesignFrameTest, ToolBox_HasSelectAndAllClassesWithBounds) {
  Design("", "", [&] {
    const auto& entries = frame->toolBox.Entries();
    EXPECT_EQ(frame->toolBox.icons.GetItem(0).text, "Select");
    EXPECT_EQ(entries[0].classDef, &WindowRegClass);
    size_t row = 1;
    for (const CtrlClass& each : Registry()) {
      if (each.noBounds) continue;
      EXPECT_EQ(entries[row].classDef, &each);
      EXPECT_EQ(entries[row].imageIndex, static_cast<int>(row));
      EXPECT_EQ(frame->toolBox.icons.GetItem(static_cast<int>(row)).text, each.name);
      ++row;
    }
    EXPECT_EQ(row, entries.size());
    frame->toolBox.icons.selectedIndex = -1;
    EXPECT_EQ(frame->toolBox.Selected().imageIndex, 0);
  });
}

TEST_F(DesignFrameTest, EveryClass_CanBeDroppedAndUndone) {
  Design("", "", [&] {
    int count = 0;
    for (const ToolEntry& entry : frame->toolBox.Entries()) {
      if (entry.classDef == &WindowRegClass) continue;
      Click(590, 390);
      ChooseTool(entry.classDef->name);
      Click(5 + count * 3, 7 + count * 5);
      ASSERT_EQ(form.controls.size(), 2u) << entry.classDef->name;
      const CtrlRec& rec = *form.controls[1];
      ASSERT_TRUE(rec.ctrl) << entry.classDef->name;
      EXPECT_EQ(rec.className, entry.classDef->name);
      EXPECT_GT(rec.ctrl->width, 1);
      if (count % 8 == 0) test::Shot(*frame, "designer-drop-" + rec.className);
      Type(Qt::Key_Z, Qt::ControlModifier);
      ASSERT_EQ(form.controls.size(), 1u);
      ++count;
    }
    EXPECT_EQ(count, 25);
    test::Shot(*frame, "designer-empty");
  });
}

TEST_F(DesignFrameTest, UndoAndRedo_CoverDropsMovesAndDeletions) {
  Design(Names(2), Buttons(2), [&] {
    const auto first = Written();
    Click(60, 52);
    DragMouse(80, 52, 90, 60);
    Type(Qt::Key_Left, Qt::ControlModifier);
    Click(60, 92);
    Type(Qt::Key_Delete);
    ChooseTool("CheckBox");
    Click(200, 200);
    const auto last = Written();
    for (int i = 0; i < 4; ++i) Type(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Written(), first);
    EXPECT_FALSE(frame->History().CanUndo());
    Type(Qt::Key_Z, Qt::ControlModifier);
    for (int i = 0; i < 3; ++i) Type(Qt::Key_Y, Qt::ControlModifier);
    Type(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Written(), last);
    EXPECT_EQ(At("button1"), (Rect{49, 48, 80, 24}));
    EXPECT_TRUE(Live("checkBox1").GetForm() == frame);
    Type(Qt::Key_Y, Qt::ControlModifier);
  });
}

TEST_F(DesignFrameTest, ThirtySteps_GoBackToTheEmptyForm) {
  Design("", "", [&] {
    for (int i = 0; i < 30; ++i) {
      Surface().ClearSelection();
      Surface().DropControl(*FindClass(i % 2 ? "Label" : "Edit"), 10 + 8 * i, 5 + 12 * i);
    }
    EXPECT_EQ(form.controls.size(), 31u);
    for (int i = 0; i < 30; ++i) Type(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_THAT(AllNames(), IsEmpty());
    EXPECT_TRUE(Surface().children.empty());
    EXPECT_FALSE(frame->History().IsChanged());
  });
}

TEST_F(DesignFrameTest, CopyCutPasteDuplicate_ByKeys) {
  Design(Names(1) + "Panel panel1;\n",
         Buttons(1) + "//!<Panel>\npanel1.SetBounds(200, 40, 200, 150);\nthis->Add(&panel1);\n",
         [&] {
           Click(60, 52);
           Type(Qt::Key_C, Qt::ControlModifier);
           EXPECT_THAT(mavro::ClipboardText(), HasSubstr("button1.SetBounds(40, 40, 80, 24);"));
           Type(Qt::Key_V, Qt::ControlModifier);
           EXPECT_EQ(At("button2"), (Rect{48, 48, 80, 24})) << "beside the one it would cover";
           EXPECT_THAT(Selected(), ElementsAre("button2"));
           Type(Qt::Key_D, Qt::ControlModifier);
           EXPECT_EQ(At("button3"), (Rect{56, 56, 80, 24}));
           Type(Qt::Key_X, Qt::ControlModifier);
           EXPECT_EQ(form.Find("button3"), nullptr);
           Click(250, 100);
           Type(Qt::Key_V, Qt::ControlModifier);
           EXPECT_EQ(Rec("button3").parent->name, "panel1") << "into the selected container";
           Type(Qt::Key_Z, Qt::ControlModifier);
           Type(Qt::Key_Z, Qt::ControlModifier);
           EXPECT_EQ(Rec("button3").parent, &form.root);
           mavro::SetClipboardText("no controls");
           const int beeps = dialogs.beeps;
           Type(Qt::Key_V, Qt::ControlModifier);
           EXPECT_EQ(dialogs.beeps, beeps + 1);
         });
}

TEST_F(DesignFrameTest, DuplicatedContainer_TakesAlongWhatIsInIt) {
  Design("Panel panel1;\nButton inner;\n",
         "//!<Panel>\npanel1.SetBounds(40, 40, 200, 150);\nthis->Add(&panel1);\n"
         "//!<Button>\ninner.SetBounds(10, 10, 80, 24);\npanel1.Add(&inner);\n",
         [&] {
           Click(200, 150);
           Type(Qt::Key_D, Qt::ControlModifier);
           EXPECT_THAT(AllNames(), ElementsAre("panel1", "inner", "panel2", "button1"));
           EXPECT_EQ(Rec("panel2").parent, &form.root);
           EXPECT_EQ(Rec("button1").parent, &Rec("panel2"));
         });
}

TEST_F(DesignFrameTest, TabOrder_IsShownAndChangedByClicks) {
  Design(Names(3), Buttons(3), [&] {
    Type(Qt::Key_F4);
    EXPECT_EQ(Surface().Marks().size(), 3u);
    EXPECT_EQ(Surface().Marks()[2].text, "3");
    test::Shot(*frame, "designer-tab-order");
    Click(60, 132);
    Click(60, 52);
    EXPECT_THAT(AllNames(), ElementsAre("button3", "button1", "button2"));
    EXPECT_EQ(Surface().children.front(), &Live("button3"));
    Type(Qt::Key_Escape);
    EXPECT_TRUE(Surface().Marks().empty());
    Click(60, 52);
    EXPECT_THAT(Selected(), ElementsAre("button1"));
    Type(Qt::Key_Z, Qt::ControlModifier);
    Type(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_THAT(AllNames(), ElementsAre("button1", "button2", "button3"));
    EXPECT_EQ(Surface().children.front(), &Live("button1"));
  });
}

TEST_F(DesignFrameTest, Guides_ShowWhileADragIsInLine) {
  Design(Names(2), Buttons(2), [&] {
    Click(60, 92);
    Press(80, 92);
    MoveTo(90, 92);
    EXPECT_TRUE(Surface().Marks().empty());
    MoveTo(80, 100);
    EXPECT_EQ(Surface().Marks().size(), 2u) << "left and right edges";
    test::Shot(*frame, "designer-guides");
    Release(80, 100);
    EXPECT_TRUE(Surface().Marks().empty());
  });
}

TEST_F(DesignFrameTest, Preview_IsNamedAndEndsByEscape) {
  Design("Edit name;\n",
         "this->SetBounds(0, 0, 300, 200);\n//!<Edit>\nname.SetBounds(10, 10, 200, 24);\n"
         "this->Add(&name);\n",
         [&] {
           QTimer poll;
           std::string title;
           QObject::connect(&poll, &QTimer::timeout, [&] {
             mavro::Form* shown = mavro::activeForm;
             if (!shown || shown == frame) return;
             if (!static_cast<mavro::Form::Impl*>(shown->impl)->firstShowDone) return;
             poll.stop();
             title = shown->text;
             test::Key(*shown, Qt::Key_Escape);
             if (mavro::activeForm == shown) ADD_FAILURE() << "Escape closes nothing";
             if (mavro::activeForm == shown) shown->Close();
           });
           poll.start(2);
           Type(Qt::Key_F9);
           EXPECT_EQ(title, "Preview");
         });
}

TEST_F(DesignFrameTest, Preview_RunsTheFormWithItsRealControls) {
  Design(
      "Memo notes;\nComboBox choice;\nButton okButton;\n",
      "this->SetBounds(0, 0, 300, 200);\nthis->text = \"Tried\";\n"
      "//!<Memo>\nnotes.SetBounds(10, 10, 200, 80);\nnotes.text = \"typed\";\nthis->Add(&notes);\n"
      "//!<ComboBox>\nchoice.SetBounds(10, 100, 120, "
      "24);\nchoice.items.Add(\"one\");\nthis->Add(&choice);\n"
      "//!<Button>\nokButton.SetBounds(10, 140, 84, 34);\nokButton.kind = "
      "Button::cOk;\nthis->Add(&okButton);\n",
      [&] {
        QTimer poll;
        std::string title, notes;
        QObject::connect(&poll, &QTimer::timeout, [&] {
          mavro::Form* shown = mavro::activeForm;
          if (!shown || shown == frame) return;
          if (!static_cast<mavro::Form::Impl*>(shown->impl)->firstShowDone) return;
          poll.stop();
          title = shown->text;
          notes = shown->children[0]->text;
          EXPECT_TRUE(dynamic_cast<mavro::Memo*>(shown->children[0]));
          EXPECT_EQ(shown->Bounds().width, 300);
          test::Shot(*shown, "designer-preview");
          test::Click(*shown->children[2]);
        });
        poll.start(2);
        Type(Qt::Key_F9);
        EXPECT_EQ(title, "Tried");
        EXPECT_EQ(notes, "typed");
        EXPECT_TRUE(dynamic_cast<mavro::ChildCtrl*>(&Live("notes"))) << "the surface is as before";
      });
}

TEST_F(DesignFrameTest, SaveAndClose_WritesBothRegionsAndAsksNothing) {
  Design(Names(1), Buttons(1), [&] {
    Click(60, 52);
    Type(Qt::Key_Right, Qt::ControlModifier);
    zendry::DesignFrame& its = *frame;
    its.Command(cSaveAndCloseCommand);
    EXPECT_THAT(its.initLines, Contains(HasSubstr("button1.SetBounds(41, 40, 80, 24);")));
    EXPECT_THAT(its.declLines, Contains(HasSubstr("Button button1;")));
    EXPECT_EQ(its.handlerAction, 0);
  });
  EXPECT_EQ(result, mavro::Form::cOk);
  EXPECT_THAT(dialogs.texts, IsEmpty());
}

TEST_F(DesignFrameTest, CloseBox_AsksOnlyAboutChanges) {
  Design(Names(1), Buttons(1), [&] { frame->Close(); });
  EXPECT_THAT(dialogs.texts, IsEmpty());
  EXPECT_NE(result, mavro::Form::cOk);
}

TEST_F(DesignFrameTest, CloseBox_YesSavesNoForgetsCancelStays) {
  Design(Names(1), Buttons(1), [&] {
    Click(60, 52);
    Type(Qt::Key_Right, Qt::ControlModifier);
    dialogs.answers = {mavro::Answer::cCancel};
    frame->Close();
    EXPECT_TRUE(frame->IsOnScreen());
    Type(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(At("button1").left, 40);
    Type(Qt::Key_Y, Qt::ControlModifier);
    dialogs.answers = {mavro::Answer::cYes};
    frame->Close();
  });
  EXPECT_EQ(dialogs.texts.size(), 2u);
  EXPECT_EQ(result, mavro::Form::cOk);
}

TEST_F(DesignFrameTest, CloseBox_NoLeavesTheSource) {
  Design(Names(1), Buttons(1), [&] {
    Click(60, 52);
    Type(Qt::Key_Delete);
    dialogs.answers = {mavro::Answer::cNo};
    frame->Close();
  });
  EXPECT_NE(result, mavro::Form::cOk);
}

TEST_F(DesignFrameTest, RefusedSave_KeepsTheWindowAndTheWork) {
  Design(Names(1), Buttons(1), [&] {
    bool may = false;
    frame->maySave = [&may] { return may; };
    frame->RequestHandler("TestForm", "OnGo", "NotifyArgs");
    EXPECT_TRUE(frame->IsOnScreen());
    EXPECT_EQ(frame->handlerAction, 0);
    may = true;
    zendry::DesignFrame& its = *frame;
    its.RequestHandler("TestForm", "OnGo", "NotifyArgs");
    EXPECT_EQ(its.handlerAction, 1);
    EXPECT_EQ(its.handlerClass + its.handlerName + its.handlerArgs, "TestFormOnGoNotifyArgs");
  });
  EXPECT_EQ(result, mavro::Form::cOk);
}

TEST_F(DesignFrameTest, UntouchedForm_IsWrittenAsItWasRead) {
  const std::string init =
      "this->SetBounds(0, 0, 320, 240);\nthis->text = \"A \\\"b\\\" ; // c\";\n"
      "//!<ToolBar>\nbar.dock = Dock::cTop;\nbar.height = 19;\nbar.items.Add(Icons::icoNew, "
      "\"New\");\n"
      "this->Add(&bar);\n"
      "//!<StatusBar>\nstatus.dock = Dock::cBootom;\nstatus.height = 3;\nthis->Add(&status);\n"
      "//!<GroupBox>\ngroup.SetBounds(-5, 20000, 0, 7);\nthis->Add(&group);\n"
      "//!<Button>\nmine.SetBounds(4, 5, 6, 7);\nmine.font = Font(12, "
      "Font::cBold);\ngroup.Add(&mine);\n"
      "//!<Memo>\nnotes.dock = Dock::cFill;\nthis->Add(&notes);\n";
  const auto wanted = Lines(init);
  Design("ToolBar bar;\nStatusBar status;\nGroupBox group;\nMyButton mine;\nMemo notes;\n", init,
         [&] {
           auto written = Written();
           ASSERT_EQ(written.size(), wanted.size() + 2);
           for (size_t i = 0; i < wanted.size(); ++i) EXPECT_EQ(written[i + 1] + "\n", wanted[i]);
           Click(100, 100);
           Click(10, 5);
           EXPECT_EQ(Written(), written) << "looking changes nothing";
           test::Shot(*frame, "designer-untouched");
         });
}

TEST_F(DesignFrameTest, FiveThousandControls_OpenAndMove) {
  Design(Names(5000), Buttons(5000), [&] {
    Click(60, 52);
    DragMouse(80, 52, 90, 52);
    EXPECT_EQ(At("button1").left, 50);
  });
}

TEST_F(DesignFrameTest, CirclesOfParents_EndWithAWord) {
  Design("Panel aaa;\nPanel bbb;\nPanel own;\n",
         "//!<Panel>\naaa.Add(&bbb);\n//!<Panel>\nbbb.Add(&aaa);\n//!<Panel>\nown.Add(&own);\n",
         [&] { EXPECT_TRUE(Surface().children.empty()); });
  EXPECT_THAT(dialogs.texts, testing::Not(IsEmpty()));
}

// Group: the pages with properties and events.

class DesignBoxesTest : public test::DesignTest {
 protected:
  mavro::PopertyItem& Row(const std::string& title) const {
    for (int i = 0; i < frame->propBox.box.Count(); ++i)
      if (frame->propBox.box.Item(i).title.text == title) return frame->propBox.box.Item(i);
    throw std::runtime_error("no row " + title);
  }
  void Enter(const std::string& title, const std::string& value) const {
    frame->pages.selectedIndex = 1;
    mavro::PopertyItem& row = Row(title);
    row.edit.Focus();
    row.edit.SelectAll();
    QTest::keyClicks(QApplication::focusWidget(), QString::fromStdString(value));
    Type(Qt::Key_Return);
  }
};

TEST_F(DesignBoxesTest, Pages_AreToolboxPropertyEvents) {
  Design("", "", [&] {
    ASSERT_EQ(frame->pages.TabCount(), 3);
    EXPECT_EQ(frame->pages.GetPage(0)->text, "Toolbox");
    EXPECT_EQ(frame->pages.GetPage(1)->text, "Property");
    EXPECT_EQ(frame->pages.GetPage(2)->text, "Events");
  });
}

TEST_F(DesignBoxesTest, TypedValue_ReachesTheControlAndIsAStep) {
  Design(Names(1), Buttons(1), [&] {
    Click(60, 52);
    Enter("width", "120");
    EXPECT_EQ(At("button1"), (Rect{40, 40, 120, 24}));
    EXPECT_EQ(Surface().selector.width, 120) << "the frame follows";
    EXPECT_EQ(Status(3), "width:120  height:24");
    Enter("text", "Start");
    EXPECT_EQ(Live("button1").text, "Start");
    test::Shot(*frame, "designer-property");
    frame->Command(cDesignUndoCommand);
    EXPECT_EQ(Live("button1").text, "");
    frame->Command(cDesignUndoCommand);
    EXPECT_EQ(At("button1").width, 80);
    EXPECT_EQ(Row("width").Value(), "80");
  });
}

TEST_F(DesignBoxesTest, Drag_ShowsTheBoundsInTheRows) {
  Design(Names(1), Buttons(1), [&] {
    frame->pages.selectedIndex = 1;
    Click(60, 52);
    Press(60, 52);
    MoveTo(70, 60);
    EXPECT_EQ(Row("left").Value(), "50");
    EXPECT_EQ(Row("top").Value(), "48");
    Release(70, 60);
  });
}

TEST_F(DesignBoxesTest, DeleteInAField_EditsTheText) {
  Design(Names(1), Buttons(1), [&] {
    Click(60, 52);
    frame->pages.selectedIndex = 1;
    Row("text").edit.Focus();
    Type(Qt::Key_Delete);
    Type(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_THAT(AllNames(), ElementsAre("button1"));
    Click(60, 52);
    Type(Qt::Key_Delete);
    EXPECT_THAT(AllNames(), IsEmpty());
  });
}

TEST_F(DesignBoxesTest, Delete_OutsideOfTheSurface_LeavesTheControls) {
  Design(Names(1), Buttons(1), [&] {
    Click(60, 52);
    for (int page = 0; page < frame->pages.TabCount(); ++page) {
      SCOPED_TRACE(page);
      frame->pages.selectedIndex = page;
      if (page == 0) frame->toolBox.icons.Focus();
      if (page == 1) frame->propBox.box.FocusRow(0);
      if (page == 2) frame->eventBox.box.FocusRow(0);
      Type(Qt::Key_Delete);
      EXPECT_THAT(AllNames(), ElementsAre("button1"));
    }
    Click(60, 52);
    Type(Qt::Key_Delete);
    EXPECT_THAT(AllNames(), IsEmpty());
  });
}

TEST_F(DesignBoxesTest, Delete_InAnyField_LeavesTheControls) {
  Design(Names(1), Buttons(1), [&] {
    const QWidget* surface = test::WidgetOf(Surface());
    int tried = 0;
    for (int page = 0; page < frame->pages.TabCount(); ++page) {
      Click(60, 52);
      frame->pages.selectedIndex = page;
      QList<QPointer<QWidget>> fields;
      for (QWidget* field : test::WidgetOf(*frame)->findChildren<QWidget*>())
        if (field->focusPolicy() & Qt::TabFocus && field->isVisible() && field != surface &&
            !surface->isAncestorOf(field))
          fields.push_back(field);
      for (const QPointer<QWidget>& field : fields) {
        if (!field || !field->isVisible()) continue;
        field->setFocus();
        Type(Qt::Key_Delete);
        ++tried;
        ASSERT_EQ(form.controls.size(), 2u) << "page " << page << ", field " << tried;
      }
    }
    EXPECT_GT(tried, 10);
  });
}

TEST_F(DesignBoxesTest, SeveralControls_TakeOneValue) {
  Design(Names(2), Buttons(2), [&] {
    Click(60, 52);
    Click(60, 92, Qt::ControlModifier);
    Enter("width", "60");
    EXPECT_EQ(At("button1").width, 60);
    EXPECT_EQ(At("button2").width, 60);
    frame->Command(cDesignUndoCommand);
    EXPECT_EQ(At("button1").width, 80);
    EXPECT_EQ(At("button2").width, 80);
  });
}

TEST_F(DesignBoxesTest, SeveralControls_ShowWhatAStepHasMadeEqual) {
  Design(Names(2),
         "//!<Button>\nbutton1.SetBounds(40, 40, 80, 24);\nthis->Add(&button1);\n"
         "//!<Button>\nbutton2.SetBounds(50, 80, 80, 24);\nthis->Add(&button2);\n",
         [&] {
           Click(60, 52);
           Click(60, 92, Qt::ControlModifier);
           EXPECT_EQ(Row("left").Value(), "");
           frame->Command(cAlignLeft);
           EXPECT_EQ(Row("left").Value(), "40");
           EXPECT_EQ(Row("top").Value(), "");
           Type(Qt::Key_Right, Qt::ControlModifier);
           EXPECT_EQ(Row("left").Value(), "41");
           DragMouse(60, 52, 70, 60);
           EXPECT_EQ(Row("left").Value(), "51");
         });
}

TEST_F(DesignBoxesTest, TabControlWithoutPages_ShowsItsRows) {
  Design("TabCtrl tabs;\n", "//!<TabCtrl>\ntabs.SetBounds(20, 20, 300, 200);\nthis->Add(&tabs);\n",
         [&] {
           Click(100, 100);
           EXPECT_THAT(Selected(), ElementsAre("tabs"));
           Enter("text", "nothing");
           EXPECT_THAT(AllNames(), ElementsAre("tabs"));
         });
}

}  // namespace
}  // namespace zendry
