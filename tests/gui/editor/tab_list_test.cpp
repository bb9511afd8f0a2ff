#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QTreeView>

#include "EditorFixture.h"

// The list of open tabs that letters are typed into.

namespace zendry {
namespace {

using test::IdeDriver;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class IdeTabList : public test::EditorFixture {
 protected:
  // Opens the list by its key and runs `script` in it; answers the caption of the tab in front
  // afterwards.
  std::string InList(const std::function<void(mavro::Form&)>& script) {
    bool ran = false;
    ide.OnDialog([&](mavro::Form& form) {
      ran = true;
      script(form);
      const bool isClosed = mavro::activeForm != &form;
      EXPECT_TRUE(isClosed) << "the keys close the list";
      if (!isClosed) form.Close();
    });
    IdeDriver::Press(Qt::Key_O, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(ran);
    // The platform of the tests activates no window by itself.
    test::WidgetOf(*theMainForm)->activateWindow();
    EXPECT_TRUE(test::WaitFor([] { return Front().IsFocused(); })) << "typing goes on";
    return Tabs().Active() ? Tabs().Active()->caption : "";
  }
  static mavro::ListView& ListOf(mavro::Form& form) {
    for (mavro::Control* child : form.children)
      if (auto* list = dynamic_cast<mavro::ListView*>(child)) return *list;
    std::abort();
  }
  static std::vector<std::string> Rows(mavro::Form& form) { return IdeDriver::Rows(ListOf(form)); }
  static std::string Selected(mavro::Form& form) {
    const mavro::ListView& list = ListOf(form);
    return list.selectedIndex < 0 ? "" : list.GetCell(list.selectedIndex, 0);
  }
  void OpenThree() {
    const std::string project = ide.Project({{"src/alpha.cpp", ""}, {"src/beta.cpp", ""}});
    theMainForm->editTabs.OpenFile(ide.files.Path("src/alpha.cpp"));
    theMainForm->editTabs.OpenFile(ide.files.Path("src/beta.cpp"));
    Open("gamma.cpp", "");
  }
};

TEST_F(IdeTabList, TheLastUsedIsOffered_EnterChangesBetweenTwo) {
  ide.Run({}, [&] {
    OpenThree();
    const std::string front = InList([&](mavro::Form& form) {
      EXPECT_THAT(Rows(form), SizeIs(3));
      EXPECT_EQ(ListOf(form).GetCell(0, 0), "gamma.cpp");
      EXPECT_EQ(Selected(form), "beta.cpp");
      test::Key(form, Qt::Key_Return);
    });
    EXPECT_EQ(front, "beta.cpp");
    EXPECT_EQ(InList([&](mavro::Form& form) { test::Key(form, Qt::Key_Return); }), "gamma.cpp");
  });
}

TEST_F(IdeTabList, Letters_FilterByNameAndPath_BestFirst) {
  ide.Run({}, [&] {
    OpenThree();
    const std::string front = InList([&](mavro::Form& form) {
      QTest::keyClicks(QApplication::focusWidget(), "ap");
      EXPECT_EQ(Selected(form), "alpha.cpp");
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backspace);
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backspace);
      QTest::keyClicks(QApplication::focusWidget(), "src/");
      EXPECT_THAT(Rows(form), SizeIs(2));
      QTest::keyClicks(QApplication::focusWidget(), "xx");
      EXPECT_THAT(Rows(form), IsEmpty());
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);
      test::Key(form, Qt::Key_Return);
      EXPECT_EQ(mavro::activeForm, &form) << "nothing fits: typing goes on";
      test::Key(form, Qt::Key_Escape);
    });
    EXPECT_EQ(front, "gamma.cpp");
    EXPECT_EQ(InList([&](mavro::Form& form) {
                QTest::keyClicks(QApplication::focusWidget(), "ALF");
                EXPECT_THAT(Rows(form), IsEmpty());
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backspace);
                test::Key(form, Qt::Key_Return);
              }),
              "alpha.cpp");
  });
}

TEST_F(IdeTabList, Escape_LeavesAllAsItWas) {
  ide.Run({}, [&] {
    OpenThree();
    const auto before = Tabs().LastUsed();
    EXPECT_EQ(InList([&](mavro::Form& form) {
                QTest::keyClicks(QApplication::focusWidget(), "al");
                test::Key(form, Qt::Key_Escape);
              }),
              "gamma.cpp");
    EXPECT_EQ(Tabs().LastUsed(), before);
    EXPECT_EQ(Front().GetText(), "");
  });
}

