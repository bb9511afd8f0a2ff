#include "TabCtrl.h"

#include <gtest/gtest.h>

#include <QTabBar>

#include "Application.h"
#include "Edit.h"
#include "Form.h"
#include "GuiDriver.h"
#include "TabDrag.h"

namespace mavro {
namespace {

// A form filled by tabs with three pages, each with a line to type in, that writes down events.
struct TabForm : Form {
  std::unique_ptr<TabCtrl> tabs = std::make_unique<TabCtrl>();
  std::unique_ptr<TabPage> pages[3];
  Edit edits[3];
  std::string log;

  TabForm() {
    SetBounds(0, 0, 400, 240);
    tabs->dock = Dock::cFill;
    Add(tabs.get());
    for (int i = 0; i < 3; ++i) {
      pages[i] = std::make_unique<TabPage>();
      pages[i]->text = "Page " + std::to_string(i);
      edits[i].dock = Dock::cTop;
      pages[i]->Add(&edits[i]);
      tabs->Add(pages[i].get());
    }
    tabs->onChange.Add_H(this, &TabForm::Changed);
    tabs->onCloseRequest.Add_H(this, &TabForm::CloseRequested);
  }
  void Changed(NotifyArgs& args) { log += "change " + std::to_string(args.value) + "; "; }
  void CloseRequested(NotifyArgs& args) { log += "close " + std::to_string(args.value) + "; "; }

  QTabBar* Row() { return test::WidgetOf(*tabs)->findChild<QTabBar*>(); }
  QPoint PlaceOf(int tab) {
    return Row()->mapTo(test::WidgetOf(*tabs), Row()->tabRect(tab).center());
  }
  void ClickTab(int tab, Qt::MouseButton button = Qt::LeftButton) {
    test::Click(*tabs, PlaceOf(tab), button);
  }
  // The pages that are to be seen, say "1".
  std::string ShownPages() {
    std::string shown;
    for (int i = 0; i < 3; ++i)
      if (pages[i] && pages[i]->impl->hwnd && test::WidgetOf(*pages[i])->isVisible())
        shown += std::to_string(i);
    return shown;
  }
};

TEST(TabCtrl, Add_BeforeTheWindow_FirstPageIsSelected) {
  TabForm form;
  EXPECT_EQ(form.tabs->selectedIndex, 0);
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.ShownPages(), "0");
    EXPECT_EQ(form.Row()->count(), 3);
    EXPECT_EQ(form.Row()->tabText(2), "Page 2");
    EXPECT_EQ(form.pages[0]->state, cShown);
    EXPECT_EQ(form.pages[1]->state, cHidden);
  });
  EXPECT_EQ(form.log, "");
}

TEST(TabCtrl, Page_FillsTheAreaBelowTheTabs) {
  TabForm form;
  test::RunForm(form, false, [&] {
    const QWidget* page = test::WidgetOf(*form.pages[0]);
    const QWidget* all = test::WidgetOf(*form.tabs);
    EXPECT_EQ(page->width(), all->width());
    EXPECT_EQ(page->height(), all->height() - form.Row()->height());
    EXPECT_EQ(form.edits[0].width, form.pages[0]->width);
    form.SetSize(600, 300);
    EXPECT_EQ(page->width(), 600);
    EXPECT_EQ(form.edits[0].width, 600);
  });
}

TEST(TabCtrl, Page_ShownAfterAResize_IsPlacedAgain) {
  TabForm form;
  test::RunForm(form, false, [&] {
    form.SetSize(640, 300);
    form.ClickTab(2);
    EXPECT_EQ(test::WidgetOf(*form.pages[2])->width(), 640);
    EXPECT_EQ(test::WidgetOf(form.edits[2])->width(), 640);
  });
}

