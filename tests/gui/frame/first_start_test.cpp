#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Application.h"
#include "DarkPalette.h"
#include "IdeDriver.h"
#include "Looks.h"
#include "config/EditorSettings.h"
#include "editor/EditorActs.h"

// The first start of an installation, and what later starts keep of it.

namespace zendry {
namespace {

using test::IdeDriver;

// An installation of its own, whose files the test writes.
class FirstStart : public testing::Test {
 protected:
  FirstStart() : savedDir(mavro::theApplication.appDir) {
    mavro::theApplication.appDir = installed.Path() + "/";
    installed.Write("first-start.ini", "ed-linenum=1\ned-usemono=1\nfirst-size=70\n");
  }
  ~FirstStart() override {
    mavro::theApplication.appDir = savedDir;
    theEditorSettings = EditorSettings();
    theIdeFonts = IdeFonts();
  }

  static mavro::EditorOptions& Options(int tab) {
    return *theMainForm->editTabs.GetTab(tab)->editor->options;
  }
  static std::string FaceOf(const CppEditor& editor, unsigned style) {
    std::string face(100, '\0');
    const auto length = editor.Send(mavro::SCI_STYLEGETFONT, style, face.data());
    face.resize(static_cast<size_t>(length));
    return face;
  }

  test::TempFolder installed;
  IdeDriver ide;

