#include <gtest/gtest.h>

#include "DarkPalette.h"
#include "IdeDriver.h"

// The window at both ends of its life, for people to look at: build/shots/ide-*.png.

namespace zendry {
namespace {

using test::IdeDriver;

struct Look {
  const char* name;
  int width;
  int height;
  bool isDark;
};

class IdeShots : public testing::TestWithParam<Look> {};

TEST_P(IdeShots, Window_AfterAFailedBuild_ShowsAllItsParts) {
  const Look look = GetParam();
  const QPalette light = QApplication::palette();
  if (look.isDark) QApplication::setPalette(test::DarkPalette());
  IdeDriver ide;
  std::string source = "#include \"shape.h\"\n\nint area(const Shape& shape) {\n";
  source += "  int unused = 1;\n  return shape.width * shape.hieght;\n}\n";
  const std::string project =
      ide.Project({{"main.cpp", "#include \"src/shape.h\"\n\nint main() { return 0; }\n"},
                   {"src/shape.cpp", source},
                   {"src/shape.h", "struct Shape {\n  int width, height;\n};\n"},
                   {"src/deep/list.c", "int list(void) { return 1; }\n"},
                   {"app.rc", ""}},
                  "shapes.zpj");
  ide.Run({project}, [&] {
    MainForm& form = *theMainForm;
    form.SetBounds(0, 0, look.width, look.height);
    form.hSplit.SetPosition(look.height * 11 / 16);
    form.editTabs.OpenFile(ide.files.Path("main.cpp"));
    theProject.releaseOptions.comp = "-O2 -Wall";
    IdeDriver::Press(Qt::Key_F7);
    test::WaitFor([&] { return form.toolBar.width == look.width; });
    EXPECT_EQ(IdeDriver::Tree(),
              "(Source Files(main.cpp src(shape.cpp) src/deep(list.c)) Header Files(src(shape.h)) "
              "Resource File(app.rc))");
    EXPECT_GT(form.errorList.RowCount(), 0);
    EXPECT_EQ(form.bottomTabs.selectedIndex, cErrorPage);
    test::Shot(form, std::string("ide-errors-") + look.name);
    form.ShowPage(cOutputPage);
    int passes = 0;  // of the event loop, in which the page is painted
    test::WaitFor([&passes] { return ++passes > 5; });
    test::Shot(form, std::string("ide-output-") + look.name);
    EXPECT_EQ(form.statusBar.top + form.statusBar.height,
              test::WidgetOf(form.statusBar)->parentWidget()->height());
    EXPECT_EQ(form.hSplit.width, look.width);
  });
  QApplication::setPalette(light);
}

TEST_P(IdeShots, WhiteSpaceAndTheListOfTabs_CanBeSeen) {
  const Look look = GetParam();
  const QPalette light = QApplication::palette();
  if (look.isDark) QApplication::setPalette(test::DarkPalette());
  IdeDriver ide;
  const std::string source =
      "/* words  and blanks */\nint  main() {   \n\tint a;\t\n\tconst char* s = \"a  b\";\n\t"
      "if (a) return 1;  // " +
      std::string(300, '-') + " more than one row\n}\n";
  ide.Run({}, [&] {
    MainForm& form = *theMainForm;
    form.SetBounds(0, 0, look.width, look.height);
    for (int i = 0; i < 30; ++i)
      form.editTabs.OpenFile(ide.files.Write("src/part" + std::to_string(i) + ".cpp", source));
    for (const int id : {mavro::cSciWrapLines, mavro::cSciShowWhiteSpace, mavro::cSciShowLineEnds})
      theEditorActs.OnCommand(id);
    const CppEditor& editor = *form.editTabs.Active()->editor;
    EXPECT_TRUE(test::WaitFor([&] { return editor.Send(mavro::SCI_VISIBLEFROMDOCLINE, 5) > 5; }));
    test::Shot(form, std::string("ide-blanks-") + look.name);
    ide.OnDialog([&](mavro::Form& list) {
      test::Shot(list, std::string("ide-tab-list-") + look.name);
      QTest::keyClicks(QApplication::focusWidget(), "p1");
      test::Shot(list, std::string("ide-tab-list-typed-") + look.name);
      test::Key(list, Qt::Key_Return);
    });
    theEditorActs.OnCommand(cTabListCommand);
    EXPECT_EQ(form.editTabs.Active()->caption, "part1.cpp");
  });
  QApplication::setPalette(light);
}

TEST(IdeLongNames, Window_KeepsItsShape) {
  IdeDriver ide;
  const std::string longName(200, 'n');
  const std::string folder = longName + "/" + longName;
  std::vector<IdeDriver::File> files;
  for (int i = 0; i < 12; ++i) files.push_back({folder + "/" + std::to_string(i) + ".cpp", "x\n"});
  ide.Run({ide.Project(files, "p" + longName + ".zpj")}, [&] {
    MainForm& form = *theMainForm;
    const int width = form.width;
    for (const IdeDriver::File& file : files) form.editTabs.OpenFile(ide.files.Path(file.name));
    form.editTabs.OpenFile(ide.files.Write(longName + ".cpp", longName + longName));
    form.AddErrorRow({folder + "/0.cpp", 1, "error: " + longName + longName});
    form.ShowErrorRow(0);
    form.SetStatus("parse", ide.files.Path(folder));
    form.SetSize(700, 500);
    EXPECT_TRUE(test::WaitFor([&] { return form.toolBar.width == 700; }));
    EXPECT_EQ(form.vSplit.Position(), 200);
    EXPECT_LE(test::WidgetOf(form)->minimumSizeHint().width(), 700);
    EXPECT_NE(width, 700);
    test::Shot(form, "ide-long-names");
  });
}

INSTANTIATE_TEST_SUITE_P(Looks, IdeShots,
                         testing::Values(Look{"light-800", 800, 560, false},
                                         Look{"dark-800", 800, 560, true},
                                         Look{"light-1280", 1280, 800, false},
                                         Look{"dark-1280", 1280, 800, true},
                                         Look{"light-400", 400, 300, false}),
                         [](const auto& info) {
                           std::string name = info.param.name;
                           std::replace(name.begin(), name.end(), '-', '_');
                           return name;
                         });

}  // namespace
}  // namespace zendry
