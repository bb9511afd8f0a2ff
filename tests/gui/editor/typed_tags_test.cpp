#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

#include "EditorFixture.h"
#include "TagRun.h"
#include "TextInMemory.h"

// Tags that stay while somebody types into the body of a function, in the whole program.

namespace zendry {
namespace {

using test::IdeDriver;

constexpr char cSource[] =
    "struct Part { int first; int second; };\n"
    "Part part;\n"
    "void f() {\n"
    "  @\n"
    "}\n"
    "int after;\n";

class TypedTags : public test::EditorFixture {
 protected:
  // Opens a source of a project with the caret at its "@", its tags found.
  void Start(std::string text = cSource) {
    const size_t caret = text.find('@');
    text.erase(caret, 1);
    Open("a.cpp", text);
    Front().Select(static_cast<int>(caret), static_cast<int>(caret));
    theProject.parseOpenEditors(nullptr);
    ASSERT_TRUE(IsKept());
  }
  std::string Project() { return ide.Project({{"a.cpp", ""}}); }
  static TagData& Tags() { return theProject.ModuleOf(Front().LiveText().Path()); }
  // True if the text has the tags that were found last. The editor is told that it is painted.
  static bool IsKept() {
    Front().onUpdateUI();
    return Front().LiveText().parsed;
  }
  // Types, undoes or sends something that leaves the tags; the tags are still those of the text.
  static void ExpectKept(const char* what) {
    const uint64_t before = Tags().Generation();
    EXPECT_TRUE(IsKept()) << what;
    theProject.parseOpenEditors(nullptr);
    EXPECT_EQ(Tags().Generation(), before) << what;
  }
  static void ExpectParsed(const char* what) {
    const uint64_t before = Tags().Generation();
    EXPECT_FALSE(IsKept()) << what;
    theProject.parseOpenEditors(nullptr);
    EXPECT_NE(Tags().Generation(), before) << what;
  }
  static bool ListIsOpen() { return Front().Send(mavro::SCI_AUTOCACTIVE) != 0; }
  static void Send(unsigned message) { Front().Send(message); }
};

TEST_F(TypedTags, APointInABody_OpensItsListWithoutAParse) {
  ide.Run({Project()}, [&] {
    Start();
    const uint64_t before = Tags().Generation();
    Type("part.");
    EXPECT_TRUE(ListIsOpen());
    IdeDriver::Press(Qt::Key_Return);
    EXPECT_NE(Front().GetText().find("part.first"), std::string::npos);
    Type(";Part mine;mine->");
    EXPECT_TRUE(ListIsOpen()) << "of a variable that was typed after the parse";
    ExpectKept("a list");
    EXPECT_EQ(Tags().Generation(), before);
  });
}

TEST_F(TypedTags, AllWaysToChangeALine_KeepThem) {
  ide.Run({Project()}, [&] {
    Start();
    Type("abc+");
    ExpectKept("typed");
    Send(mavro::SCI_UNDO);
    ExpectKept("undone");
    Send(mavro::SCI_REDO);
    ExpectKept("redone");
    IdeDriver::Press(Qt::Key_Backspace);
    ExpectKept("removed");
    Front().ReplaceSelection("x = y;");
    ExpectKept("pasted");
    Front().Send(mavro::SCI_ADDSELECTION, static_cast<std::uintptr_t>(Front().CaretPosition() - 2),
                 Front().CaretPosition() - 2);
    Type("ab");
    ExpectKept("typed at two carets");
  });
}

TEST_F(TypedTags, OtherChanges_AskForAParse) {
  ide.Run({Project()}, [&] {
    Start();
    IdeDriver::Press(Qt::Key_Return);
    ExpectParsed("a new line");
    const auto brace = static_cast<int>(Front().GetText().rfind('{'));
    Front().Select(brace + 1, brace + 2);
    Front().ReplaceSelection("");
    ExpectParsed("a line less");
    Type("{");
    ExpectParsed("a brace");
    Front().Select(0, 0);
    Type("a");
    ExpectParsed("outside of a body");
    Front().Send(mavro::SCI_CONVERTEOLS, 0);
    ExpectParsed("other line ends");
    Front().ReplaceSelection("int v;");
    ASSERT_TRUE(Front().Save(CppEditor::SavedBy::cUser).Ok());
    EXPECT_TRUE(IsKept()) << "saving parses";
    ide.files.Write("a.cpp", "void g() { b }\n");
    ASSERT_TRUE(Front().Reload().Ok());
    ExpectParsed("reloaded");
  });
}

// Names, kinds and lines of all tags.
std::string Told(const TagData& tags) {
  std::string told;
  const auto add = [&](const TagItem& item) {
    told += item.kind + std::string(item.name) + ' ' + std::to_string(item.line) + '\n';
  };
  for (const TagItem& item : tags.globals) add(item);
  for (const auto& [name, record] : tags.classes) {
    add(record);
    for (const TagItem& member : record.members) add(member);
  }
  return told;
}

TEST_F(TypedTags, AnySteps_KeepTheTagsOfAFreshParseOrNone) {
  ide.Run({Project()}, [&] {
    std::string text;
    for (int i = 0; i < 10; ++i)
      text += "struct S" + std::to_string(i) +
              " {\n  int m;\n  void g() { m /* a */ = 1'0; }\n};\n" + "int f" + std::to_string(i) +
              "() {\n  s.a = R\"x(a)x\"; // b\n  @call(\"c\", 'd');\n}\n";
    for (size_t at = text.find('@'); at != text.rfind('@'); at = text.find('@')) text.erase(at, 1);
    Start(text);
    std::mt19937 random(7);
    const std::string words[] = {"a", ".", "->", " ", "x1", "(",  ")", "{", "}", "\n",
                                 "/", "*", "\"", "'", "R",  "\\", "#", ";", "?", "\r"};
    int kept = 0;
    for (int step = 0; step < 2000; ++step) {
      CppEditor& editor = Front();
      const int length = editor.Length();
      const int place = static_cast<int>(random() % static_cast<unsigned>(length + 1));
      switch (random() % 8) {
        case 0:
          Send(mavro::SCI_UNDO);
          break;
        case 1:
          Send(mavro::SCI_REDO);
          break;
        case 2:
          editor.Select(place, std::min(length, place + static_cast<int>(random() % 4)));
          editor.ReplaceSelection("");
          break;
        case 3:
          editor.Send(mavro::SCI_ADDSELECTION, static_cast<std::uintptr_t>(place), place);
          Type("b");
          break;
        default:
          editor.Select(place, place);
          editor.ReplaceSelection(words[random() % (random() % 3 == 0 ? 20 : 7)]);
      }
      if (!IsKept()) {
        theProject.parseOpenEditors(nullptr);
        continue;
      }
      ++kept;
      TagData fresh;
      test::TextInMemory same(editor.GetText(), "a.cpp");
      fresh.fileName = Tags().fileName;
      theProject.parseModule(fresh, &same);
      ASSERT_EQ(Told(Tags()), Told(fresh)) << step;
    }
    EXPECT_GT(kept, 200);
    ASSERT_TRUE(Front().Save(CppEditor::SavedBy::cProgram).Ok());
  });
}

}  // namespace
}  // namespace zendry
