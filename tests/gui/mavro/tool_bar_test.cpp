#include "ToolBar.h"

#include <gtest/gtest.h>

#include <QMenu>
#include <QToolButton>

#include "Application.h"
#include "Form.h"
#include "GuiDriver.h"
#include "ListBox.h"
#include "Menu.h"
#include "Strips.h"
#include "ToolRowPlan.h"

namespace mavro {
namespace {

struct Acts : ActionList {
  std::string log;
  Action *open = nullptr, *save = nullptr, *design = nullptr;
  Acts() {
    SetTarget(this, &Acts::OnCommand);
    open = Add(1302, "&Open...", cControlKey | 'O');
    save = Add(1303, "&Save");
    design = Add(3290, "Open Form Designer ", 0x7A);
  }
  void OnCommand(int id) { log += std::to_string(id) + "; "; }
};

// A form with a tool bar: open, save, separator, a mode selector, a plain button.
struct BarForm : Form {
  Acts acts;
  std::unique_ptr<ToolBar> bar = std::make_unique<ToolBar>();
  ComboBox mode;
  std::string log;

  BarForm() {
    SetBounds(0, 0, 400, 200);
    bar->dock = Dock::cTop;
    Add(bar.get());
    bar->Add(acts.open, 2);
    bar->Add(acts.save, 4);
    bar->AddSeparator();
    mode.items.Add("Release");
    mode.items.Add("Debug");
    mode.chooseOnly = true;
    mode.selectedIndex = 0;
    mode.SetSize(100, 24);
    bar->AddControl(&mode);
    bar->AddButton(5, "Plain");
    bar->onClick.Add_H(this, &BarForm::Clicked);
  }
  void Clicked(NotifyArgs& args) { log += "command " + std::to_string(args.value) + "; "; }

  // The button of a row by its tool tip; null when there is none.
  QToolButton* Button(const QString& tip) {
    for (QToolButton* button : test::WidgetOf(*bar)->findChildren<QToolButton*>())
      if (button->toolTip() == tip && !button->isHidden()) return button;
    return nullptr;
  }
  void ClickButton(const QString& tip) {
    QToolButton* button = Button(tip);
    ASSERT_NE(button, nullptr) << tip.toStdString();
    test::Click(*bar, button->geometry().center());
  }
};

TEST(ToolBar, Click_CallsTheActionOfTheRow) {
  BarForm form;
  test::RunForm(form, false, [&] {
    form.ClickButton("Save");
    form.ClickButton("Open (Ctrl+O)");
  });
  EXPECT_EQ(form.acts.log, "1303; 1302; ");
  EXPECT_EQ(form.log, "");
}

TEST(ToolBar, Click_WithoutAction_TellsTheNumberOfThePicture) {
  BarForm form;
  test::RunForm(form, false, [&] { form.ClickButton("Plain"); });
  EXPECT_EQ(form.log, "command 5; ");
}

TEST(ToolBar, Click_WithoutAction_TellsTheCommandThatWasGiven) {
  BarForm form;
  form.bar->AddButton(5, "Own", 77);
  form.bar->AddButton(5, "Zero", 0);
  form.bar->items.Add(_separator_);
  form.bar->items.Add(9, "Item");
  test::RunForm(form, false, [&] {
    for (const char* tip : {"Own", "Zero", "Item"}) form.ClickButton(tip);
  });
  EXPECT_EQ(form.log, "command 77; command 0; command 9; ");
}

TEST(ToolBar, Click_ActionWithoutHandler_TellsItsId) {
  BarForm form;
  ActionList list;
  form.bar->Add(list.Add(1000, "Nobody"), 6);
  test::RunForm(form, false, [&] { form.ClickButton("Nobody"); });
  EXPECT_EQ(form.log, "command 1000; ");
}

TEST(ToolBar, Click_DoesNotTakeTheFocus) {
  BarForm form;
  test::RunForm(form, false, [&] {
    form.mode.Focus();
    form.ClickButton("Save");
    EXPECT_TRUE(form.mode.IsFocused());
  });
}

TEST(ToolBar, Command_FromTheParent_GoesByTheRowRoute) {
  BarForm form;
  test::RunForm(form, false, [&] {
    SendMessage(form.impl->hwnd, WM_COMMAND, 0x1001, reinterpret_cast<Param>(form.bar->impl->hwnd));
  });
  EXPECT_EQ(form.acts.log, "1303; ");
}

TEST(ToolBar, Add_StoresTheImageUnlessNegative) {
  BarForm form;
  EXPECT_EQ(form.acts.open->image, 2);
  form.bar->Add(form.acts.open, -1);
  EXPECT_EQ(form.acts.open->image, 2);
  EXPECT_EQ(form.bar->GetRow(5).image, 2);
  EXPECT_EQ(form.acts.design->image, -2);
}

TEST(ToolBar, ToolTip_HasNoMnemonicNoDotsNoTrailingBlank) {
  BarForm form;
  form.bar->Add(form.acts.design, 0xB);
  test::RunForm(form, false, [&] { EXPECT_NE(form.Button("Open Form Designer (F11)"), nullptr); });
}

TEST(ToolBar, SetAction_ChangesCommandPictureAndToolTip) {
  BarForm form;
  test::RunForm(form, false, [&] {
    form.bar->SetAction(1, form.acts.design, 0x23);
    EXPECT_EQ(form.Button("Save"), nullptr);
    form.ClickButton("Open Form Designer (F11)");
    EXPECT_EQ(form.bar->GetRow(1).image, 0x23);
    form.bar->SetAction(1, form.acts.save, -1);
    EXPECT_EQ(form.bar->GetRow(1).image, 0x23);
  });
  EXPECT_EQ(form.acts.log, "3290; ");
}

TEST(ToolBar, SetAction_BeforeTheWindow_IsShownWithIt) {
  BarForm form;
  form.bar->SetAction(0, form.acts.design, -1);
  test::RunForm(form, false, [&] { form.ClickButton("Open Form Designer (F11)"); });
  EXPECT_EQ(form.acts.log, "3290; ");
}

TEST(ToolBar, Command_DisablesAndEnablesTheButton) {
  BarForm form;
  form.bar->Command(0, -1);
  test::RunForm(form, false, [&] {
    EXPECT_FALSE(form.Button("Open (Ctrl+O)")->isEnabled());
    form.ClickButton("Open (Ctrl+O)");
    EXPECT_EQ(form.acts.log, "");
    form.bar->Command(0, 1);
    form.bar->Enable(1, false);
    form.ClickButton("Open (Ctrl+O)");
    form.ClickButton("Save");
  });
  EXPECT_EQ(form.acts.log, "1302; ");
}

TEST(ToolBar, Control_StandsInTheRowAndReachesItsHandlers) {
  struct ModeForm : BarForm {
    ModeForm() { mode.onSelChanged.Add_H(this, &ModeForm::Changed); }
    void Changed(ItemArgs&) { log += "mode " + std::to_string(mode.selectedIndex) + "; "; }
  } form;
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.mode.parent, form.bar.get());
    EXPECT_EQ(form.mode.width, 100);
    EXPECT_GT(form.mode.left, form.Button("Save")->geometry().right());
    EXPECT_LT(form.mode.left + form.mode.width, form.Button("Plain")->geometry().left());
    form.mode.Focus();
    test::Key(form, Qt::Key_Down);
  });
  EXPECT_EQ(form.log, "mode 1; ");
}

