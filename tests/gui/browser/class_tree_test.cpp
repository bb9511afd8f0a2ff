#include "browser/ClassTree.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QScrollBar>
#include <QTreeView>

#include "EditorFixture.h"
#include "browser/BrowserActs.h"

// The tree of classes and globals on the left.

namespace zendry {
namespace {

using test::IdeDriver;
using testing::ElementsAre;

constexpr char cHeader[] =
    "#define LIMIT 10\n"            // 1
    "class Shape {\n"               // 2
    " public:\n"                    // 3
    "  void draw();\n"              // 4
    "  void draw(int depth);\n"     // 5
    "  int size() { return 1; }\n"  // 6
    "};\n"                          // 7
    "struct Empty {};\n"            // 8
    "extern int total;\n";          // 9
constexpr char cSource[] =
    "#include \"a.h\"\n"                    // 1
    "int total;\n"                          // 2
    "void Shape::draw() {\n}\n"             // 3
    "void Shape::draw(int depth) {\n}\n"    // 5
    "int twice(int a) { return 2 * a; }\n"  // 7
    "int apple() { return 1; }\n";          // 8

class IdeClassTree : public test::EditorFixture {
 protected:
  static ClassTree& Tree() { return theMainForm->classTree; }
  std::string Project() { return ide.Project({{"a.h", cHeader}, {"a.cpp", cSource}}); }
  // Shows the page of the tree; the tree follows the tags.
  static void Show() {
    theMainForm->leftTabs.selectedIndex = 1;
    Tree().Refresh();
  }
  static mavro::TreeNode* Find(const mavro::TreeNode& node, const std::string& label) {
    for (const auto& child : node.children) {
      if (child->text == label) return child.get();
      if (mavro::TreeNode* found = Find(*child, label)) return found;
    }
    return nullptr;
  }
  static mavro::TreeNode* Node(const std::string& label) { return Find(Tree().Root(), label); }
  static std::string Shown() { return IdeDriver::Tree(Tree().Root()); }
  // Opens a node as its sign does.
  static void Open(const std::string& label) {
    Tree().Focus();
    Tree().Select(Node(label));
    IdeDriver::Press(Qt::Key_Right);
  }
  using EditorFixture::Open;
  static void DoubleClick(const std::string& label) {
    auto* widget = static_cast<QTreeView*>(test::WidgetOf(Tree()));
    QModelIndex at = widget->model()->index(0, 0);
    while (at.isValid() && at.data().toString().toStdString() != label) at = widget->indexBelow(at);
    ASSERT_TRUE(at.isValid()) << label;
    widget->scrollTo(at);
    const QPoint place = widget->viewport()->mapTo(widget->window(),
                                                   widget->visualRect(at).topLeft() + QPoint(9, 6));
    QWindow* window = widget->window()->windowHandle();
    QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, place);
    QTest::mouseDClick(window, Qt::LeftButton, Qt::NoModifier, place);
  }
  static void TypeLine(const std::string& text) {
    Type(text);
    IdeDriver::Press(Qt::Key_Return);
  }
  static void Parse() { theProject.parseOpenEditors(nullptr); }
  // The editor notes changes of the program when it is painted next.
  static void WaitForChange(CppEditor& editor) {
    EXPECT_TRUE(test::WaitFor([&] { return !editor.LiveText().parsed; }));
  }
  static void Undo(CppEditor& editor) { editor.Send(mavro::SCI_UNDO); }
};

TEST_F(IdeClassTree, EmptyProject_HasNoRoots) {
  ide.Run({}, [&] {
    Show();
    EXPECT_EQ(Shown(), "");
  });
}

TEST_F(IdeClassTree, Roots_AreFilledWhenTheyAreOpened) {
  ide.Run({Project()}, [&] {
    Show();
    EXPECT_EQ(Shown(), "(Classess(!!) Macros(!!) Variables(!!) Functions(!!))");
    for (const char* root : {"Classess", "Macros", "Variables", "Functions"}) Open(root);
    EXPECT_EQ(Shown(),
              "(Classess(Empty(!!) Shape(!!)) Macros(LIMIT) Variables(total) "
              "Functions(apple() twice(int a)))")
        << "by name, without the case of letters";
    Open("Shape");
    EXPECT_EQ(IdeDriver::Tree(*Node("Shape")), "Shape(draw() draw(int depth) size())");
    Open("Empty");
    EXPECT_TRUE(Node("Empty")->children.empty());
  });
}

TEST_F(IdeClassTree, Data_HoldsModuleGroupAndKind) {
  ide.Run({Project()}, [&] {
    Show();
    for (const char* root : {"Classess", "Functions"}) Open(root);
    Open("Shape");
    EXPECT_EQ(Tree().classRoot->data >> 16, 0x100);
    EXPECT_EQ(Node("Shape")->data, (0x200 | 'c') << 16);
    EXPECT_EQ(Node("draw()")->data, (0x300 | 'p') << 16);
    EXPECT_EQ(Node("twice(int a)")->data, (0x700 | 'f') << 16 | 1);
  });
}

TEST_F(IdeClassTree, Refresh_FollowsTheTextAndKeepsWhatIsOpen) {
  ide.Run({Project()}, [&] {
    Show();
    for (const char* root : {"Classess", "Functions"}) Open(root);
    Open("Shape");
    Tree().Select(Node("size()"));
    const mavro::TreeNode* shape = Node("Shape");
    CppEditor& header = *Tabs().OpenFile(ide.files.Path("a.h"));
    header.Send(mavro::SCI_GOTOPOS, static_cast<std::uintptr_t>(header.LineStart(3)));
    header.ReplaceSelection("  int added();\n");
    WaitForChange(header);
    Parse();
    Tree().Refresh();
    EXPECT_EQ(Node("Shape"), shape);
    EXPECT_TRUE(shape->expanded);
    EXPECT_EQ(IdeDriver::Tree(*shape), "Shape(added() draw() draw(int depth) size())");
    ASSERT_NE(Tree().Selected(), nullptr);
    EXPECT_EQ(Tree().Selected()->text, "size()");
    Undo(header);
    WaitForChange(header);
    Parse();
    Tree().Refresh();
    EXPECT_EQ(IdeDriver::Tree(*shape), "Shape(draw() draw(int depth) size())");
    header.Send(mavro::SCI_CLEARALL);
    WaitForChange(header);
    Parse();
    Tree().Refresh();
    EXPECT_EQ(Shown(), "(Variables(!!) Functions(apple() twice(int a)))");
    EXPECT_EQ(Tree().classRoot, nullptr);
    EXPECT_EQ(Tree().macroRoot, nullptr);
    Undo(header);
    WaitForChange(header);
    Parse();
    Tree().Refresh();
    EXPECT_EQ(Shown(), "(Classess(!!) Macros(!!) Variables(!!) Functions(apple() twice(int a)))")
        << "in its place again";
  });
}

TEST_F(IdeClassTree, Typing_TheTreeFollowsByItself) {
  ide.Run({Project()}, [&] {
    Show();
    Open("Macros");
    CppEditor& source = *Tabs().OpenFile(ide.files.Path("a.cpp"));
    source.Send(mavro::SCI_DOCUMENTEND);
    source.Focus();
    TypeLine("#define NEWEST 3");
    Parse();
    EXPECT_TRUE(test::WaitFor([&] { return Node("NEWEST") != nullptr; }));
  });
}

TEST_F(IdeClassTree, FilesComeAndGo_TheTreeFollows) {
  ide.Run({Project()}, [&] {
    Show();
    Open("Functions");
    const std::string path = ide.files.Write("b.cpp", "int zoo() { return 1; }\n");
    theProject.AddFile(path);
    Tree().Refresh();
    EXPECT_NE(Node("zoo()"), nullptr);
    theProject.RemoveFile(theProject.FindFile(ide.files.Path("a.h"))->id);
    Tree().Refresh();
    EXPECT_EQ(Tree().classRoot, nullptr);
    EXPECT_EQ(Node("zoo()")->data & 0xFFFF, 1) << "the modules have other numbers";
    Tree().Select(Node("zoo()"));
    EXPECT_TRUE(Tree().GoToSelected());
    EXPECT_EQ(Front().fileName, path);
  });
}

TEST_F(IdeClassTree, TagsThatStay_TouchNoNode) {
  ide.Run({Project()}, [&] {
    Show();
    Open("Functions");
    const mavro::TreeNode* node = Node("twice(int a)");
    CppEditor& source = *Tabs().OpenFile(ide.files.Path("a.cpp"));
    source.Send(mavro::SCI_GOTOPOS, 0);
    source.Focus();
    for (const char* line : {"", "", "// A line."}) TypeLine(line);
    Parse();
    Tree().Refresh();
    EXPECT_EQ(Node("twice(int a)"), node);
    Tree().Select(Node("twice(int a)"));
    EXPECT_TRUE(Tree().GoToSelected());
    EXPECT_EQ(Front().ShownLine(), 10) << "though the tree knew nothing of the lines";
  });
}

TEST_F(IdeClassTree, DoubleClick_GoesToThePlace) {
  ide.Run({Project()}, [&] {
    Show();
    for (const char* root : {"Classess", "Macros", "Functions"}) Open(root);
    Open("Shape");
    DoubleClick("draw(int depth)");
    EXPECT_EQ(Front().fileName, ide.files.Path("a.h"));
    EXPECT_EQ(Front().ShownLine(), 5);
    EXPECT_EQ(QApplication::focusWidget(), test::WidgetOf(Front()));
    DoubleClick("twice(int a)");
    EXPECT_EQ(Front().fileName, ide.files.Path("a.cpp"));
    EXPECT_EQ(Front().ShownLine(), 7);
    DoubleClick("LIMIT");
    EXPECT_EQ(Front().ShownLine(), 1);
    DoubleClick("Empty");
    EXPECT_EQ(Front().ShownLine(), 8);
  });
}

TEST_F(IdeClassTree, FileIsGone_SaysSo) {
  ide.Run({Project()}, [&] {
    Show();
    Open("Functions");
    Tabs().DropAll();
    std::filesystem::remove(ide.files.Path("a.cpp"));
    Tree().Select(Node("apple()"));
    EXPECT_FALSE(Tree().GoToSelected());
    EXPECT_THAT(ide.dialogs.texts,
                ElementsAre("Error: Could not open file \"" + ide.files.Path("a.cpp") + "\""));
  });
}

TEST_F(IdeClassTree, DeleteButton_RemovesDeclarationAndDefinition_OneUndoStepEach) {
  ide.Run({Project()}, [&] {
    Show();
    Open("Classess");
    Open("Shape");
    Tree().Select(Node("draw(int depth)"));
    theMainForm->UpdateCommands();
    ide.dialogs.answers = {mavro::Answer::cNo, mavro::Answer::cYes};
    test::ClickToolRow(theMainForm->toolPanel.bar, ToolPanel::cRemoveRow);
    EXPECT_THAT(ide.dialogs.texts, ElementsAre("Confirmation: Remove: draw"));
    EXPECT_NE(Node("draw(int depth)"), nullptr);
    test::ClickToolRow(theMainForm->toolPanel.bar, ToolPanel::cRemoveRow);
    CppEditor& header = *Tabs().Activate(ide.files.Path("a.h"), false);
    CppEditor& source = *Tabs().Activate(ide.files.Path("a.cpp"), false);
    EXPECT_EQ(header.GetText().find("int depth"), std::string::npos);
    EXPECT_EQ(source.GetText().find("int depth"), std::string::npos);
    EXPECT_NE(source.GetText().find("void Shape::draw() {"), std::string::npos);
    EXPECT_EQ(Node("draw(int depth)"), nullptr);
    Undo(header);
    Undo(source);
    EXPECT_EQ(header.GetText(), cHeader);
    EXPECT_EQ(source.GetText(), cSource);
  });
}

TEST_F(IdeClassTree, Keys_EnterOpensARootAndDeleteAsks) {
  ide.Run({Project()}, [&] {
    Show();
    Tree().Focus();
    Tree().Select(Tree().functionRoot);
    IdeDriver::Press(Qt::Key_Return);
    EXPECT_EQ(IdeDriver::Tree(*Tree().functionRoot), "Functions(apple() twice(int a))");
    EXPECT_TRUE(Tree().functionRoot->expanded);
    IdeDriver::Press(Qt::Key_Return);
    EXPECT_FALSE(Tree().functionRoot->expanded);
    IdeDriver::Press(Qt::Key_Delete);
    EXPECT_TRUE(ide.dialogs.texts.empty()) << "a root";
    Tree().Select(Node("apple()"));
    IdeDriver::Press(Qt::Key_Delete);
    EXPECT_THAT(ide.dialogs.texts, ElementsAre("Confirmation: Remove: apple"));
  });
}

TEST_F(IdeClassTree, DeleteButton_NeedsANodeThatIsNoRoot) {
  ide.Run({Project()}, [&] {
    Show();
    Open("Classess");
    const mavro::ToolBar& bar = theMainForm->toolPanel.bar;
    theMainForm->UpdateCommands();
    EXPECT_FALSE(bar.GetRow(ToolPanel::cRemoveRow).enabled);
    IdeDriver::Press(Qt::Key_Down);
    ASSERT_NE(Tree().Selected(), nullptr);
    EXPECT_EQ(Tree().Selected()->text, "Empty");
    EXPECT_TRUE(bar.GetRow(ToolPanel::cRemoveRow).enabled);
  });
}

TEST_F(IdeClassTree, DeleteInAReadOnlyText_ChangesNothing) {
  ide.Run({Project()}, [&] {
    Show();
    Open("Classess");
    Open("Shape");
    Tree().Select(Node("draw()"));
    Tabs().OpenFile(ide.files.Path("a.cpp"))->SetReadOnly(true);
    ide.dialogs.answers = {mavro::Answer::cYes};
    theBrowserActs.OnCommand(cDeleteMemberCommand);
    EXPECT_EQ(Tabs().OpenFile(ide.files.Path("a.h"))->GetText(), cHeader);
    EXPECT_NE(IdeDriver::Status().find("a.cpp - Read only"), std::string::npos);
  });
}

}  // namespace
}  // namespace zendry