TEST(TabCtrl, Click_ShowsThePageAndTells) {
  TabForm form;
  test::RunForm(form, false, [&] {
    form.ClickTab(1);
    EXPECT_EQ(form.tabs->selectedIndex, 1);
    EXPECT_EQ(form.ShownPages(), "1");
    form.ClickTab(1);
  });
  EXPECT_EQ(form.log, "change 1; ");
}

TEST(TabCtrl, SelectedIndex_Assigned_ShowsThePageAndTells) {
  TabForm form;
  test::RunForm(form, false, [&] {
    form.tabs->selectedIndex = 2;
    EXPECT_EQ(form.ShownPages(), "2");
    EXPECT_EQ(form.Row()->currentIndex(), 2);
    form.tabs->selectedIndex = 2;
  });
  EXPECT_EQ(form.log, "change 2; ");
}

TEST(TabCtrl, SelectedIndex_AssignedBeforeTheWindow_SendsNoEvent) {
  TabForm form;
  form.tabs->selectedIndex = 1;
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.ShownPages(), "1");
    EXPECT_EQ(form.Row()->currentIndex(), 1);
  });
  EXPECT_EQ(form.log, "");
}

TEST(TabCtrl, SelectedIndex_AssignedBeforeThePages_SelectsThePageWhenItComes) {
  TabCtrl tabs;
  tabs.selectedIndex = 1;
  TabPage a, b;
  tabs.Add(&a);
  tabs.Add(&b);
  EXPECT_EQ(tabs.selectedIndex, 1);
  EXPECT_FALSE(a.visible);
  EXPECT_TRUE(b.visible);
}

TEST(TabCtrl, RunAgain_KeepsThePage) {
  TabForm form;
  test::RunForm(form, false, [&] { form.ClickTab(2); });
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.ShownPages(), "2");
    EXPECT_EQ(form.Row()->currentIndex(), 2);
    form.ClickTab(0);
    EXPECT_EQ(form.ShownPages(), "0");
  });
}