TEST(ToolBar, Control_HiddenTakesNoRoom) {
  BarForm form;
  test::RunForm(form, false, [&] {
    const int before = form.Button("Plain")->x();
    form.mode.visible = false;
    RunPendingLayout(&form);
    RunPendingLayout(form.bar.get());
    EXPECT_EQ(form.Button("Plain")->x(), before - 106);
  });
}

TEST(ToolBar, Control_Destroyed_LeavesAGapForNobody) {
  BarForm form;
  auto extra = std::make_unique<ComboBox>();
  extra->SetSize(60, 24);
  form.bar->AddControl(extra.get());
  test::RunForm(form, false, [&] {
    extra.reset();
    form.bar->Rebuild();
    form.SetSize(500, 200);
    form.ClickButton("Save");
  });
  EXPECT_EQ(form.acts.log, "1303; ");
}

TEST(ToolBar, Narrow_MenuAtTheEndOffersTheRest) {
  BarForm form;
  form.SetSize(120, 200);
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.Button("Plain"), nullptr);
    EXPECT_LT(form.mode.left, 0);
    QToolButton* more = form.Button("More commands");
    ASSERT_NE(more, nullptr);
    EXPECT_LE(more->geometry().right(), 120);
    more->menu()->aboutToShow();
    ASSERT_EQ(more->menu()->actions().last()->text(), "Plain");
    more->menu()->actions().last()->trigger();
    form.SetSize(400, 200);
    EXPECT_NE(form.Button("Plain"), nullptr);
    EXPECT_GT(form.mode.left, 0);
    EXPECT_EQ(form.Button("More commands"), nullptr);
  });
  EXPECT_EQ(form.log, "command 5; ");
}

TEST(ToolBar, Images_SetTheHeightUnlessSomebodyHas) {
  test::RegisterStrips();
  ToolBar bar;
  bar.images = 0x6A;
  EXPECT_EQ(bar.height, 25);
  bar.images = 0x6E;
  EXPECT_EQ(bar.height, 32);
  bar.height = 22;
  bar.images = 0x6D;
  EXPECT_EQ(bar.height, 22);
}

TEST(ToolBar, Rows_AddedToARunningBar) {
  BarForm form;
  test::RunForm(form, false, [&] {
    form.bar->AddButton(7, "Late");
    form.ClickButton("Late");
  });
  EXPECT_EQ(form.log, "command 7; ");
}

