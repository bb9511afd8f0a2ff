#include <gtest/gtest.h>

#include "DarkPalette.h"
#include "GuiDriver.h"
#include "Looks.h"
#include "ScriptedDialogs.h"

// The demo as it is shipped, but its main.
#include "../../../dist/Repos/demos/gallery/dialogpage.cpp"
#include "../../../dist/Repos/demos/gallery/drawpage.cpp"
#include "../../../dist/Repos/demos/gallery/galleryform.cpp"
#include "../../../dist/Repos/demos/gallery/gallerypage.cpp"
#include "../../../dist/Repos/demos/gallery/gridpage.cpp"
#include "../../../dist/Repos/demos/gallery/inputpage.cpp"
#include "../../../dist/Repos/demos/gallery/listpage.cpp"
#include "../../../dist/Repos/demos/gallery/plotpage.cpp"

namespace {

// The first control of a kind below another, or null.
template <class Kind>
Kind* Find(Control& below) {
  for (Control* child : below.children) {
    if (auto* found = dynamic_cast<Kind*>(child)) return found;
    if (auto* found = Find<Kind>(*child)) return found;
  }
  return nullptr;
}

// The gallery, its log (the list at the bottom) and its pages.
struct Gallery {
  GalleryForm form;
  // Panes are children only once the window has been made.
  TabCtrl& Tabs() { return *Find<TabCtrl>(form); }
  ListBox* Log() { return Find<ListBox>(form); }
  std::string LastLine() {
    ListBox* log = Log();
    const int count = log->items.GetCount();
    return count ? std::string(log->items[count - 1]) : "";
  }
};

TEST(DemoGallery, LightAndDark_EveryPageCanBeRead) {
  const QPalette light = QApplication::palette();
  for (const bool isDark : {false, true}) {
    QApplication::setPalette(isDark ? test::DarkPalette() : light);
    Gallery gallery;
    test::RunForm(gallery.form, false, [&] {
      const QString scale = qEnvironmentVariable("QT_SCALE_FACTOR", "1");
      for (int page = 0; page < gallery.Tabs().TabCount(); ++page) {
        gallery.Tabs().selectedIndex = page;
        QApplication::processEvents();
        const Control& shown = *gallery.Tabs().GetPage(page);
        EXPECT_TRUE(test::WidgetOf(shown)->isVisible()) << page;
        EXPECT_EQ(test::UnreadableCaptions(shown), std::vector<std::string>()) << page;
        EXPECT_EQ(qGray(test::GroundOf(test::Pixels(shown))) < 128, isDark) << page;
        test::Shot(gallery.form, "gallery-" + std::to_string(page) +
                                     (isDark ? "-dark-" : "-light-") + scale.toStdString());
      }
    });
  }
  QApplication::setPalette(light);
}

TEST(DemoGallery, Dial_WritesToTheLog) {
  Gallery gallery;
  test::RunForm(gallery.form, false, [&] {
    gallery.Tabs().selectedIndex = 2;
    auto* dial = Find<DialCtrl>(*gallery.Tabs().GetPage(2));
    dial->Focus();
    test::Key(gallery.form, Qt::Key_End);
    EXPECT_EQ(gallery.LastLine(), "dial: 100");
  });
}

TEST(DemoGallery, PlotsPage_ZoomsDrawsAndCopies) {
  Gallery gallery;
  test::RunForm(gallery.form, false, [&] {
    gallery.Tabs().selectedIndex = 4;
    QApplication::processEvents();
    Control& page = *gallery.Tabs().GetPage(4);
    auto& plot = *Find<PlotXY>(page);
    EXPECT_GT(plot.Series(0).y.size(), 100u);
    plot.Focus();
    test::Key(gallery.form, Qt::Key_Plus);
    EXPECT_EQ(gallery.LastLine(), "plot: a part");
    test::Key(gallery.form, Qt::Key_Escape);
    EXPECT_EQ(gallery.LastLine(), "plot: all");
    test::Click(*Find<Button>(page));
    EXPECT_EQ(gallery.LastLine(), "plot: copied");
    auto& box = static_cast<PaintBox&>(*page.children[2]);
    QWidget* widget = test::WidgetOf(box);
    QWindow* window = widget->window()->windowHandle();
    const auto at = [&](int x, int y) { return widget->mapTo(widget->window(), QPoint(x, y)); };
    QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, at(20, 50));
    QTest::mouseMove(window, at(90, 50));
    QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, at(90, 50));
    EXPECT_EQ(box.BackBuffer().GetPixel(50, 50), Color(0x3080D0));
    QTest::mouseDClick(window, Qt::LeftButton, Qt::NoModifier, at(20, 80));
    EXPECT_NE(box.BackBuffer().GetPixel(50, 50), Color(0x3080D0));
    EXPECT_EQ(gallery.LastLine(), "paint box: cleared");
  });
}

