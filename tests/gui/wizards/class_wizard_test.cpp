#include "wizards/ClassWizard.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "EditorFixture.h"
#include "browser/BrowserActs.h"

// Adding a method to a class, by keys.

namespace zendry {
namespace {

using test::IdeDriver;

constexpr char cHeader[] =
    "class Shape {\n public:\n  void draw();\n  int size();\n};\nclass Zoo {};\n";
constexpr char cSource[] = "#include \"a.h\"\n\nvoid Shape::draw() {\n  size();\n}\n";

class IdeClassWizard : public test::EditorFixture {
 protected:
  void Run(const std::function<void()>& script) {
    ide.Run({ide.Project({{"a.h", cHeader}, {"a.cpp", cSource}})}, script);
  }
  // Opens the wizard with its key and types a prototype.
  void Add(const std::string& prototype, Qt::Key end = Qt::Key_Return) {
    ide.OnDialog([=](mavro::Form& form) {
      EXPECT_EQ(form.text, "Class wizard");
      Type(prototype);
      test::Key(form, end);
    });
    IdeDriver::Press(Qt::Key_F12, Qt::ShiftModifier);
  }
  static void PutCaret(CppEditor& editor, int line) {
    editor.ShowLine(line);
    editor.Focus();
  }
  std::string Text(const std::string& name) {
    return Tabs().Activate(ide.files.Path(name), false)->GetText();
  }
};

TEST_F(IdeClassWizard, FromTheHeader_WritesBothFiles_OneUndoStepEach) {
  Run([&] {
    PutCaret(*Tabs().OpenFile(ide.files.Path("a.h")), 3);
    Add("virtual int sum(int a, int b = 2) const");
    EXPECT_EQ(Text("a.h"),
              "class Shape {\n public:\n  void draw();\n"
              "  virtual int sum(int a, int b = 2) const;\n  int size();\n};\nclass Zoo {};\n");
    EXPECT_EQ(Text("a.cpp"),
              std::string(cSource) + "\nint Shape::sum(int a, int b) const {\n" + "  \n}\n");
    EXPECT_EQ(Tabs().Active()->caption, "a.cpp");
    Front().ReplaceSelection("return a + b;");
    EXPECT_NE(Text("a.cpp").find("const {\n  return a + b;\n}\n"), std::string::npos)
        << Text("a.cpp");
    theBrowserActs.OnCommand(cBackCommand);
    EXPECT_EQ(Tabs().Active()->caption, "a.h") << "back to where it began";
    Front().Send(mavro::SCI_UNDO);
    EXPECT_EQ(Text("a.h"), cHeader);
  });
}

TEST_F(IdeClassWizard, UndoInTheSource_IsOneStep) {
  Run([&] {
    PutCaret(*Tabs().OpenFile(ide.files.Path("a.cpp")), 3);
    Add("void more()");
    EXPECT_NE(Text("a.cpp").find("void Shape::more() {"), std::string::npos) << Text("a.cpp");
    Front().Send(mavro::SCI_UNDO);
    EXPECT_EQ(Text("a.cpp"), cSource);
  });
}

TEST_F(IdeClassWizard, TheMemberAtTheCaretIsSelected) {
  Run([&] {
    PutCaret(*Tabs().OpenFile(ide.files.Path("a.h")), 4);
    std::vector<std::string> classes, members;
    ide.OnDialog([&](mavro::Form& form) {
      auto& wizard = static_cast<ClassWizard&>(form);
      for (int i = 0; i < wizard.target.items.GetCount(); ++i)
        classes.push_back(wizard.target.items[i]);
      for (int i = 0; i < wizard.after.items.GetCount(); ++i)
        members.push_back(wizard.after.items[i]);
      EXPECT_EQ(wizard.target.selectedIndex, 0);
      EXPECT_EQ(wizard.after.selectedIndex, 1);
      test::Key(form, Qt::Key_Escape);
    });
    IdeDriver::Press(Qt::Key_F12, Qt::ShiftModifier);
    EXPECT_THAT(classes, testing::ElementsAre("Shape", "Zoo"));
    EXPECT_THAT(members, testing::ElementsAre("draw()", "size()"));
    EXPECT_EQ(Text("a.h"), cHeader);
  });
}

TEST_F(IdeClassWizard, OnTheHeadOfAClass_TheLastPublicFunctionIsSelected) {
  const std::string header =
      "namespace n {\nclass Zoo {};\nclass Shape {\n public:\n  void draw();\n  int data;\n"
      " private:\n  void hide();\n};\n}\n";
  ide.Run({ide.Project({{"a.h", header}})}, [&] {
    PutCaret(*Tabs().OpenFile(ide.files.Path("a.h")), 3);
    bool ran = false;
    ide.OnDialog([&](mavro::Form& form) {
      auto& wizard = static_cast<ClassWizard&>(form);
      EXPECT_EQ(wizard.target.items[wizard.target.selectedIndex], "Shape");
      EXPECT_EQ(wizard.after.items[wizard.after.selectedIndex], "draw()");
      ran = true;
      test::Key(form, Qt::Key_Escape);
    });
    theBrowserActs.OnCommand(cAddMemberCommand);
    EXPECT_TRUE(ran);
  });
}

TEST_F(IdeClassWizard, EmptyPrototype_ChangesNothing) {
  Run([&] {
    PutCaret(*Tabs().OpenFile(ide.files.Path("a.h")), 3);
    Add("");
    EXPECT_EQ(Text("a.h"), cHeader);
    EXPECT_FALSE(Front().dirty);
  });
}

TEST_F(IdeClassWizard, WithoutAClass_SaysSo) {
  ide.Run({ide.Project({{"a.cpp", "int a;\n"}})}, [&] {
    PutCaret(*Tabs().OpenFile(ide.files.Path("a.cpp")), 1);
    IdeDriver::Press(Qt::Key_F12, Qt::ShiftModifier);
    EXPECT_EQ(IdeDriver::Status(), "No class in a.cpp and the files of the project");
  });
}

TEST_F(IdeClassWizard, ReadOnlySource_ChangesNeitherFile) {
  Run([&] {
    Tabs().OpenFile(ide.files.Path("a.cpp"))->SetReadOnly(true);
    PutCaret(*Tabs().OpenFile(ide.files.Path("a.h")), 3);
    Add("void more()");
    EXPECT_EQ(Text("a.h"), cHeader);
    EXPECT_NE(IdeDriver::Status().find("Read only"), std::string::npos) << IdeDriver::Status();
  });
}

}  // namespace
}  // namespace zendry