TEST(ToolBar, Clear_RemovesButtonsAndControls) {
  BarForm form;
  test::RunForm(form, false, [&] {
    form.bar->Clear();
    EXPECT_EQ(form.bar->RowCount(), 0);
    EXPECT_EQ(form.mode.parent, nullptr);
    EXPECT_EQ(form.Button("Save"), nullptr);
    form.bar->AddButton(7, "First");
    form.ClickButton("First");
  });
  EXPECT_EQ(form.log, "command 7; ");
}

TEST(ToolBar, Rebuild_ShowsANewTextOfAnAction) {
  BarForm form;
  test::RunForm(form, false, [&] {
    form.acts.save->text = "Store";
    form.bar->Rebuild();
    form.ClickButton("Store");
  });
  EXPECT_EQ(form.acts.log, "1303; ");
}

TEST(ToolBar, ContextMenuCommand_IsNoRow) {
  BarForm form;
  ContextMenu popup;
  popup.actions.push_back(form.acts.save);
  form.bar->menu = &popup;
  test::RunForm(form, false, [&] { SendMessage(form.bar->impl->hwnd, WM_COMMAND, 1303, 0); });
  EXPECT_EQ(form.acts.log, "1303; ");
}

TEST(ToolBar, Text_LikeMarkup_ToolTipShowsItAsItIs) {
  BarForm form;
  form.bar->AddButton(7, "<b>x</b>");
  test::RunForm(form, false, [&] { EXPECT_EQ(form.Button("<b>x</b>"), nullptr); });
}

TEST(ToolBar, Destroyed_InOnClick) {
  struct DoomedForm : BarForm {
    void Doom(NotifyArgs&) { bar.reset(); }
  } form;
  form.bar->onClick.Add_H(&form, &DoomedForm::Doom);
  test::RunForm(form, false, [&] { form.ClickButton("Plain"); });
  EXPECT_EQ(form.bar, nullptr);
  EXPECT_EQ(form.mode.parent, nullptr);
}

TEST(ToolBar, Cleared_ByItsOwnAction) {
  struct ClearActs : ActionList {
    ToolBar* bar = nullptr;
    ClearActs() { SetTarget(this, &ClearActs::OnCommand); }
    void OnCommand(int) { bar->Clear(); }
  } acts;
  BarForm form;
  acts.bar = form.bar.get();
  form.bar->Add(acts.Add(900, "Clear"), 3);
  test::RunForm(form, false, [&] { form.ClickButton("Clear"); });
  EXPECT_EQ(form.bar->RowCount(), 0);
}

TEST(ToolBarDeathTest, RowsOutOfRange) {
  BarForm form;
  const char* message = "getMe\\(\\)->items.data\\[cmd\\].id == cmd";
  EXPECT_DEATH(form.bar->GetRow(5), message);
  EXPECT_DEATH(form.bar->Command(-1, 1), message);
  EXPECT_DEATH(form.bar->SetAction(9, form.acts.open, 1), message);
  EXPECT_DEATH(form.bar->impl->OnCommand(7, 0), message);
}

// A control among the wishes, with its size.
ToolRowWish ControlWish(int width, int height) {
  return {ToolRowWish::cControl, width, height};
}

TEST(ToolRowPlan, AllFit_StandSideBySideWithoutMore) {
  const ToolRowPlan plan = PlanToolRows(
      {{}, {ToolRowWish::cSeparator, 0, 0}, ControlWish(100, 24), {}}, 300, 32, 22, 22);
  EXPECT_EQ(plan.places[0], (Rect{2, 2, 28, 28}));
  EXPECT_EQ(plan.places[1], (Rect{30, 2, 9, 28}));
  EXPECT_EQ(plan.places[2], (Rect{42, 4, 100, 24}));
  EXPECT_EQ(plan.places[3], (Rect{145, 2, 28, 28}));
  EXPECT_EQ(plan.more, Rect());
}

TEST(ToolRowPlan, FirstWithoutRoom_TakesAllAfterItAlong) {
  const ToolRowPlan plan = PlanToolRows({{}, ControlWish(100, 24), {}}, 100, 32, 22, 22);
  EXPECT_EQ(plan.places[0].width, 28);
  EXPECT_EQ(plan.places[1], Rect());
  EXPECT_EQ(plan.places[2], Rect());
  EXPECT_EQ(plan.more, (Rect{82, 2, 18, 28}));
}

TEST(ToolRowPlan, HigherThanTheBar_IsCutToIt) {
  const ToolRowPlan plan = PlanToolRows({{}, ControlWish(50, 30)}, 200, 22, 16, 15);
  EXPECT_EQ(plan.places[0], (Rect{2, 0, 22, 21}));
  EXPECT_EQ(plan.places[1], (Rect{27, 0, 50, 22}));
}

TEST(ToolRowPlan, NoRoomAtAll_OnlyMoreIsLeft) {
  const ToolRowPlan plan = PlanToolRows({{}, {}}, 0, 32, 22, 22);
  EXPECT_EQ(plan.places[0], Rect());
  EXPECT_EQ(plan.more.left, 0);
  EXPECT_EQ(PlanToolRows({}, 0, 0, 22, 22).places.size(), 0u);
}

}  // namespace
}  // namespace mavro
