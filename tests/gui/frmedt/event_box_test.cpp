// A word of the toolkit, and a field of the registry's rows.

#include "frmedt/EventBox.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "DarkPalette.h"
#include "IdeDriver.h"
#include "Looks.h"
#include "NextDialog.h"
#include "frmedt/EventDlg.h"

namespace zendry {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class EventBoxTest : public testing::Test {
 protected:
  EventBoxTest() {
    form.SetBounds(100, 100, 320, 400);
    tabs.dock = mavro::Dock::cFill;
    tabs.Add(&events);
    form.Add(&tabs);
    data.root.declClass = "MyForm";
    data.handlers = {{"OnOk", "NotifyArgs"}, {"OnKeyOf", "KeyArgs"}, {"OnMore", "NotifyArgs"}};
    events.onBind = [this](CtrlRec&) { ++bound; };
    events.onRequestHandler = [this](auto& className, auto& method, auto& argType) {
      log.push_back("add " + className + "::" + method + "(" + argType + ")");
    };
    events.onRequestRemoval = [this](auto& className, auto& method, auto& argType) {
      log.push_back("remove " + className + "::" + method + "(" + argType + ")");
    };
  }
  CtrlRec& Add(const char* className, const char* name) {
    return data.AddControl(*FindClass(className), data.root, name);
  }
  int RowOf(std::string_view title) {
    for (int row = 0; row < events.box.Count(); ++row)
      if (events.box.Item(row).title.text == title) return row;
    ADD_FAILURE() << title;
    return 0;
  }
  std::string Shown(std::string_view title) { return events.box.Item(RowOf(title)).Value(); }
  // Presses a row's button by the keyboard, and runs the script with the dialog.
  void Ask(std::string_view title, const std::function<void(EventDlg&)>& script) {
    test::OnNextDialog(form, [&](mavro::Form& dialog) {
      auto* asked = dynamic_cast<EventDlg*>(&dialog);
      ASSERT_TRUE(asked);
      script(*asked);
    });
    events.box.FocusRow(RowOf(title));
    test::Key(form, Qt::Key_Space);
  }
  void Run(const std::function<void()>& script) { test::RunForm(form, true, script); }