TEST(DemoGallery, Switches_ChangeThePagesControls) {
  Gallery gallery;
  test::RunForm(gallery.form, false, [&] {
    const Panel& side =
        dynamic_cast<Panel&>(*Find<SplitContainer>(gallery.form)->children[0]->children[2]);
    auto& switches = dynamic_cast<CheckGroup&>(*side.children[0]);
    for (int flags = 0; flags < 32; ++flags) {
      NotifyArgs args{&switches, flags};
      switches.onChange.Fire(args);
      for (Control* control : gallery.Tabs().GetPage(0)->children)
        EXPECT_EQ(control->enabled, (flags & 1) != 0);
    }
    EXPECT_EQ(gallery.LastLine(), "switches: 31");
  });
}

TEST(DemoGallery, Dialogs_AnswerIntoTheLog) {
  test::ScriptedDialogs dialogs;
  dialogs.answers = {Answer::cOk, Answer::cYes};
  dialogs.files = {{"/tmp/a.cpp"}, {"/tmp/b.cpp"}};
  dialogs.folders = {"/tmp"};
  dialogs.colors = {Color(Color::cRed)};
  Gallery gallery;
  test::RunForm(gallery.form, false, [&] {
    gallery.Tabs().selectedIndex = 3;
    QApplication::processEvents();
    const char* lines[] = {"page: Dialogs",    "yes",          "file: /tmp/a.cpp",
                           "file: /tmp/b.cpp", "folder: /tmp", "colour: 16711680"};
    for (size_t i = 0; i < 6; ++i) {
      test::Click(*gallery.Tabs().GetPage(3)->children[i]);
      if (i > 0) {
        EXPECT_EQ(gallery.LastLine(), lines[i]);
      }
    }
  });
}

TEST(DemoGallery, Grid_AddsUpItsRows) {
  Gallery gallery;
  test::RunForm(gallery.form, false, [&] {
    TabCtrl& tabs = gallery.Tabs();
    tabs.selectedIndex = tabs.TabCount() - 1;
    auto& grid = *Find<DataGrid>(*tabs.GetPage(tabs.TabCount() - 1));
    ASSERT_EQ(grid.rowCount, 100000);
    const auto enter = [&](int col, Qt::Key digit) {
      grid.SelectCells({1, col, 1, 1});
      grid.Focus();
      test::Key(gallery.form, digit);
      test::Key(gallery.form, Qt::Key_Return);
    };
    enter(1, Qt::Key_7);
    enter(2, Qt::Key_3);
    EXPECT_EQ(gallery.LastLine(), "Article 2: 21.00");
    EXPECT_EQ(grid.GetCell(1, 3), "21.00");
    enter(2, Qt::Key_X);
    EXPECT_EQ(gallery.LastLine(), "not taken: x");
    enter(3, Qt::Key_9);
    EXPECT_EQ(grid.GetCell(1, 3), "21.00");
  });
}

}  // namespace