TEST(TabCtrl, CtrlPageKeys_SwitchAroundTheEnds) {
  TabForm form;
  test::RunForm(form, false, [&] {
    form.edits[0].Focus();
    test::Key(form, Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(form.tabs->selectedIndex, 1);
    EXPECT_TRUE(form.edits[1].IsFocused());
    test::Key(form, Qt::Key_PageUp, Qt::ControlModifier);
    test::Key(form, Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_EQ(form.tabs->selectedIndex, 2);
    test::Key(form, Qt::Key_PageDown, Qt::ControlModifier);
  });
  EXPECT_EQ(form.log, "change 1; change 0; change 2; change 0; ");
}

TEST(TabCtrl, Switching_FocusReturnsToWhereItWasOnThePage) {
  TabForm form;
  Edit second;
  second.dock = Dock::cTop;
  form.pages[0]->Add(&second);
  test::RunForm(form, false, [&] {
    second.Focus();
    form.tabs->selectedIndex = 1;
    EXPECT_TRUE(form.edits[1].IsFocused());
    form.tabs->selectedIndex = 0;
    EXPECT_TRUE(second.IsFocused());
  });
}

TEST(TabCtrl, Switching_WhatHadTheFocusIsGone_FirstControlGetsIt) {
  TabForm form;
  auto second = std::make_unique<Edit>();
  second->dock = Dock::cTop;
  form.pages[0]->Add(second.get());
  test::RunForm(form, false, [&] {
    second->Focus();
    form.tabs->selectedIndex = 1;
    second.reset();
    form.tabs->selectedIndex = 0;
    EXPECT_TRUE(form.edits[0].IsFocused());
  });
}

TEST(TabCtrl, Text_OfAPage_IsItsCaption) {
  TabForm form;
  form.tabs->closable = true;
  test::RunForm(form, false, [&] {
    form.pages[1]->text = "a & b.cpp";
    EXPECT_EQ(form.Row()->tabText(1), "a && b.cpp");
    EXPECT_EQ(form.Row()->tabToolTip(1), "a & b.cpp");
    EXPECT_EQ(form.pages[1]->text.Get(), "a & b.cpp");
  });
  test::RunForm(form, false, [&] { EXPECT_EQ(form.Row()->tabText(1), "a && b.cpp"); });
}

TEST(TabCtrl, Text_OddBytes_ComeBackUnchanged) {
  TabForm form;
  test::RunForm(form, false, [&] {
    form.pages[1]->text = "caf\xE9.cpp";
    EXPECT_EQ(form.pages[1]->text.Get(), "caf\xE9.cpp");
  });
}

TEST(TabCtrl, Text_LikeMarkup_ToolTipShowsItAsItIs) {
  TabForm form;
  test::RunForm(form, false, [&] {
    form.pages[1]->text = "<b>x</b>.cpp";
    EXPECT_TRUE(form.Row()->tabToolTip(1).contains("&lt;b&gt;"));
  });
}

TEST(TabCtrl, Tab_OfALongCaption_IsLimited) {
  TabForm form;
  test::RunForm(form, false, [&] {
    form.pages[1]->text = std::string(300, 'm');
    EXPECT_LE(form.Row()->tabRect(1).width(), 220);
    EXPECT_EQ(form.Row()->tabToolTip(1).size(), 300);
  });
}

TEST(TabCtrl, Add_BeforeTheSelectedPage_SelectionStaysWithItsPage) {
  TabForm form;
  TabPage early;
  early.text = "Early";
  test::RunForm(form, false, [&] {
    form.tabs->selectedIndex = 1;
    form.log.clear();
    form.tabs->Add(&early, 0);
    EXPECT_EQ(form.tabs->selectedIndex, 2);
    EXPECT_EQ(form.Row()->currentIndex(), 2);
    EXPECT_EQ(form.Row()->tabText(0), "Early");
    EXPECT_EQ(form.pages[0]->pageIndex, 1);
    EXPECT_EQ(form.ShownPages(), "1");
    form.ClickTab(0);
    EXPECT_TRUE(test::WidgetOf(early)->isVisible());
  });
  EXPECT_EQ(form.log, "change 0; ");
}

TEST(TabCtrl, Add_FirstPageInARunningControl_IsShown) {
  TabForm form;
  for (auto& page : form.pages) page.reset();
  TabPage only;
  only.text = "Only";
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.tabs->selectedIndex, -1);
    form.tabs->Add(&only);
    EXPECT_EQ(form.tabs->selectedIndex, 0);
    EXPECT_TRUE(test::WidgetOf(only)->isVisible());
    EXPECT_EQ(only.width, form.tabs->width);
  });
  EXPECT_EQ(form.log, "");
}

TEST(TabCtrl, RemovePage_Selected_TheNextOneIsShown) {
  TabForm form;
  test::RunForm(form, false, [&] {
    form.tabs->selectedIndex = 1;
    form.log.clear();
    form.tabs->RemovePage(1);
    EXPECT_EQ(form.tabs->selectedIndex, 1);
    EXPECT_EQ(form.ShownPages(), "2");
    form.tabs->RemovePage(1);
    EXPECT_EQ(form.ShownPages(), "0");
    form.tabs->RemovePage(0);
    EXPECT_EQ(form.tabs->selectedIndex, -1);
    EXPECT_EQ(form.tabs->TabCount(), 0);
  });
  EXPECT_EQ(form.log, "");
}

TEST(TabCtrl, RemovePage_BeforeTheSelected_SelectionStaysWithItsPage) {
  TabForm form;
  test::RunForm(form, false, [&] {
    form.tabs->selectedIndex = 2;
    form.tabs->RemovePage(0);
    EXPECT_EQ(form.tabs->selectedIndex, 1);
    EXPECT_EQ(form.ShownPages(), "2");
  });
}