 private:
  std::string savedDir;
};

// The first window as it is installed, for people to look at too: build/shots/ide-first-*.png.
class FirstWindow : public FirstStart, public testing::WithParamInterface<bool> {};

TEST_P(FirstWindow, ShowsTheDemoReadableAtOnce) {
  const bool isDark = GetParam();
  for (const char* name : {"Zendry.cfg", "first-start.ini"})
    std::filesystem::copy_file(std::string(TEST_DATA "/../../dist/") + name, installed.Path(name),
                               std::filesystem::copy_options::overwrite_existing);
  std::filesystem::copy(TEST_DATA "/../../dist/Repos/demos/console", ide.files.Path("console"),
                        std::filesystem::copy_options::recursive);
  const QPalette light = QApplication::palette();
  if (isDark) QApplication::setPalette(test::DarkPalette());
  const std::string source = ide.files.Path("console/main.cpp");
  ide.Run({ide.files.Path("console/console.zpj"), source}, [&] {
    MainForm& form = *theMainForm;
    form.SetSize(896, 672);
    ASSERT_TRUE(test::WaitFor([&] { return form.toolBar.width == 896; }));
    EXPECT_EQ(form.ActiveFile(), source);
    EXPECT_EQ(form.toolBar.left + form.toolBar.width, 896);
    const CppEditor& editor = *form.editTabs.GetTab(0)->editor;
    const auto width = [&editor](const char* text) {
      return editor.Send(mavro::SCI_TEXTWIDTH, 32, text);
    };
    EXPECT_EQ(width("iiii"), width("MMMM")) << "a font of one width";
    EXPECT_GE(editor.Send(mavro::SCI_GETMARGINWIDTHN, 0),
              editor.Send(mavro::SCI_TEXTWIDTH, mavro::STYLE_LINENUMBER, "10"));
    int passes = 0;  // of the event loop, in which the window is painted
    test::WaitFor([&passes] { return ++passes > 5; });
    test::Shot(form, isDark ? "ide-first-dark" : "ide-first-light");
  });
  QApplication::setPalette(light);
}

INSTANTIATE_TEST_SUITE_P(Looks, FirstWindow, testing::Bool(), [](const auto& info) {
  return std::string(info.param ? "dark" : "light");
});

TEST_F(FirstStart, Editors_HaveAFixedFontAndLineNumbers) {
  installed.Write("Zendry.cfg",
                  "<font id=\"0\" n=\"DejaVu Serif\" v=\"11\"/>"
                  "<font id=\"1\" n=\"DejaVu Sans Mono\" o=\"3\" v=\"12\"/>");
  ide.Run({ide.files.Write("a.cpp", "int a;\n")}, [&] {
    const CppEditor& editor = *theMainForm->editTabs.GetTab(0)->editor;
    EXPECT_TRUE(Options(0).lineNumbers);
    EXPECT_GT(editor.Send(mavro::SCI_GETMARGINWIDTHN, 0), 0);
    EXPECT_EQ(FaceOf(editor, 5), "DejaVu Sans Mono");
    EXPECT_EQ(editor.Send(mavro::SCI_STYLEGETSIZE, 5), 12);
    for (const unsigned style : {0u, 5u, 11u}) {
      EXPECT_TRUE(editor.Send(mavro::SCI_STYLEGETBOLD, style)) << style;
      EXPECT_TRUE(editor.Send(mavro::SCI_STYLEGETITALIC, style)) << style;
    }
    theEditorActs.OnCommand(cFontTypeCommand);
    EXPECT_EQ(FaceOf(editor, 11), "DejaVu Serif");
    EXPECT_EQ(editor.Send(mavro::SCI_STYLEGETSIZE, 11), 11);
    EXPECT_FALSE(editor.Send(mavro::SCI_STYLEGETBOLD, 11));
  });
}

TEST_F(FirstStart, Toggles_HoldForAllTabsAndTheNextStart) {
  const std::string a = ide.files.Write("a.cpp", ""), b = ide.files.Write("b.cpp", "");
  ide.Run({a, b}, [&] {
    theEditorActs.OnCommand(cLineNumbersCommand);
    theEditorActs.OnCommand(cFontTypeCommand);
    theMainForm->editTabs.OpenFile(ide.files.Write("c.cpp", ""));
    for (int i = 0; i < 3; ++i) {
      EXPECT_FALSE(Options(i).lineNumbers) << i;
      EXPECT_FALSE(Options(i).monospaced) << i;
    }
  });
  ide.Run({a}, [&] {
    EXPECT_FALSE(Options(0).lineNumbers);
    EXPECT_FALSE(Options(0).monospaced);
    theEditorActs.OnCommand(cLineNumbersCommand);
  });
  ide.Run({a}, [&] { EXPECT_TRUE(Options(0).lineNumbers); });
}

TEST_F(FirstStart, Toggle_KeepsFoldedLinesFolded) {
  ide.Run({ide.files.Write("a.cpp", "void f() {\n  f();\n}\n")}, [&] {
    const CppEditor& editor = *theMainForm->editTabs.GetTab(0)->editor;
    editor.Send(mavro::SCI_COLOURISE, 0, -1);
    editor.Send(mavro::SCI_TOGGLEFOLD, 0);
    ASSERT_FALSE(editor.Send(mavro::SCI_GETLINEVISIBLE, 1));
    theEditorActs.OnCommand(cLineNumbersCommand);
    test::WaitFor([] { return true; });
    EXPECT_FALSE(editor.Send(mavro::SCI_GETLINEVISIBLE, 1));
  });
}

TEST_F(FirstStart, Window_TakesItsShareInTheMiddle_AndLaterItsOwnPlace) {
  const mavro::Rect screen = mavro::ScreenArea(nullptr);
  const auto share = [](int size, int least) {
    return std::min(std::max(size * 7 / 10, least), size);
  };
  ide.Run({}, [&] {
    const mavro::Rect at = theMainForm->Bounds();
    EXPECT_EQ(at.width, share(screen.width, 801));
    EXPECT_EQ(at.height, share(screen.height, 401));
    EXPECT_EQ(at.left, screen.left + (screen.width - at.width) / 2);
    EXPECT_EQ(at.top, screen.top + (screen.height - at.height) / 2);
    EXPECT_EQ(theMainForm->hSplit.Position(), at.height * 11 / 16);
  });
  ide.home.Write(".zendry/zendry.ini", "Bounds=5;6;801;410;\n");
  if (screen.width >= 801 && screen.height >= 410)
    ide.Run({}, [&] { EXPECT_EQ(theMainForm->Bounds(), (mavro::Rect{5, 6, 801, 410})); });
}

TEST_F(FirstStart, OutputPanel_HasTheFontOfItsRecord) {
  installed.Write("Zendry.cfg", "<font id=\"2\" n=\"DejaVu Sans Mono\" o=\"1\" v=\"13\"/>");
  ide.Run({}, [&] {
    const QFont font = test::WidgetOf(theMainForm->output)->font();
    EXPECT_EQ(font.family(), "DejaVu Sans Mono");
    EXPECT_EQ(font.pointSize(), 13);
    EXPECT_TRUE(font.bold());
  });
}

TEST_F(FirstStart, OutputPanel_WithoutARecord_HasAFixedFont) {
  ide.Run({},
          [&] { EXPECT_TRUE(test::HasFixedWidth(test::WidgetOf(theMainForm->output)->font())); });
}

}  // namespace
}  // namespace zendry
