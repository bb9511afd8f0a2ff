#include "base/PassedBodies.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "TagRun.h"
#include "TextInMemory.h"

namespace zendry {
namespace {

// A text whose tags have been found, changed at the "@" of its source.
class Typed {
 public:
  explicit Typed(std::string source) : editor(std::move(source)) {
    place = static_cast<int>(editor.text.find('@'));
    editor.text.erase(static_cast<size_t>(place), 1);
    test::ParseTags(editor.text);
    editor.bodies.Put(theTagParser.bodies.Take());
  }

  bool Hold(int removed, const std::string& added) {
    Change(removed, added);
    return editor.bodies.Hold(editor);
  }
  void Change(int removed, const std::string& added) {
    editor.bodies.WillChange(editor, place, removed, static_cast<int>(added.size()));
    editor.text.replace(static_cast<size_t>(place), static_cast<size_t>(removed), added);
  }

  test::TextInMemory editor;
  int place = 0;
};

// True if tags hold when `added` comes to the "@" of a text.
bool HoldWith(const std::string& source, const std::string& added) {
  return Typed(source).Hold(0, added);
}

// The same for a line of a body, for a removal, and for the line that is left.
bool HoldInLine(const std::string& line, const std::string& added = "x") {
  return HoldWith("void f() {\n" + line + "\n}\n", added);
}
bool HoldWithout(const std::string& line, int removed) {
  return Typed("void f() {\n" + line + "\n}\n").Hold(removed, "");
}

// The parts of a text, each between "[" and "]".
std::string Marked(const std::string& source) {
  test::ParseTags(source);
  std::string marked = source;
  const std::vector<TextPart> parts = theTagParser.bodies.Take();
  for (auto part = parts.rbegin(); part != parts.rend(); ++part)
    marked.insert(static_cast<size_t>(part->end), "]"),
        marked.insert(static_cast<size_t>(part->start), "[");
  return marked;
}

TEST(PassedBodies, AreThoseOfFunctions) {
  EXPECT_EQ(Marked("int f() { a; { b; } c; } int g();"), "int f() {[ a; { b; } c; ]} int g();");
  EXPECT_EQ(Marked("struct S { int m; void f() { a; } };"),
            "struct S { int m; void f() {[ a; ]} };");
  EXPECT_EQ(Marked("namespace n { enum E { a }; }"), "namespace n { enum E { a }; }");
  EXPECT_EQ(Marked("A::A() : b{2} { c; }"), "A::A() : b{[2]} {[ c; ]}");
}

TEST(PassedBodies, HaveNoDirectives) {
  EXPECT_EQ(Marked("void f() {\n  a;\n#define B \\\n  c\n  d;\n}"),
            "void f() {[\n  a;\n]#define B \\\n  c\n[  d;\n]}");
  EXPECT_EQ(Marked("void f() {\n#if 0\n  a;\n#endif\n  b;\n}"),
            "void f() {[\n]#if 0\n  a;\n#endif\n[  b;\n]}");
}

TEST(PassedBodies, CountTheTextsOwnBytes) {
  EXPECT_EQ(Marked("int a;\r\nint b;\r\nvoid f() {\r\n}\r\nvoid g() { }\r\n"),
            "int a;\r\nint b;\r\nvoid f() {[\r\n]}\r\nvoid g() {[ ]}\r\n");
  EXPECT_EQ(Marked("int a;\rint b;\r\n\nvoid f() { }"), "int a;\rint b;\r\n\nvoid f() {[ ]}");
}

TEST(PassedBodies, CountTheBytesOfManyReads) {
  for (const std::string end : {"\n", "\r\n", "\r"}) {
    std::string source, expected;
    for (int i = 0; i < 300; ++i) {
      const std::string before = "// " + std::to_string(i) + end + "void f() {";
      std::string body = end;
      for (int line = 0; line < 100; ++line) body += "  abc();" + end;
      source += before + body + "}" + end;
      expected += before + "[" + body + "]}" + end;
    }
    EXPECT_TRUE(Marked(source) == expected);
  }
}

TEST(PassedBodies, EndBeforeABraceThatWasReadAhead) {
  EXPECT_EQ(Marked("void f() { a?}"), "void f() {[ a?]}");
  EXPECT_EQ(Marked("void f() { a/}"), "void f() {[ a/]}");
}

TEST(PassedBodies, NeedTheirOwnBraces) {
  EXPECT_EQ(Marked("void f() { a; "), "void f() { a; ");
  EXPECT_EQ(Marked("void f() { a; ?\?>"), "void f() { a; ?\?>");
  EXPECT_EQ(Marked("void f() ?\?< a; }"), "void f() ?\?< a; }");
}

TEST(PassedBodies, TextThatIsLookedAtFromOutside_IsNotPassedOver) {
  EXPECT_EQ(Marked("MACRO(x // (\n) void k() { a; ) }\nvoid l() { b; }"),
            "MACRO(x // (\n) void k() { a; ) []}\nvoid l() {[ b; ]}");
  EXPECT_EQ(Marked("class EXPORT(x) A { void k() { a; } };"),
            "class EXPORT(x) A { void k() {[ a; ]} };");
  // The end of what is looked at moves with the bytes before it in the line.
  const std::string far(1100, '\n'), near(900, '\n');
  EXPECT_EQ(Marked("void f() { a; } class EXPORT(" + near + ") A { };"),
            "void f() {[ a; ]} class EXPORT(" + near + ") A { };");
  EXPECT_EQ(Marked("void f() { a; } class EXPORT(" + far + ") A { };"),
            "void f() { a; } class EXPORT(" + far + ") A { };");
}

TEST(PassedBodies, OfATextThatIsNotParsed_AreNone) {
  test::ParseTags("void f() { }");
  TagData store;
  store.fileName = "a.txt";
  test::TextReader reader("-");
  theTagParser.parseBuffer(store, &reader, false);
  EXPECT_TRUE(theTagParser.bodies.Take().empty());
}

TEST(PassedBodies, APointTypedInABody_ChangesNoTags) {
  EXPECT_TRUE(HoldInLine("  part@", "."));
  EXPECT_TRUE(HoldInLine("  part@", "->"));
  EXPECT_TRUE(HoldInLine("  call(\"a{\", part@);", "."));
  EXPECT_TRUE(HoldInLine("  call(a, part@); // it's", "."));
  EXPECT_TRUE(HoldWith("int f() { return a@; } int g();", "."));
  EXPECT_TRUE(HoldWith("int f() {@}", "a"));
}

TEST(PassedBodies, OutsideOfABody_TagsMayChange) {
  EXPECT_FALSE(HoldWith("int f@() { }", "a"));
  EXPECT_FALSE(HoldWith("void f() @{ }", "a"));
  EXPECT_FALSE(HoldWith("void f() { }@", "a"));
  EXPECT_FALSE(HoldWith("struct S { int a@; };", "b"));
  EXPECT_FALSE(HoldWith("int a@;", "."));
  EXPECT_FALSE(Typed("int f() { a@; } int b;").Hold(3, "")) << "over the end";
  EXPECT_TRUE(Typed("int f() { a@; } int b;").Hold(2, "")) << "up to the end";
}

TEST(PassedBodies, CharactersThatMatterToThePassing_AreNotPlain) {
  for (const std::string added : {"{", "}", "\"", "'", "/", "\\", "#", "?", "\n", "\r", "\xFF"})
    EXPECT_FALSE(HoldInLine("  a @ b", added)) << added;
  EXPECT_FALSE(HoldInLine("  a @ b", std::string(1, '\0')));
  EXPECT_TRUE(HoldInLine("  a @ b", " \t!$%&()*+,-.09:;<=>@AZ[]^_`az|~\x80\xFE"));
}

TEST(PassedBodies, RemovedCharacters_AreJudgedAlike) {
  EXPECT_TRUE(HoldWithout("  a @b.c d", 3));
  EXPECT_FALSE(HoldWithout("  a @b{} d", 3));
  EXPECT_FALSE(HoldWithout("  a @\"b\" d", 3));
  EXPECT_FALSE(HoldWithout("  a @// d", 2));
  EXPECT_FALSE(HoldWithout("  a @\n d", 1));
}

TEST(PassedBodies, BesideACharacterThatMatters_PlainOnesMatter) {
  EXPECT_FALSE(HoldInLine("  a /@* b", "x"));
  EXPECT_FALSE(HoldInLine("  /* *@/ b", "x"));
  EXPECT_FALSE(HoldInLine("  a ?@?/ b", "x"));
  EXPECT_FALSE(HoldInLine("  \"\\@\"\"", "x"));
  EXPECT_FALSE(HoldWithout("  a /@x/ b", 1));
  EXPECT_TRUE(HoldInLine("  a *@b", "x"));
  EXPECT_TRUE(HoldInLine("  a / @b", "x"));
}

TEST(PassedBodies, APrefixOrDelimiterOfALiteral_Matters) {
  EXPECT_FALSE(HoldInLine("  s = u@8R\"x({)x\";"));
  EXPECT_FALSE(HoldInLine("  s = R\"a@b({)ab\";"));
  EXPECT_FALSE(HoldInLine("  s = R\"ab({)a@b\";"));
  EXPECT_FALSE(HoldInLine("  s = R\"ab({a@b\" )ab\";", ")"));
  EXPECT_FALSE(HoldInLine("  a = 1@0'000;"));
  EXPECT_FALSE(HoldInLine("  a = 'hf@f b;"));
  EXPECT_TRUE(HoldInLine("  s = R\"ab({ @ )ab\";"));
  EXPECT_TRUE(HoldInLine("  a @= 1'000;"));
}

TEST(PassedBodies, ALineThatIsOrMayBecomeADirective_Matters) {
  EXPECT_FALSE(HoldInLine("  @ #define A", "x"));
  EXPECT_FALSE(HoldInLine("# @"));
  EXPECT_FALSE(HoldInLine("  @ /* a\n */ #define A"));
  EXPECT_TRUE(HoldInLine("  // a\n  @b"));
  EXPECT_FALSE(HoldInLine("  @a \\\n#define A"));
  EXPECT_FALSE(HoldInLine("  @a ?\?/\n#define A"));
  EXPECT_FALSE(HoldInLine("  a \\\n@b"));
  EXPECT_FALSE(HoldInLine("  a \\\r\n@b"));
  EXPECT_FALSE(HoldInLine("  a ?\?/\n@b"));
  EXPECT_TRUE(HoldInLine("  a \\\n\n@b"));
  EXPECT_FALSE(HoldInLine("  /*\n#inc@lude \"a\"\n*/"));
  EXPECT_FALSE(HoldInLine(std::string("  @a\0", 5) + "\n#define A"));
}

TEST(PassedBodies, BetweenTheBytesOfALineEnd_IsNoPlace) {
  EXPECT_FALSE(HoldInLine("  a\r@\n  b"));
  EXPECT_FALSE(HoldWithout("  a\r@x\n  b", 1));
  EXPECT_TRUE(HoldInLine("  a@\r\n  b"));
  EXPECT_TRUE(HoldInLine("  a\r\n@  b"));
}

// Who looks for the open namespaces looks again when the tags are new.
TEST(PassedBodies, ALineThatNamesANamespace_Matters) {
  EXPECT_FALSE(HoldInLine("  using namespace st@d;", "x"));
  EXPECT_FALSE(HoldInLine("  using namespac@ std;", "e"));
  EXPECT_FALSE(HoldWithout("  using namespac@e std;", 1));
  EXPECT_TRUE(HoldInLine("  using name@ std;", "s"));
}

TEST(PassedBodies, LongLines_AreNotJudged) {
  const std::string most(PassedBodies::cLongestLine - 1, 'a');
  EXPECT_TRUE(HoldInLine(most + "@", "x"));
  EXPECT_FALSE(HoldInLine(most + "a@", "x"));
  EXPECT_TRUE(HoldInLine("@" + most, "x"));
  EXPECT_FALSE(HoldInLine("@" + most + "a", "x"));
  EXPECT_TRUE(HoldInLine("@", most + "x"));
  EXPECT_FALSE(HoldInLine("@", most + "xx"));
  EXPECT_TRUE(Typed("void f() {\n" + most + "a@\n}").Hold(0, "")) << "nothing has changed";
  EXPECT_TRUE(Typed("void f() {\n@a" + most + "\n}").Hold(1, ""));
}

TEST(PassedBodies, LaterParts_MoveWithTheText) {
  Typed typed("void f() {\n  a@\n}\nvoid g() { }\n");
  EXPECT_TRUE(typed.Hold(0, "bcd"));
  typed.place = static_cast<int>(typed.editor.text.rfind('}'));
  EXPECT_TRUE(typed.Hold(0, "x"));
  EXPECT_FALSE(typed.editor.bodies.Parts().empty());
  typed.place = static_cast<int>(typed.editor.text.rfind("g()"));
  EXPECT_FALSE(typed.Hold(0, "x"));
}

TEST(PassedBodies, AChangeThatMatters_IsRememberedUntilTheNextParse) {
  Typed typed("void f() { a@ }");
  typed.Change(0, "{");
  typed.Change(1, "");
  EXPECT_FALSE(typed.editor.bodies.Hold(typed.editor)) << "nobody compares with the old text";
  test::ParseTags(typed.editor.text);
  typed.editor.bodies.Put(theTagParser.bodies.Take());
  EXPECT_TRUE(typed.editor.bodies.Hold(typed.editor));
  EXPECT_FALSE(typed.editor.bodies.HasChanged());
  EXPECT_TRUE(typed.Hold(0, "x"));
  EXPECT_TRUE(typed.editor.bodies.HasChanged());
}

TEST(PassedBodies, OfATextThatWasNeverParsed_DoNotHold) {
  test::TextInMemory editor("void f() { }");
  EXPECT_FALSE(editor.bodies.Hold(editor));
}

}  // namespace
}  // namespace zendry