TEST(TabCtrl, RemovePage_PageCanBeAddedAgain) {
  TabForm form;
  test::RunForm(form, false, [&] {
    form.tabs->RemovePage(0);
    EXPECT_EQ(form.pages[0]->tabs, nullptr);
    EXPECT_EQ(form.pages[0]->state, cNoWindow);
    form.tabs->Add(form.pages[0].get());
    form.tabs->selectedIndex = 2;
    EXPECT_EQ(form.ShownPages(), "0");
  });
}

TEST(TabCtrl, DeletedPage_LeavesTheControl) {
  TabForm form;
  test::RunForm(form, false, [&] {
    form.pages[0].reset();
    EXPECT_EQ(form.Row()->count(), 2);
    EXPECT_EQ(form.ShownPages(), "1");
  });
}

TEST(TabCtrl, DeletedControl_LetsItsPagesGo) {
  TabForm form;
  form.tabs.reset();
  EXPECT_EQ(form.pages[0]->tabs, nullptr);
  EXPECT_EQ(form.pages[0]->parent, nullptr);
}

TEST(TabCtrl, CloseButtonAndMiddleButton_AskToClose) {
  TabForm form;
  form.tabs->closable = true;
  test::RunForm(form, false, [&] {
    form.ClickTab(2, Qt::MiddleButton);
    QWidget* button = form.Row()->tabButton(1, QTabBar::RightSide);
    ASSERT_NE(button, nullptr);
    test::Click(*form.tabs, button->mapTo(test::WidgetOf(*form.tabs), button->rect().center()));
    EXPECT_EQ(form.tabs->TabCount(), 3);
  });
  EXPECT_EQ(form.log, "close 2; close 1; ");
}

TEST(TabCtrl, NotClosable_MiddleButtonDoesNothing) {
  TabForm form;
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.Row()->tabButton(1, QTabBar::RightSide), nullptr);
    form.ClickTab(2, Qt::MiddleButton);
  });
  EXPECT_EQ(form.log, "");
}

TEST(TabCtrl, ChildrenOfAPage_ReachTheirHandlers) {
  struct EditForm : TabForm {
    int changes = 0;
    EditForm() { edits[1].onChange.Add_H(this, &EditForm::Typed); }
    void Typed(NotifyArgs&) { ++changes; }
  } form;
  test::RunForm(form, false, [&] {
    form.tabs->selectedIndex = 1;
    form.edits[1].Focus();
    test::Key(form, Qt::Key_X);
  });
  EXPECT_EQ(form.changes, 1);
}

TEST(TabCtrl, HiddenControl_ShowsItsPageWhenItIsShown) {
  TabForm form;
  form.tabs->visible = false;
  test::RunForm(form, false, [&] {
    form.tabs->selectedIndex = 1;
    EXPECT_EQ(form.ShownPages(), "");
    form.tabs->visible = true;
    RunPendingLayout(&form);
    EXPECT_EQ(form.ShownPages(), "1");
    EXPECT_EQ(test::WidgetOf(*form.pages[1])->width(), 400);
  });
}

// Destroys a page or the control in one of its own events.
struct DoomedForm : TabForm {
  void DropPage(NotifyArgs& args) { pages[args.value].reset(); }
  void DropAll(NotifyArgs&) { tabs.reset(); }
  void Back(NotifyArgs&) { tabs->selectedIndex = 0; }
};

TEST(TabCtrl, Page_DestroyedInItsCloseRequest) {
  DoomedForm form;
  form.tabs->closable = true;
  form.tabs->onCloseRequest.Add_H(&form, &DoomedForm::DropPage);
  test::RunForm(form, false, [&] {
    form.ClickTab(0, Qt::MiddleButton);
    EXPECT_EQ(form.tabs->TabCount(), 2);
    EXPECT_EQ(form.ShownPages(), "1");
  });
}