  FormData data;
  EventBox events{data};
  mavro::TabCtrl tabs;
  mavro::Form form;
  std::vector<std::string> log;
  int bound = 0;
};

using Bindings = std::vector<EventBinding>;

TEST_F(EventBoxTest, Rows_AreTheEventsOfTheClass_WithTheirHandlers) {
  CtrlRec& rec = Add("Button", "button1");
  rec.events = {{"onClick", "Early"}, {"onClick", "Late"}};
  Run([&] {
    events.Show(rec);
    ASSERT_EQ(events.box.Count(), static_cast<int>(rec.classDef->events.size()));
    EXPECT_EQ(Shown("onClick"), "Late");
    EXPECT_EQ(Shown("onMove"), "");
    EXPECT_EQ(events.box.Item(RowOf("onContextMenu")).text, "MouseArgs");
    events.Clear();
    EXPECT_EQ(events.box.Count(), 0);
  });
}

TEST_F(EventBoxTest, SetHandler_BindsOrReplaces) {
  CtrlRec& rec = Add("Button", "button1");
  Run([&] {
    events.Show(rec);
    events.SetHandler(RowOf("onClick"), "One");
    events.SetHandler(RowOf("onMove"), "One");
    events.SetHandler(RowOf("onClick"), "Two");
    EXPECT_EQ(rec.events, (Bindings{{"onClick", "Two"}, {"onMove", "One"}}));
    EXPECT_EQ(Shown("onClick"), "Two");
    EXPECT_EQ(bound, 3);
    events.SetHandler(99, "Three");
    EXPECT_EQ(bound, 3);
  });
}

TEST_F(EventBoxTest, Disconnect_LeavesTheMethod) {
  CtrlRec& rec = Add("Button", "button1");
  rec.events = {{"onClick", "One"}};
  Run([&] {
    events.Show(rec);
    events.Disconnect(RowOf("onClick"));
    EXPECT_THAT(rec.events, IsEmpty());
    EXPECT_EQ(Shown("onClick"), "");
    events.Disconnect(RowOf("onClick"));
    EXPECT_EQ(bound, 1);
    EXPECT_THAT(log, IsEmpty());
  });
}

TEST_F(EventBoxTest, AddHandler_NamesAMethodAfterControlAndEvent) {
  CtrlRec& rec = Add("Button", "button1");
  Run([&] {
    events.Show(rec);
    events.AddHandler(RowOf("onClick"));
    EXPECT_EQ(Shown("onClick"), "Button1DoOnClick");
    events.Show(data.root);
    events.AddHandler(RowOf("onShow"));
    EXPECT_EQ(Shown("onShow"), "DoOnShow");
    EXPECT_THAT(log, ElementsAre("add MyForm::Button1DoOnClick(NotifyArgs)",
                                 "add MyForm::DoOnShow(NotifyArgs)"));
  });
}

TEST_F(EventBoxTest, RemoveHandler_DisconnectsFirst) {
  CtrlRec& rec = Add("Button", "button1");
  rec.events = {{"onClick", "One"}};
  Run([&] {
    events.Show(rec);
    events.RemoveHandler(RowOf("onMove"));
    EXPECT_THAT(log, IsEmpty()) << "nothing is bound";
    events.RemoveHandler(RowOf("onClick"));
    EXPECT_THAT(log, ElementsAre("remove MyForm::One(NotifyArgs)"));
    EXPECT_THAT(rec.events, IsEmpty());
  });
}

TEST_F(EventBoxTest, DoubleClick_AddsAHandler_WithoutADialog) {
  CtrlRec& rec = Add("Button", "button1");
  Run([&] {
    events.Show(rec);
    QWidget* button = test::WidgetOf(events.box.Item(RowOf("onClick")).button);
    QTest::mouseClick(button, Qt::LeftButton);
    QTest::mouseDClick(button, Qt::LeftButton);
    EXPECT_THAT(log, ElementsAre("add MyForm::Button1DoOnClick(NotifyArgs)"));
    EXPECT_EQ(mavro::activeForm, &form);
  });
}

TEST_F(EventBoxTest, Dialog_OffersTheMethodsOfTheEventsKind) {
  CtrlRec& rec = Add("Button", "button1");
  rec.events = {{"onClick", "OnMore"}};
  Run([&] {
    events.Show(rec);
    Ask("onClick", [&](EventDlg& dialog) {
      ASSERT_EQ(dialog.comboBox1.items.GetCount(), 2);
      EXPECT_EQ(dialog.comboBox1.text, "OnMore");
      EXPECT_THAT(test::UnreadableCaptions(dialog), IsEmpty());
      dialog.comboBox1.text = "OnOk";
      test::Key(dialog, Qt::Key_Return);
    });
    EXPECT_EQ(rec.events, (Bindings{{"onClick", "OnOk"}}));
  });
}

TEST_F(EventBoxTest, Dialog_ANewName_IsBoundByOkAndMadeByAddNew) {
  CtrlRec& rec = Add("Button", "button1");
  Run([&] {
    events.Show(rec);
    Ask("onClick", [](EventDlg& dialog) {
      QTest::keyClicks(QApplication::focusWidget(), "DoIt");
      test::Key(dialog, Qt::Key_Return);
    });
    EXPECT_EQ(rec.events, (Bindings{{"onClick", "DoIt"}}));
    EXPECT_THAT(log, IsEmpty());
    Ask("onMove", [](EventDlg& dialog) {
      QTest::keyClicks(QApplication::focusWidget(), "Moved");
      test::ClickToolRow(dialog.toolBar, 1);
    });
    EXPECT_THAT(log, ElementsAre("add MyForm::Moved(NotifyArgs)"));
  });
}

TEST_F(EventBoxTest, Dialog_Cancelled_ChangesNothing) {
  CtrlRec& rec = Add("Button", "button1");
  rec.events = {{"onClick", "OnOk"}};
  Run([&] {
    events.Show(rec);
    Ask("onClick", [](EventDlg& dialog) {
      dialog.comboBox1.text = "Other";
      test::Key(dialog, Qt::Key_Escape);
    });
    EXPECT_EQ(rec.events, (Bindings{{"onClick", "OnOk"}}));
    EXPECT_EQ(bound, 0);
  });
}

struct ToolCase {
  bool isBound;
  std::vector<bool> enabled;  // go to source, add, disconnect, separator, remove
};

TEST_F(EventBoxTest, DialogsButtons_DependOnTheHandler) {
  const ToolCase cases[] = {{false, {false, true, false, true, false}},
                            {true, {true, false, true, true, true}}};
  CtrlRec& rec = Add("Button", "button1");
  Run([&] {
    for (const ToolCase& one : cases) {
      rec.events.clear();
      if (one.isBound) rec.events = {{"onClick", "NoLongerThere"}};
      events.Show(rec);
      Ask("onClick", [&](EventDlg& dialog) {
        for (int row = 0; row < 5; ++row)
          EXPECT_EQ(dialog.toolBar.GetRow(row).enabled, one.enabled[static_cast<size_t>(row)])
              << one.isBound << row;
        test::Key(dialog, Qt::Key_Escape);
      });
    }
  });
}

TEST_F(EventBoxTest, DialogsButtons_Act) {
  CtrlRec& rec = Add("Button", "button1");
  Run([&] {
    for (const int tool : {2, 4, 0}) {
      rec.events = {{"onClick", "OnOk"}};
      events.Show(rec);
      Ask("onClick", [&](EventDlg& dialog) { test::ClickToolRow(dialog.toolBar, tool); });
      EXPECT_EQ(Shown("onClick"), tool == 0 ? "OnOk" : "") << tool;
    }
    EXPECT_THAT(log,
                ElementsAre("remove MyForm::OnOk(NotifyArgs)", "add MyForm::OnOk(NotifyArgs)"));
  });
}

TEST_F(EventBoxTest, TwoRowsOfOneEvent_ShowOneHandler) {
  CtrlRec& rec = Add("DataGrid", "grid1");
  Run([&] {
    events.Show(rec);
    int rows = 0;
    for (int row = 0; row < events.box.Count(); ++row)
      rows += events.box.Item(row).title.text == "onCreate";
    ASSERT_EQ(rows, 2);
    events.SetHandler(RowOf("onCreate"), "Made");
    for (int row = 0; row < events.box.Count(); ++row) {
      const bool isOfEvent = events.box.Item(row).title.text == "onCreate";
      EXPECT_EQ(events.box.Item(row).Value(), isOfEvent ? "Made" : "") << row;
    }
    EXPECT_EQ(rec.events.size(), 1u);
  });
}

class EventLook : public EventBoxTest, public testing::WithParamInterface<bool> {};

INSTANTIATE_TEST_SUITE_P(Looks, EventLook, testing::Bool(),
                         [](const auto& look) { return look.param ? "dark" : "light"; });

TEST_P(EventLook, Shot) {
  const QPalette before = QApplication::palette();
  if (GetParam()) QApplication::setPalette(test::DarkPalette());
  CtrlRec& rec = Add("DataGrid", "grid1");
  rec.events = {{"onClick", "Grid1DoOnClick"}};
  Run([&] {
    events.Show(rec);
    test::Shot(form, GetParam() ? "event-box-dark" : "event-box");
    Ask("onClick", [&](EventDlg& dialog) {
      test::Shot(dialog, GetParam() ? "event-dialog-dark" : "event-dialog");
      test::Key(dialog, Qt::Key_Escape);
    });
  });
  QApplication::setPalette(before);
}

}  // namespace
}  // namespace zendry
