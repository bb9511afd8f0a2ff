#include "frmedt/FormEditor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "DesignTest.h"
#include "NextDialog.h"

// The surface of the designer: what mouse and keys do to controls.

namespace zendry {
namespace {

using mavro::Rect;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class FormEditorTest : public test::DesignTest {
 protected:
  // The surface with everything that lies above its controls.
  QImage Picture() const { return test::WidgetOf(Surface())->grab().toImage(); }
  // True if at least a third of the pixels of a piece of a row differ from what is below them.
  static bool HasLine(const QImage& picture, int left, int right, int y) {
    int other = 0;
    for (int x = left; x <= right; ++x) other += picture.pixel(x, y) != picture.pixel(x, y + 2);
    return 3 * other >= right - left;
  }
};

TEST_F(FormEditorTest, Press_SelectsTheControlAndShowsIt) {
  Design(Names(2), Buttons(2), [&] {
    EXPECT_THAT(Selected(), IsEmpty());
    EXPECT_EQ(Status(1), "TestForm");
    Click(60, 92);
    EXPECT_THAT(Selected(), ElementsAre("button2"));
    EXPECT_EQ(Status(0), "Ready");
    EXPECT_EQ(Status(1), "button2");
    EXPECT_EQ(Status(2), "left:40  top:80");
    EXPECT_EQ(Status(3), "width:80  height:24");
    Click(300, 300);
    EXPECT_THAT(Selected(), IsEmpty());
    EXPECT_EQ(Status(1), "TestForm");
  });
}

TEST_F(FormEditorTest, ControlPress_AddsSiblingsAndTogglesThem) {
  Design(Names(3), Buttons(3), [&] {
    Click(60, 52);
    Click(60, 92, Qt::ControlModifier);
    Click(60, 132, Qt::ControlModifier);
    EXPECT_THAT(Selected(), ElementsAre("button1", "button2", "button3"));
    Click(60, 92, Qt::ControlModifier);
    EXPECT_THAT(Selected(), ElementsAre("button1", "button3"));
    Click(60, 52, Qt::ControlModifier);
    EXPECT_THAT(Selected(), ElementsAre("button1", "button3")) << "the primary stays";
    Click(60, 132);
    EXPECT_THAT(Selected(), ElementsAre("button1", "button3")) << "a press on another keeps all";
    Click(60, 92);
    EXPECT_THAT(Selected(), ElementsAre("button2"));
  });
}

TEST_F(FormEditorTest, ControlPress_OfAnotherParent_Beeps) {
  Design("Button inner;\nButton outer;\nPanel panel1;\n",
         "//!<Panel>\npanel1.SetBounds(100, 100, 200, 100);\nthis->Add(&panel1);\n"
         "//!<Button>\ninner.SetBounds(10, 10, 80, 24);\npanel1.Add(&inner);\n"
         "//!<Button>\nouter.SetBounds(10, 10, 80, 24);\nthis->Add(&outer);\n",
         [&] {
           Click(20, 20);
           Click(130, 120, Qt::ControlModifier);
           EXPECT_THAT(Selected(), ElementsAre("outer"));
           EXPECT_EQ(dialogs.beeps, 1);
           Click(130, 120);
           EXPECT_THAT(Selected(), ElementsAre("inner"));
           Click(250, 180);
           EXPECT_THAT(Selected(), ElementsAre("panel1"));
         });
}

TEST_F(FormEditorTest, PressOnTheFrame_KeepsTheSelectionOverAnotherControl) {
  Design("Button below;\nButton above;\n",
         "//!<Button>\nbelow.SetBounds(40, 40, 80, 24);\nthis->Add(&below);\n"
         "//!<Button>\nabove.SetBounds(118, 40, 80, 24);\nthis->Add(&above);\n",
         [&] {
           Click(180, 52);
           EXPECT_THAT(Selected(), ElementsAre("above"));
           Click(119, 52);
           EXPECT_THAT(Selected(), ElementsAre("above")) << "within 2 pixels of its edge";
           Click(100, 52);
           EXPECT_THAT(Selected(), ElementsAre("below"));
         });
}

TEST_F(FormEditorTest, Drag_MovesAllSelectedAndShowsThePlace) {
  Design(Names(2), Buttons(2), [&] {
    Click(60, 52);
    Click(60, 92, Qt::ControlModifier);
    Press(80, 52);
    MoveTo(90, 62);
    MoveTo(101, 59);
    EXPECT_EQ(Status(2), "left:61  top:47");
    Release(101, 59);
    EXPECT_EQ(At("button1"), (Rect{61, 47, 80, 24}));
    EXPECT_EQ(At("button2"), (Rect{61, 87, 80, 24}));
    MoveTo(200, 200);
    EXPECT_EQ(At("button1"), (Rect{61, 47, 80, 24})) << "the button is up";
  });
}

TEST_F(FormEditorTest, DragOfEachHandle_SizesThatSide) {
  struct Row {
    int x, y, dx, dy;
    Rect after;
  };
  const Row rows[] = {{41, 52, -10, 5, {30, 40, 90, 24}},   {119, 52, 12, 5, {40, 40, 92, 24}},
                      {80, 41, 5, -10, {40, 30, 80, 34}},   {80, 63, 5, 9, {40, 40, 80, 33}},
                      {41, 41, -10, -10, {30, 30, 90, 34}}, {119, 41, 10, -10, {40, 30, 90, 34}},
                      {41, 63, -10, 10, {30, 40, 90, 34}},  {119, 63, 10, 10, {40, 40, 90, 34}}};
  Design(Names(1), Buttons(1), [&] {
    for (const Row& row : rows) {
      Click(80, 52);
      DragMouse(row.x, row.y, row.x + row.dx, row.y + row.dy);
      EXPECT_EQ(At("button1"), row.after) << row.x << "," << row.y;
      Type(Qt::Key_Z, Qt::ControlModifier);
      EXPECT_EQ(At("button1"), (Rect{40, 40, 80, 24}));
    }
  });
}

TEST_F(FormEditorTest, SizingToNothing_StopsAtOneWhileLeftFollows) {
  Design(Names(1), Buttons(1), [&] {
    Click(80, 52);
    Press(119, 52);
    for (int x = 118; x > 20; --x) MoveTo(x, 52);
    Release(20, 52);
    EXPECT_EQ(At("button1"), (Rect{40, 40, 1, 24}));
    Type(Qt::Key_Z, Qt::ControlModifier);
    Click(80, 52);
    Press(41, 52);
    for (int x = 42; x <= 140; ++x) MoveTo(x, 52);
    EXPECT_EQ(At("button1").width, 1);
    EXPECT_EQ(At("button1").left, 139);
    Release(140, 52);
  });
}

TEST_F(FormEditorTest, Cursor_TellsWhatADragWillDo) {
  Design(Names(1), Buttons(1), [&] {
    Click(80, 52);
    using mavro::Cursor;
    const std::vector<std::tuple<int, int, Cursor>> rows = {
        {80, 52, Cursor::cSizeAll},   {42, 52, Cursor::cSizeWE},    {118, 52, Cursor::cSizeWE},
        {80, 42, Cursor::cSizeNS},    {80, 62, Cursor::cSizeNS},    {42, 42, Cursor::cSizeNWSE},
        {118, 62, Cursor::cSizeNWSE}, {118, 42, Cursor::cSizeNESW}, {42, 62, Cursor::cSizeNESW},
        {200, 200, Cursor::cArrow}};
    for (const auto& [x, y, cursor] : rows) {
      MoveTo(x, y);
      EXPECT_EQ(Surface().cursor.Get(), cursor) << x << "," << y;
    }
  });
}

TEST_F(FormEditorTest, DraggingADockedControl_SnapsBack) {
  Design("Panel panel1;\n",
         "//!<Panel>\npanel1.dock = Dock::cTop;\npanel1.height = 50;\nthis->Add(&panel1);\n", [&] {
           Click(100, 25);
           EXPECT_EQ(At("panel1"), (Rect{0, 0, Surface().width, 50}));
           DragMouse(100, 25, 130, 95);
           EXPECT_EQ(At("panel1"), (Rect{0, 0, Surface().width, 50}));
           EXPECT_EQ(Surface().selector.Bounds(), At("panel1"));
         });
}

TEST_F(FormEditorTest, ShiftKeepsADragOnTheAxisThatItIsFurtherOn) {
  Design(Names(1), Buttons(1), [&] {
    Click(60, 52);
    Press(80, 52);
    MoveTo(111, 60, Qt::ShiftModifier);
    EXPECT_EQ(At("button1"), (Rect{71, 40, 80, 24}));
    MoveTo(84, 83, Qt::ShiftModifier);
    EXPECT_EQ(At("button1"), (Rect{40, 71, 80, 24}));
    MoveTo(85, 84);
    EXPECT_EQ(At("button1"), (Rect{45, 72, 80, 24})) << "without the key";
    Release(85, 84);
  });
}

TEST_F(FormEditorTest, EscapeGivesUpADrag) {
  Design(Names(2), Buttons(2), [&] {
    Click(60, 52);
    Click(60, 92, Qt::ControlModifier);
    Press(80, 52);
    MoveTo(120, 90);
    Type(Qt::Key_Escape);
    EXPECT_EQ(At("button1"), (Rect{40, 40, 80, 24}));
    EXPECT_EQ(At("button2"), (Rect{40, 80, 80, 24}));
    MoveTo(150, 150);
    Release(150, 150);
    EXPECT_EQ(At("button1"), (Rect{40, 40, 80, 24}));
    EXPECT_FALSE(frame->History().CanUndo());
  });
}

// Another press while the left button is held neither drops nor selects, and no key deletes.
TEST_F(FormEditorTest, DropWhileDragging_WaitsForTheButton) {
  Design(Names(2), Buttons(2), [&] {
    Press(60, 52);
    MoveTo(70, 60);
    ChooseTool("Edit");
    QTest::mousePress(Window(), Qt::RightButton, Qt::NoModifier, Place(200, 200));
    QTest::mouseRelease(Window(), Qt::RightButton, Qt::NoModifier, Place(200, 200));
    Press(60, 92);
    Type(Qt::Key_Delete);
    Type(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_THAT(AllNames(), ElementsAre("button1", "button2"));
    EXPECT_THAT(Selected(), ElementsAre("button1"));
    Release(70, 60);
    EXPECT_EQ(At("button1"), (Rect{50, 48, 80, 24}));
    Click(300, 300);
    EXPECT_THAT(AllNames(), ElementsAre("button1", "button2", "edit1")) << "the tool was kept";
  });
}

TEST_F(FormEditorTest, ImageWithoutAPicture_IsShownAndPreviewed) {
  Design("Image photo;\n",
         "//!<Image>\nphoto.SetBounds(10, 10, 100, 80);\nphoto.stretch = true;\n"
         "this->Add(&photo);\n",
         [&] {
           EXPECT_EQ(At("photo"), (Rect{10, 10, 100, 80}));
           bool isShown = false;
           test::OnNextDialog(*frame, [&](mavro::Form& preview) {
             isShown = dynamic_cast<mavro::Image*>(preview.children[0]);
             preview.Close();
           });
           Type(Qt::Key_F9);
           EXPECT_TRUE(isShown);
         });
}

TEST_F(FormEditorTest, Drop_MakesAControlWithItsCornerAtThePoint) {
  Design(Names(1), Buttons(1), [&] {
    ChooseTool("Button");
    Click(200, 120);
    EXPECT_THAT(AllNames(), ElementsAre("button1", "button2"));
    EXPECT_EQ(At("button2").left, 200);
    EXPECT_EQ(At("button2").top, 120);
    const mavro::Button usual;
    EXPECT_EQ(At("button2").width, usual.width);
    EXPECT_EQ(Live("button2").text, "button2");
    EXPECT_THAT(Selected(), ElementsAre("button2"));
    EXPECT_EQ(frame->toolBox.Selected().classDef, &WindowRegClass) << "one drop for one choice";
    EXPECT_THAT(Written(), Contains("button2.text = \"button2\";"));
  });
}

TEST_F(FormEditorTest, Names_GoOnAfterTheLargest) {
  Design("Button button1;\nButton button3;\n",
         Buttons(1) + "//!<Button>\nbutton3.SetBounds(0, 0, 9, 9);\nthis->Add(&button3);\n", [&] {
           ChooseTool("Button");
           Click(200, 120);
           EXPECT_THAT(AllNames(), ElementsAre("button1", "button3", "button4"));
         });
}

TEST_F(FormEditorTest, DropIntoSomethingThatHoldsNothing_BeepsAndKeepsTheTool) {
  Design(Names(1), Buttons(1), [&] {
    ChooseTool("Edit");
    Click(60, 52);
    EXPECT_EQ(dialogs.beeps, 1);
    EXPECT_THAT(AllNames(), ElementsAre("button1"));
    EXPECT_EQ(frame->toolBox.Selected().classDef->name, "Edit");
    EXPECT_FALSE(Surface().DropControl(*FindClass("Edit"), 300, 300))
        << "the target is what is selected";
    EXPECT_EQ(dialogs.beeps, 2);
  });
}

TEST_F(FormEditorTest, DropIntoContainers_CountsFromTheirCorner) {
  Design("GroupBox group1;\n",
         "//!<GroupBox>\ngroup1.SetBounds(100, 60, 200, 150);\nthis->Add(&group1);\n", [&] {
           ChooseTool("CheckBox");
           Click(130, 100);
           EXPECT_EQ(Rec("checkBox1").parent->name, "group1");
           EXPECT_EQ(At("checkBox1").left, 30);
           EXPECT_EQ(At("checkBox1").top, 40);
           EXPECT_THAT(Written(), Contains("group1.Add(&checkBox1);"));
         });
}

TEST_F(FormEditorTest, DropOnATabControl_GoesToItsPageInFront) {
  Design("TabCtrl tabCtrl1;\n",
         "//!<TabCtrl>\ntabCtrl1.SetBounds(20, 20, 300, 200);\nthis->Add(&tabCtrl1);\n", [&] {
           ChooseTool("Edit");
           Click(100, 150);
           EXPECT_EQ(dialogs.beeps, 1) << "no page yet";
           CtrlRec* page = Surface().live.AddPage(Rec("tabCtrl1"));
           ASSERT_TRUE(page);
           EXPECT_EQ(page->name, "tabCtrl1Page1");
           Surface().live.AddPage(Rec("tabCtrl1"));
           Click(100, 150);
           EXPECT_EQ(Rec("edit1").parent->name, "tabCtrl1Page1");
           EXPECT_EQ(Surface().RectOf(Live("edit1")).left, 100);
           EXPECT_EQ(Surface().RectOf(Live("edit1")).top, 150);
           Click(100 + 300, 300);
           Click(105, 155);
           EXPECT_THAT(Selected(), ElementsAre("edit1")) << "hit testing goes into the page";
           Click(200, 215);
           EXPECT_THAT(Selected(), ElementsAre("tabCtrl1"));
         });
}

TEST_F(FormEditorTest, EmptyLabelsAndToolBars_AreOutlined) {
  Design("Label empty, full;\nToolBar bar;\nToolBar filled;\n",
         "//!<Label>\nempty.SetBounds(20, 21, 100, 18);\nthis->Add(&empty);\n"
         "//!<Label>\nfull.SetBounds(20, 51, 100, 18);\nfull.text = \"x\";\nthis->Add(&full);\n"
         "//!<ToolBar>\nbar.SetBounds(200, 21, 100, 32);\nthis->Add(&bar);\n"
         "//!<ToolBar>\nfilled.SetBounds(200, 121, 100, 32);\nfilled.items.Add(_separator_);\n"
         "this->Add(&filled);\n",
         [&] {
           EXPECT_TRUE(HasLine(Picture(), 20, 119, 21));
           EXPECT_FALSE(HasLine(Picture(), 40, 119, 51));
           EXPECT_TRUE(HasLine(Picture(), 200, 299, 21));
           EXPECT_FALSE(HasLine(Picture(), 240, 299, 121));
           Live("empty").text = "text";
           EXPECT_FALSE(HasLine(Picture(), 60, 119, 21));
         });
}

// A panel without a border paints nothing, nor does a tab control without pages.
TEST_F(FormEditorTest, ContainersThatPaintNothing_AreOutlined) {
  const auto panel = [](const std::string& name, const std::string& bounds,
                        const std::string& parent, const std::string& more = "") {
    return "//!<Panel>\n" + name + ".SetBounds(" + bounds + ");\n" + more + parent + "Add(&" +
           name + ");\n";
  };
  Design("Panel plain, framed, inside;\nTabCtrl tabs;\nTabPage front, back;\nPanel shut;\n",
         panel("plain", "20, 21, 100, 80", "this->") +
             panel("framed", "20, 121, 100, 80", "this->",
                   "framed.borderStyle = BorderStyle::cFrame;\n") +
             panel("inside", "10, 11, 200, 30", "plain.") +
             "//!<TabCtrl>\ntabs.SetBounds(200, 21, 150, 80);\nthis->Add(&tabs);\n"
             "//!<TabPage>\ntabs.Add(&front);\n//!<TabPage>\ntabs.Add(&back);\n" +
             panel("shut", "30, 10, 50, 30", "back."),
         [&] {
           const QImage with = Picture();
           // Dots of the grid are at multiples of 8.
           EXPECT_TRUE(HasLine(with, 20, 119, 21)) << "above the panel";
           EXPECT_TRUE(HasLine(with, 20, 119, 100)) << "below it";
           EXPECT_TRUE(HasLine(with, 30, 119, 32)) << "the one inside, up to the edge around it";
           EXPECT_FALSE(HasLine(with, 121, 190, 32));
           EXPECT_TRUE(HasLine(with, 200, 349, 100)) << "the tab control";
           const Rect at = Surface().RectOf(Live("shut"));
           EXPECT_FALSE(HasLine(with, at.left, at.left + 49, at.top + 29)) << "hidden";
         });
}

// What is in a container may be declared before it and before the container's siblings.
TEST_F(FormEditorTest, PagesAndDockedPanels_StandInTheOrderOfTheSource) {
  Design(
      "Label inBack;\nButton inLower;\nTabCtrl tabs;\nTabPage front, back;\nPanel upper, lower;\n",
      "//!<Label>\ninBack.SetBounds(1, 1, 50, 18);\nback.Add(&inBack);\n"
      "//!<Button>\ninLower.SetBounds(1, 1, 50, 18);\nlower.Add(&inLower);\n"
      "//!<TabCtrl>\ntabs.SetBounds(20, 200, 300, 100);\nthis->Add(&tabs);\n"
      "//!<TabPage>\ntabs.Add(&front);\n//!<TabPage>\ntabs.Add(&back);\n"
      "//!<Panel>\nupper.dock = Dock::cTop;\nupper.height = 30;\nthis->Add(&upper);\n"
      "//!<Panel>\nlower.dock = Dock::cTop;\nlower.height = 40;\nthis->Add(&lower);\n",
      [&] {
        const auto& tabs = dynamic_cast<const mavro::TabCtrl&>(Live("tabs"));
        EXPECT_EQ(tabs.GetPage(0), &Live("front"));
        EXPECT_EQ(tabs.GetPage(1), &Live("back"));
        EXPECT_EQ(At("upper").top, 0);
        EXPECT_EQ(At("lower").top, 30);
        EXPECT_EQ(Live("inLower").parent, &Live("lower"));
      });
}

TEST_F(FormEditorTest, PagesAreNamedAfterTheFirstFreeNumber) {
  Design("TabCtrl tabs;\nTabPage tabsPage1;\nTabPage tabsPage3;\n",
         "//!<TabCtrl>\ntabs.SetBounds(20, 20, 300, 200);\nthis->Add(&tabs);\n"
         "//!<TabPage>\ntabs.Add(&tabsPage1);\n//!<TabPage>\ntabs.Add(&tabsPage3);\n",
         [&] { EXPECT_EQ(Surface().live.AddPage(Rec("tabs"))->name, "tabsPage4"); });
}

TEST_F(FormEditorTest, AlignCommands_MoveTheOthersToThePrimary) {
  const std::string init =
      "//!<Button>\nbutton1.SetBounds(100, 100, 80, 30);\nthis->Add(&button1);\n"
      "//!<Button>\nbutton2.SetBounds(201, 203, 50, 20);\nthis->Add(&button2);\n";
  const std::vector<std::pair<int, Rect>> rows = {
      {cAlignLeft, {100, 203, 50, 20}},  {cAlignRight, {130, 203, 50, 20}},
      {cAlignTop, {201, 100, 50, 20}},   {cAlignBottom, {201, 110, 50, 20}},
      {cEqualWidth, {201, 203, 80, 20}}, {cEqualHeight, {201, 203, 50, 30}},
      {cEqualSize, {201, 203, 80, 30}}};
  Design(Names(2), init, [&] {
    for (const auto& [command, after] : rows) {
      Click(400, 300);
      Click(140, 115);
      Click(226, 213, Qt::ControlModifier);
      frame->Command(command);
      EXPECT_EQ(At("button1"), (Rect{100, 100, 80, 30})) << command;
      EXPECT_EQ(At("button2"), after) << command;
      Type(Qt::Key_Z, Qt::ControlModifier);
    }
    Click(300, 300);
    frame->Command(cAlignToGrid);
    EXPECT_EQ(At("button2"), (Rect{200, 204, 52, 20}));
  });
}

TEST_F(FormEditorTest, Space_NeedsThreeAndKeepsTheOrderOfSelecting) {
  const std::string init =
      "//!<Button>\nbutton1.SetBounds(10, 10, 50, 20);\nthis->Add(&button1);\n"
      "//!<Button>\nbutton2.SetBounds(290, 50, 60, 20);\nthis->Add(&button2);\n"
      "//!<Button>\nbutton3.SetBounds(80, 90, 70, 20);\nthis->Add(&button3);\n";
  Design(Names(3), init, [&] {
    Click(30, 20);
    Click(320, 60, Qt::ControlModifier);
    frame->Command(cSpaceHoriz);
    EXPECT_EQ(At("button2").left, 290);
    EXPECT_FALSE(frame->History().CanUndo());
    Click(110, 100, Qt::ControlModifier);
    frame->Command(cSpaceHoriz);
    EXPECT_EQ(At("button1").left, 10);
    EXPECT_EQ(At("button2").left, 10 + 50 + 80);
    EXPECT_EQ(At("button3").left, 10 + 50 + 80 + 60 + 80);
    frame->Command(cSpaceVert);
    EXPECT_EQ(At("button2").top, 50);
  });
}

TEST_F(FormEditorTest, Keys_MoveSizeAndDelete) {
  Design(Names(2), Buttons(2), [&] {
    Click(60, 52);
    Click(60, 92, Qt::ControlModifier);
    Type(Qt::Key_Left, Qt::ControlModifier);
    Type(Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(At("button1"), (Rect{39, 39, 80, 24}));
    EXPECT_EQ(At("button2"), (Rect{39, 79, 80, 24}));
    Type(Qt::Key_Right, Qt::ControlModifier);
    Type(Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(At("button1"), (Rect{40, 40, 80, 24}));
    Type(Qt::Key_Left, Qt::ShiftModifier);
    Type(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(At("button1"), (Rect{40, 40, 79, 23}));
    Type(Qt::Key_Right, Qt::ShiftModifier);
    Type(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(At("button2"), (Rect{40, 80, 80, 24}));
    Type(Qt::Key_Delete);
    EXPECT_THAT(AllNames(), IsEmpty());
    EXPECT_THAT(Selected(), IsEmpty());
    Type(Qt::Key_Delete);
    EXPECT_EQ(Status(1), "TestForm");
  });
}

TEST_F(FormEditorTest, Delete_TakesWhatIsInAContainerToo) {
  Design("Button inner;\nPanel panel1;\nPanel panel2;\nButton after;\n",
         "//!<Panel>\npanel1.SetBounds(100, 100, 200, 150);\nthis->Add(&panel1);\n"
         "//!<Panel>\npanel2.SetBounds(10, 10, 100, 100);\npanel1.Add(&panel2);\n"
         "//!<Button>\ninner.SetBounds(10, 10, 60, 24);\npanel2.Add(&inner);\n"
         "//!<Button>\nafter.SetBounds(10, 10, 60, 24);\nthis->Add(&after);\n",
         [&] {
           Click(290, 240);
           Type(Qt::Key_Delete);
           EXPECT_THAT(AllNames(), ElementsAre("after"));
           Click(20, 20);
           EXPECT_THAT(Selected(), ElementsAre("after"));
         });
}

TEST_F(FormEditorTest, ControlWithoutAParent_IsToldAndKept) {
  Design("Button lost;\nButton inLost;\n",
         "//!<Button>\nlost.SetBounds(10, 10, 60, 24);\nlost.Add(&inLost);\n", [&] {
           EXPECT_THAT(AllNames(), ElementsAre("lost", "inLost"));
           EXPECT_EQ(Rec("lost").ctrl, nullptr);
         });
  ASSERT_FALSE(dialogs.texts.empty());
  EXPECT_THAT(dialogs.texts.front(), testing::HasSubstr("Control: lost has no parent!"));
}

}  // namespace
}  // namespace zendry