TEST(TabCtrl, Page_DestroyedInOnChange) {
  DoomedForm form;
  form.tabs->onChange.Add_H(&form, &DoomedForm::DropPage);
  test::RunForm(form, false, [&] {
    form.ClickTab(1);
    EXPECT_EQ(form.ShownPages(), "2");
  });
}

TEST(TabCtrl, Destroyed_InOnChange) {
  DoomedForm form;
  form.tabs->onChange.Add_H(&form, &DoomedForm::DropAll);
  test::RunForm(form, false, [&] { form.ClickTab(1); });
  EXPECT_EQ(form.tabs, nullptr);
}

TEST(TabCtrl, Destroyed_WhenThePageIsShown) {
  DoomedForm form;
  test::RunForm(form, false, [&] {
    form.pages[1]->onVisible.Add_H(&form, &DoomedForm::DropAll);
    form.tabs->selectedIndex = 1;
  });
  EXPECT_EQ(form.tabs, nullptr);
  EXPECT_EQ(form.log, "");
}

TEST(TabCtrl, Page_DestroyedWhenItLosesTheFocus) {
  struct FocusForm : DoomedForm {
    void DropFirst(NotifyArgs&) { pages[0].reset(); }
  } form;
  test::RunForm(form, false, [&] {
    form.edits[0].onLostFocus.Add_H(&form, &FocusForm::DropFirst);
    form.edits[0].Focus();
    form.tabs->selectedIndex = 1;
    EXPECT_EQ(form.pages[0], nullptr);
    EXPECT_EQ(form.ShownPages(), "1");
    EXPECT_EQ(form.tabs->selectedIndex, 0);
  });
}

TEST(TabCtrl, OnChange_HandlerSelectsAnotherPage) {
  DoomedForm form;
  form.tabs->onChange.Add_H(&form, &DoomedForm::Back);
  test::RunForm(form, false, [&] {
    form.ClickTab(1);
    EXPECT_EQ(form.ShownPages(), "0");
    EXPECT_EQ(form.Row()->currentIndex(), 0);
  });
}

// Tabs that can be dragged; moves are written down with the pages as they are then.
struct MovableForm : TabForm {
  MovableForm() {
    tabs->movable = true;
    tabs->closable = true;
    tabs->onMovePage.Add_H(this, &MovableForm::Moved);
  }
  void Moved(ItemArgs& args) {
    log += "move " + std::to_string(args.row) + " to " + std::to_string(args.value) + " (" +
           Order() + "); ";
  }
  std::string Order() {
    std::string order;
    for (int i = 0; i < tabs->TabCount(); ++i)
      for (int page = 0; page < 3; ++page)
        if (tabs->GetPage(i) == pages[page].get()) order += std::to_string(page);
    return order;
  }
  void DragTab(int tab, int to) { test::TabDrag(*tabs, tab).MoveTo(to); }
};

TEST(TabCtrl, DraggedTab_TakesItsPageAlong) {
  MovableForm form;
  test::RunForm(form, false, [&] {
    const QImage before = form.Row()->grab().toImage();
    {
      test::TabDrag drag(*form.tabs, 0);
      drag.MoveTo(1);
      drag.MoveBy(30);
      test::Shot(form, "tab-dragged");
      drag.MoveTo(2);
    }
    EXPECT_NE(form.Row()->grab().toImage(), before);
    EXPECT_EQ(form.Order(), "120");
    EXPECT_EQ(form.pages[0]->pageIndex, 2);
    EXPECT_EQ(form.Row()->tabText(0), "Page 1");
    EXPECT_EQ(form.Row()->tabText(2), "Page 0");
    test::Shot(form, "tab-dropped");
  });
  EXPECT_EQ(form.log, "move 0 to 1 (102); move 1 to 2 (120); ");
}

