#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QListView>

#include "EditorFixture.h"
#include "browser/BrowserActs.h"
#include "browser/BrowserDlg.h"

// The commands of the browser menu, by their keys.

namespace zendry {
namespace {

using test::IdeDriver;

constexpr char cHeader[] =
    "class Shape {\n"            // 1
    " public:\n"                 // 2
    "  void draw();\n"           // 3
    "  void draw(int depth);\n"  // 4
    "  Shape* next;\n"           // 5
    "};\n"                       // 6
    "int alone(int value);\n";   // 7
constexpr char cSource[] =
    "#include \"a.h\"\n"               // 1
    "#include <nowhere.h>\n"           // 2
    "void Shape::draw() {\n"           // 3
    "  int local = 1;\n"               // 4
    "  next->next->draw(local);\n"     // 5
    "}\n"                              // 6
    "void Shape::draw(int depth) {\n"  // 7
    "  unknown(depth);\n"              // 8
    "}\n";                             // 9

class IdeBrowsing : public test::EditorFixture {
 protected:
  std::string Project() { return ide.Project({{"a.h", cHeader}, {"a.cpp", cSource}}); }
  void Run(const std::function<void()>& script) {
    ide.Run({Project()}, [&] {
      Tabs().OpenFile(ide.files.Path("a.cpp"));
      script();
    });
  }
  // Puts the caret before a text of a line, which counts from 1.
  static void PutCaret(int line, const std::string& before) {
    const int start = Front().LineStart(line - 1);
    const std::string text = Front().GetRange(start, Front().LineEnd(line - 1));
    const int place = start + static_cast<int>(text.find(before));
    Front().Select(place, place);
    Front().Focus();
  }
  // "a.cpp:7", lines from 1.
  static std::string Place() {
    return Tabs().Active()->caption + ":" + std::to_string(Front().ShownLine());
  }
  static void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    IdeDriver::Press(key, modifiers);
  }
};

TEST_F(IdeBrowsing, FindSymbol_LocalMemberAndOverload) {
  Run([&] {
    PutCaret(5, "ocal)");
    Press(Qt::Key_F12);
    EXPECT_EQ(Place(), "a.cpp:4");
    EXPECT_EQ(Front().GetRange(Front().CaretPosition(), Front().CaretPosition() + 5), "local");
    PutCaret(5, "raw(");
    Press(Qt::Key_F12);
    EXPECT_EQ(Place(), "a.h:4") << "the one that takes an argument";
    EXPECT_EQ(Front().CaretColumn(), 7);
    Press(Qt::Key_F12);
    EXPECT_EQ(Place(), "a.cpp:7") << "from a declaration to its definition";
    EXPECT_EQ(QApplication::focusWidget(), test::WidgetOf(Front()));
  });
}

TEST_F(IdeBrowsing, FindSymbol_OnAnIncludeLine_OpensTheFile) {
  Run([&] {
    PutCaret(1, "a.h");
    Press(Qt::Key_F12);
    EXPECT_EQ(Tabs().Active()->caption, "a.h");
    Tabs().OpenFile(ide.files.Path("a.cpp"));
    PutCaret(2, "nowhere");
    Press(Qt::Key_F12);
    EXPECT_EQ(Place(), "a.cpp:2");
    EXPECT_EQ(IdeDriver::Status(),
              "No file \"nowhere.h\" beside this one, in the project or in the folders of its "
              "compiler");
  });
}

TEST_F(IdeBrowsing, FindSymbol_Unknown_SaysWhatAndWhereAndStays) {
  Run([&] {
    PutCaret(8, "known");
    const int before = Front().CaretPosition();
    Press(Qt::Key_F12);
    EXPECT_EQ(Front().CaretPosition(), before);
    EXPECT_EQ(IdeDriver::Status(), "No symbol \"unknown\" in a.cpp, 2 files and the libraries");
  });
}

TEST_F(IdeBrowsing, DeclarationAndDefinition_OfTheFunctionAroundTheCaret) {
  Run([&] {
    PutCaret(8, "depth");
    Press(Qt::Key_Up, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Place(), "a.h:4");
    Press(Qt::Key_Down, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Place(), "a.cpp:7");
    Tabs().OpenFile(ide.files.Path("a.h"));
    PutCaret(7, "alone");
    Press(Qt::Key_Down, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Place(), "a.h:7");
    EXPECT_EQ(IdeDriver::Status(), "No definition of \"alone\" in a.h, 2 files and the libraries");
  });
}

TEST_F(IdeBrowsing, BackAndForward_ThroughTheJumps) {
  Run([&] {
    PutCaret(5, "raw(");
    Press(Qt::Key_F12);
    Press(Qt::Key_F12);
    EXPECT_EQ(Place(), "a.cpp:7");
    Press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(Place(), "a.h:4");
    Press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(Place(), "a.cpp:5");
    EXPECT_EQ(Front().CaretPosition(), Front().LineStart(4) + 15) << "the column too";
    Press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(Place(), "a.cpp:5") << "the first place";
    Press(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(Place(), "a.h:4");
    Press(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(Place(), "a.cpp:7");
  });
}

TEST_F(IdeBrowsing, RowsOfErrors_LeadToTheColumnThatTheCompilerNames) {
  ide.Run({ide.Project({{"a.cpp", "int a;\n\tint b = \"\xC3\xA4\" + c;\n"}})}, [&] {
    // gcc: 8 columns for the TAB, one for the letter of two bytes.
    const std::pair<int, int> places[] = {{9, 1}, {17, 9}, {19, 12}, {23, 16}, {2, 1}, {1000, 18}};
    for (const auto& [column, byte] : places) {
      theMainForm->ClearErrorRows();
      theMainForm->AddErrorRow({"a.cpp", 2, "error", column});
      theMainForm->ShowErrorRow(0);
      EXPECT_EQ(Place(), "a.cpp:2");
      EXPECT_EQ(Front().CaretPosition() - Front().LineStart(1), byte) << column;
    }
    theMainForm->AddErrorRow({"a.cpp", 1, "error"});
    theMainForm->AddErrorRow({"a.cpp", 200, "error", 3});
    theMainForm->ShowErrorRow(1);
    EXPECT_EQ(Front().CaretPosition(), 0) << "without a column the beginning of the line";
    theMainForm->ShowErrorRow(2);
  });
}

TEST_F(IdeBrowsing, FindSymbol_OfALibrary_OpensItsHeaderAtTheLine) {
  const std::string source =
      "#include <string>\n#include <stdio.h>\n"
      "int f(std::string text) {\n  text.push_back('a');\n  return printf(\"a\");\n}\n";
  ide.Run({ide.Project({{"a.cpp", source}})}, [&] {
    const auto lineAfterF12 = [&](int line, const std::string& before) {
      Tabs().OpenFile(ide.files.Path("a.cpp"));
      PutCaret(line, before);
      Press(Qt::Key_F12);
      const int at = Front().CaretLine();
      return Front().GetRange(Front().LineStart(at), Front().LineEnd(at));
    };
    EXPECT_THAT(lineAfterF12(5, "rintf"), testing::HasSubstr("extern int printf ("));
    EXPECT_EQ(Tabs().Active()->caption, "stdio.h");
    EXPECT_THAT(lineAfterF12(3, "tring text"), testing::HasSubstr("string;"));
    EXPECT_EQ(Tabs().Active()->caption, "stringfwd.h");
    Press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(Place(), "a.cpp:3");
  });
}

TEST_F(IdeBrowsing, Back_FromTheErrorListAndTheTree_AfterLinesHaveCome) {
  Run([&] {
    PutCaret(5, "next");
    theMainForm->AddErrorRow({"a.h", 5, "error"});
    Press(Qt::Key_F4);
    EXPECT_EQ(Place(), "a.h:5");
    Tabs().OpenFile(ide.files.Path("a.cpp"));
    Front().Send(mavro::SCI_INSERTTEXT, 0, "\n\n\n");
    Tabs().OpenFile(ide.files.Path("a.h"));
    Press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(Place(), "a.cpp:8") << "where the line is now";
    ClassTree& tree = theMainForm->classTree;
    theProject.parseOpenEditors(nullptr);
    tree.Refresh();
    theMainForm->leftTabs.selectedIndex = 1;
    tree.Focus();
    tree.Select(tree.classRoot);
    Press(Qt::Key_Right);
    tree.Select(tree.classRoot->children.front().get());
    EXPECT_TRUE(tree.GoToSelected());
    EXPECT_EQ(Place(), "a.h:1");
    Press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(Place(), "a.cpp:8");
  });
}

TEST_F(IdeBrowsing, WithoutATab_NothingHappens) {
  ide.Run({}, [&] {
    for (const int id : {cFindSymbolCommand, cFindDeclarationCommand, cFindDefinitionCommand,
                         cAddMemberCommand, cOpenBrowserCommand, cBackCommand, cForwardCommand})
      theBrowserActs.OnCommand(id);
    EXPECT_TRUE(ide.dialogs.texts.empty());
  });
}

TEST_F(IdeBrowsing, OpenBrowser_ShowsTheTagAtTheCaretAndGoes) {
  Run([&] {
    PutCaret(8, "depth");
    std::vector<std::string> rows;
    ide.OnDialog([&](mavro::Form& form) {
      auto& dialog = static_cast<BrowserDlg&>(form);
      EXPECT_EQ(dialog.scope.itemIndex, BrowserDlg::cModuleScope);
      EXPECT_EQ(dialog.classList.items[0], "-- globals --");
      // The class is in the other file.
      dialog.scope.itemIndex = BrowserDlg::cProjectScope;
      mavro::NotifyArgs args{&dialog.scope, BrowserDlg::cProjectScope};
      dialog.scope.onChange.Fire(args);
      dialog.classList.Focus();
      test::Key(form, Qt::Key_Down);
      EXPECT_EQ(dialog.classList.items[dialog.classList.selectedIndex], "Shape");
      for (int i = 0; i < dialog.memberList.items.GetCount(); ++i)
        rows.push_back(dialog.memberList.items[i]);
      dialog.memberList.Focus();
      EXPECT_EQ(dialog.memberList.selectedIndex, 0);
      test::Click(dialog.definition);
    });
    Press(Qt::Key_F12, Qt::ControlModifier);
    EXPECT_THAT(rows, testing::ElementsAre("draw()", "draw(int depth)", "next"));
    EXPECT_EQ(Place(), "a.cpp:3");
  });
}

TEST_F(IdeBrowsing, OpenBrowser_Cancelled_Stays) {
  Run([&] {
    PutCaret(8, "depth");
    ide.OnDialog([&](mavro::Form& form) { test::Key(form, Qt::Key_Escape); });
    Press(Qt::Key_F12, Qt::ControlModifier);
    EXPECT_EQ(Place(), "a.cpp:8");
  });
}

}  // namespace
}  // namespace zendry