TEST_F(IdeTabList, ArrowsMoveWhileTyping_AndTheMouseChooses) {
  ide.Run({}, [&] {
    OpenThree();
    EXPECT_EQ(InList([&](mavro::Form& form) {
                test::Key(form, Qt::Key_Down);
                EXPECT_EQ(Selected(form), "alpha.cpp");
                test::Key(form, Qt::Key_Down);
                EXPECT_EQ(Selected(form), "alpha.cpp") << "the end";
                test::Key(form, Qt::Key_PageUp);
                EXPECT_EQ(Selected(form), "gamma.cpp");
                test::Key(form, Qt::Key_Up);
                EXPECT_EQ(Selected(form), "gamma.cpp") << "the start";
                test::Key(form, Qt::Key_PageDown);
                test::Key(form, Qt::Key_Return);
              }),
              "alpha.cpp");
    EXPECT_EQ(InList([&](mavro::Form& form) {
                mavro::ListView& list = ListOf(form);
                auto* view = test::WidgetOf(list)->findChild<QTreeView*>();
                if (!view) view = qobject_cast<QTreeView*>(test::WidgetOf(list));
                ASSERT_TRUE(view);
                const QRect third = view->visualRect(view->model()->index(2, 0));
                test::Click(list, view->viewport()->mapTo(test::WidgetOf(list), third.center()));
                EXPECT_NE(mavro::activeForm, &form) << "a click is enough";
              }),
              "beta.cpp");
  });
}

TEST_F(IdeTabList, UnsavedOnes_HaveTheirMark_AndATextWithoutANameIsListed) {
  ide.Run({}, [&] {
    Open("a.cpp", "");
    Type("x");
    Tabs().NewTab("");
    InList([&](mavro::Form& form) {
      EXPECT_EQ(ListOf(form).GetCell(0, 0), "Noname");
      EXPECT_EQ(ListOf(form).GetCell(1, 0), "a.cpp*");
      // All of it: the letters of a shorter beginning may stand in a folder's random name.
      QTest::keyClicks(QApplication::focusWidget(), "noname");
      EXPECT_THAT(Rows(form), ElementsAre("Noname|"));
      test::Key(form, Qt::Key_Escape);
    });
  });
}

TEST_F(IdeTabList, FoldersAreShownFromTheProject) {
  const std::string project = ide.Project({{"src/deep/a.cpp", ""}, {"b.cpp", ""}});
  ide.Run({project}, [&] {
    Tabs().OpenFile(ide.files.Path("src/deep/a.cpp"));
    Tabs().OpenFile(ide.files.Path("b.cpp"));
    Tabs().OpenFile(ide.home.Write("else.cpp", ""));
    InList([&](mavro::Form& form) {
      EXPECT_EQ(
          Rows(form)[0],
          "else.cpp|" + ide.home.Path("else.cpp").substr(0, ide.home.Path("else.cpp").rfind('/')));
      EXPECT_EQ(Rows(form)[1], "b.cpp|");
      EXPECT_EQ(Rows(form)[2], "a.cpp|src/deep");
      test::Key(form, Qt::Key_Tab);
      EXPECT_TRUE(ListOf(form).IsFocused());
      test::Key(form, Qt::Key_Escape);
    });
  });
}

TEST_F(IdeTabList, TwoHundredTabs_EachIsFound) {
  ide.Run({}, [&] {
    for (int i = 0; i < 200; ++i) Open("part" + std::to_string(i) + ".cpp", "");
    for (const int wanted : {0, 7, 111, 199}) {
      const std::string name = "part" + std::to_string(wanted);
      EXPECT_EQ(InList([&](mavro::Form& form) {
                  EXPECT_EQ(ListOf(form).rowCount, 200);
                  QTest::keyClicks(QApplication::focusWidget(), QString::fromStdString(name));
                  test::Key(form, Qt::Key_Return);
                }),
                name + ".cpp");
    }
  });
}

TEST_F(IdeTabList, WithoutATab_TheKeyDoesNothing) {
  ide.Run({}, [&] {
    IdeDriver::Press(Qt::Key_O, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(mavro::activeForm, theMainForm);
  });
}

}  // namespace
}  // namespace zendry