TEST(TabCtrl, DraggedTab_StaysSelected_AndTheOthersKeepTheirPages) {
  MovableForm form;
  test::RunForm(form, false, [&] {
    form.DragTab(2, 0);
    EXPECT_EQ(form.Order(), "201");
    EXPECT_EQ(form.tabs->selectedIndex, 0);
    EXPECT_EQ(form.Row()->currentIndex(), 0);
    EXPECT_EQ(form.ShownPages(), "2");
    form.ClickTab(1);
    EXPECT_EQ(form.ShownPages(), "0");
    form.ClickTab(2);
    EXPECT_EQ(form.ShownPages(), "1");
  });
  EXPECT_EQ(form.log, "change 2; move 2 to 1 (021); move 1 to 0 (201); change 1; change 2; ");
}

TEST(TabCtrl, DraggedTab_CaptionPictureAndCloseButtonGoWithIt) {
  MovableForm form;
  form.tabs->imageList = 1;
  form.tabs->SetPageImage(0, 1);
  test::RunForm(form, false, [&] {
    form.DragTab(0, 1);
    form.pages[0]->text = "First";
    EXPECT_EQ(form.Row()->tabText(1), "First");
    EXPECT_TRUE(form.Row()->tabIcon(0).isNull());
    EXPECT_FALSE(form.Row()->tabIcon(1).isNull());
    form.log.clear();
    QWidget* button = form.Row()->tabButton(1, QTabBar::RightSide);
    test::Click(*form.tabs, button->mapTo(test::WidgetOf(*form.tabs), button->rect().center()));
    form.ClickTab(0, Qt::MiddleButton);
  });
  EXPECT_EQ(form.log, "close 1; close 0; ");
}

TEST(TabCtrl, DraggedTab_AddingAndRemovingGoesByTheNewOrder) {
  MovableForm form;
  TabPage early;
  test::RunForm(form, false, [&] {
    form.DragTab(0, 2);
    form.tabs->RemovePage(0);
    EXPECT_EQ(form.Order(), "20");
    EXPECT_EQ(form.ShownPages(), "0");
    form.tabs->Add(&early, 1);
    EXPECT_EQ(form.tabs->selectedIndex, 2);
    form.tabs->selectedIndex = 0;
    EXPECT_EQ(form.ShownPages(), "2");
  });
  EXPECT_EQ(form.tabs->children[1], &early);
}

TEST(TabCtrl, DraggedTab_PageColoursAndTypingGoOn) {
  MovableForm form;
  form.pages[1]->backColor = Color::cRed;
  test::RunForm(form, false, [&] {
    form.DragTab(1, 0);
    form.edits[1].Focus();
    test::Key(form, Qt::Key_X);
    EXPECT_EQ(form.edits[1].text.Get(), "x");
    const QImage shot = test::WidgetOf(*form.pages[1])->grab().toImage();
    EXPECT_EQ(shot.pixelColor(shot.width() / 2, shot.height() - 5), QColor(255, 0, 0));
  });
}

TEST(TabCtrl, RunAgain_KeepsTheOrder) {
  MovableForm form;
  test::RunForm(form, false, [&] { form.DragTab(0, 2); });
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.Row()->tabText(2), "Page 0");
    EXPECT_EQ(form.Row()->currentIndex(), 2);
    EXPECT_EQ(form.ShownPages(), "0");
  });
}

TEST(TabCtrl, NotMovable_TabsStayWhereTheyAre) {
  MovableForm form;
  form.tabs->movable = false;
  test::RunForm(form, false, [&] {
    form.DragTab(0, 2);
    EXPECT_EQ(form.Order(), "012");
    EXPECT_EQ(form.Row()->tabText(0), "Page 0");
  });
  EXPECT_EQ(form.log, "");
}

TEST(TabCtrl, Page_DestroyedWhileItIsDragged) {
  struct DoomedMove : MovableForm {
    void DropFirst(ItemArgs&) { pages[0].reset(); }
  } form;
  form.tabs->onMovePage.Add_H(&form, &DoomedMove::DropFirst);
  test::RunForm(form, false, [&] {
    form.DragTab(0, 2);
    EXPECT_EQ(form.Order(), "12");
    EXPECT_EQ(form.Row()->count(), 2);
    EXPECT_EQ(form.tabs->selectedIndex, form.Row()->currentIndex());
  });
}

TEST(TabCtrl, SelectedIndex_AssignedWhileATabIsDragged_EndsTheDrag) {
  MovableForm form;
  test::RunForm(form, false, [&] {
    test::TabDrag drag(*form.tabs, 0);
    drag.MoveTo(1);
    form.tabs->selectedIndex = 2;
    EXPECT_EQ(form.Row()->currentIndex(), 2);
    EXPECT_EQ(form.ShownPages(), "2");
    drag.MoveBy(90);
    EXPECT_EQ(form.Order(), "102");
  });
}

TEST(TabCtrl, Destroyed_WhileATabIsDragged) {
  struct DoomedMove : MovableForm {
    void DropAll(ItemArgs&) { tabs.reset(); }
  } form;
  form.tabs->onMovePage.Add_H(&form, &DoomedMove::DropAll);
  test::RunForm(form, false, [&] { form.DragTab(0, 1); });
  EXPECT_EQ(form.tabs, nullptr);
}

TEST(TabCtrlDeathTest, IndexesOutOfRange) {
  TabForm form;
  TabPage page;
  EXPECT_DEATH(form.tabs->Add(&page, 3),
               "index == -1 \\|\\| \\( index >= 0 && index < TabCount\\(\\) \\)");
  EXPECT_DEATH(form.tabs->RemovePage(3), "ix>-1 && ix<tabs.size\\(\\)");
  EXPECT_DEATH(form.tabs->GetPage(-1), "ix>-1 && ix<tabs.size\\(\\)");
  EXPECT_DEATH(form.tabs->selectedIndex = -1, "vselectedIndex >= 0");
  EXPECT_DEATH(form.tabs->Add(form.pages[0].get()), "ctrl->parent==NULL");
  test::RunForm(form, false,
                [&] { EXPECT_DEATH(form.tabs->selectedIndex = 3, "ix>-1 && ix<tabs.size\\(\\)"); });
}

TEST(TabCtrl, ImageList_ShowsThePagesPictures) {
  TabForm form;
  form.tabs->imageList = 1;
  form.tabs->SetPageImage(1, 1);
  test::RunForm(form, false, [&] {
    EXPECT_TRUE(form.Row()->tabIcon(0).isNull());
    EXPECT_FALSE(form.Row()->tabIcon(1).isNull());
    form.tabs->SetPageImage(0, 2);
    EXPECT_FALSE(form.Row()->tabIcon(0).isNull());
    form.tabs->SetPageImage(0, -1);
    EXPECT_TRUE(form.Row()->tabIcon(0).isNull());
  });
}

TEST(TabCtrlDeath, ImageList_SetTwiceOrMissing_Stops) {
  TabForm form;
  EXPECT_DEATH(form.tabs->SetPageImage(0, 1), "imageList != NULL");
  form.tabs->imageList = 1;
  EXPECT_DEATH(form.tabs->imageList = 2, "imageList == 0");
  EXPECT_DEATH(form.tabs->SetPageImage(3, 1), "ix>-1 && ix<tabs.size\\(\\)");
}

TEST(TabCtrl, Mnemonics_OnlyWhereTabsCantBeClosed) {
  TabForm form;
  form.pages[1]->text = "&Second";
  test::RunForm(form, false, [&] {
    test::Key(form, Qt::Key_S, Qt::AltModifier);
    EXPECT_EQ(form.tabs->selectedIndex, 1);
    form.tabs->selectedIndex = 0;
    form.tabs->closable = true;
    test::Key(form, Qt::Key_S, Qt::AltModifier);
    EXPECT_EQ(form.tabs->selectedIndex, 0);
  });
}

}  // namespace
}  // namespace mavro
