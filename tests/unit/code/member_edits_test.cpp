#include "code/MemberEdits.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <string>

#include "ParsedProject.h"
#include "TempFolder.h"

namespace zendry {
namespace {

// The files of a project by their names in "/p/", and what a change makes of them. A caret is
// written as '@'.
class MemberEditsTest : public ::testing::Test {
 protected:
  void Add(const std::string& name, const std::string& text) {
    files["/p/" + name] = text;
    project.Add("/p/" + name, text);
  }
  // The tag of a class's member; the class itself without a name. `line` chooses among several.
  TagItem& Item(const std::string& className, const std::string& name = "", int line = 0) {
    for (TagData* module : project.Modules()) {
      module->Changed();
      const auto found = module->classes.find(className);
      if (found == module->classes.end()) continue;
      TagClass& record = found->second;
      record.module = module;
      record.owner = &record;
      if (name.empty() && record.line >= 0) return record;
      for (TagItem& member : record.members) {
        if (member.name != name || (line && member.line != line)) continue;
        member.owner = &record;
        member.module = module;
        return member;
      }
    }
    ADD_FAILURE() << className << "::" << name << " is not there";
    static TagItem none;
    return none;
  }
  MemberEdits Edits() {
    return {project.completion.wizard, project,
            [this](const std::string& path) -> std::optional<std::string> {
              const auto found = files.find(path);
              if (found == files.end()) return std::nullopt;
              return found->second;
            },
            [this](const std::string& header) {
              const std::string source = header.substr(0, header.rfind('.')) + ".cpp";
              return files.contains(source) ? source : std::string();
            },
            UsualHabits(4, 4, false)};
  }
  void Apply(const MemberChange& change) {
    error = change.error;
    for (const FileEdits& file : change.files) {
      std::string& text = files[file.path];
      for (auto edit = file.edits.rbegin(); edit != file.edits.rend(); ++edit)
        text.replace(edit->offset, edit->length, edit->text);
      carets += file.caret.has_value();
      if (file.caret) text.insert(*file.caret, "@");
    }
  }
  void Insert(const TagItem& after, const std::string& prototype) {
    Apply(Edits().InsertMember(after, prototype));
  }
  const std::string& Header() { return files["/p/a.h"]; }
  const std::string& Source() { return files["/p/a.cpp"]; }

  std::map<std::string, std::string> files;
  test::ParsedProject project;
  std::string error;
  int carets = 0;
};

constexpr char cHeader[] =
    "class A {\n"
    " public:\n"
    "  A();\n"
    "  int f(int a);  // first\n"
    "  int g();\n"
    "\n"
    " private:\n"
    "  int m;\n"
    "};\n";
constexpr char cSource[] =
    "#include \"a.h\"\n"
    "\n"
    "A::A() : m(1) {\n"
    "}\n"
    "\n"
    "int A::f(int a) {\n"
    "  return a;\n"
    "}\n"
    "\n"
    "int last() { return 0; }\n";

TEST_F(MemberEditsTest, Insert_AfterAPrototype_GoesBehindBothOfIt) {
  Add("a.h", cHeader);
  Add("a.cpp", cSource);
  Insert(Item("A", "f"), "virtual int sum(int a, int b = 2) const;");
  EXPECT_EQ(Header(),
            "class A {\n public:\n  A();\n  int f(int a);  // first\n"
            "  virtual int sum(int a, int b = 2) const;\n  int g();\n\n private:\n  int m;\n};\n");
  EXPECT_EQ(Source(),
            "#include \"a.h\"\n\nA::A() : m(1) {\n}\n\nint A::f(int a) {\n  return a;\n}\n\n"
            "int A::sum(int a, int b) const {\n  @\n}\n\nint last() { return 0; }\n");
  EXPECT_EQ(carets, 1);
}

TEST_F(MemberEditsTest, Insert_AfterADefinitionInTheSource_IsTheSame) {
  Add("a.h", cHeader);
  Add("a.cpp", cSource);
  Insert(Item("A", "f", 6), "void h()");
  EXPECT_NE(Header().find("// first\n  void h();\n"), std::string::npos) << Header();
  EXPECT_NE(Source().find("}\n\nvoid A::h() {\n  @\n}\n\nint last"), std::string::npos) << Source();
}

TEST_F(MemberEditsTest, Insert_AfterAMemberWithoutDefinition_AppendsToTheSource) {
  Add("a.h", cHeader);
  Add("a.cpp", cSource);
  Insert(Item("A", "m"), "void h()");
  EXPECT_NE(Header().find("  int m;\n  void h();\n};\n"), std::string::npos) << Header();
  EXPECT_TRUE(Source().ends_with("int last() { return 0; }\n\nvoid A::h() {\n  @\n}\n"))
      << Source();
}

TEST_F(MemberEditsTest, Insert_AfterAnInlineMethod_PutsAnInlineBodyBehindIt) {
  Add("a.h", "struct A {\n    A() : m{1}, n{2} {}\n    int m{0}, n;\n};\n");
  Add("a.cpp", "");
  Insert(Item("A", "A"), "int f() const");
  EXPECT_EQ(Header(),
            "struct A {\n    A() : m{1}, n{2} {}\n    int f() const {\n        @\n    }\n"
            "    int m{0}, n;\n};\n");
  EXPECT_EQ(Source(), "");
}

TEST_F(MemberEditsTest, Insert_KeepsTabsBracesAndLineEnds) {
  Add("a.h", "class A\r\n{\r\npublic:\r\n\tvoid f();\r\n};\r\n");
  Add("a.cpp", "#include \"a.h\"\r\nvoid A::f()\r\n{\r\n\tint a;\r\n}\r\n");
  Insert(Item("A", "f"), "void g()");
  EXPECT_EQ(Header(), "class A\r\n{\r\npublic:\r\n\tvoid f();\r\n\tvoid g();\r\n};\r\n");
  EXPECT_EQ(
      Source(),
      "#include \"a.h\"\r\nvoid A::f()\r\n{\r\n\tint a;\r\n}\r\n\r\nvoid A::g()\r\n{\r\n\t@\r\n"
      "}\r\n");
}

TEST_F(MemberEditsTest, Insert_ClassOnOneLine_IsOpened) {
  Add("a.cpp", "struct A { int a; int b; };\n");
  Insert(Item("A", "b"), "void f()");
  EXPECT_EQ(Source(), "struct A { int a; int b;\n    void f();\n};\n\nvoid A::f()\n{\n    @\n}\n");
}

TEST_F(MemberEditsTest, Insert_BetweenTwoOnOneLine) {
  Add("a.cpp", "struct A {\n  int a; int b;\n};\n");
  Insert(Item("A", "a"), "static void f() = delete");
  EXPECT_EQ(Source(), "struct A {\n  int a;\n  static void f() = delete;\n  int b;\n};\n");
}

TEST_F(MemberEditsTest, Insert_EmptyClass_GetsAPublicPart) {
  Add("a.h", "class A {\n};\n");
  Insert(Item("A"), "virtual void f() = 0;");
  EXPECT_EQ(Header(), "class A {\npublic:\n    virtual void f() = 0;\n};\n");
  Add("b.h", "struct B {};\n");
  Insert(Item("B"), "virtual void f() = 0;");
  EXPECT_EQ(files["/p/b.h"], "struct B {\n    virtual void f() = 0;\n};\n");
}

TEST_F(MemberEditsTest, Insert_TheClassItself_BecomesItsLastMember) {
  Add("a.h", cHeader);
  Add("a.cpp", cSource);
  Insert(Item("A"), "void h()");
  EXPECT_NE(Header().find("  int m;\n  void h();\n};\n"), std::string::npos) << Header();
}

TEST_F(MemberEditsTest, Insert_HeaderWithoutSource_PutsTheBodyIntoTheClass) {
  Add("a.h", "struct A {\n  int f();\n};\n");
  Insert(Item("A", "f"), "int g()");
  EXPECT_EQ(Header(), "struct A {\n  int f();\n  int g()\n  {\n    @\n  }\n};\n");
}

TEST_F(MemberEditsTest, Insert_TemplatesAndTheirNestedClasses_GetTheBodyInTheClass) {
  Add("a.h",
      "template <class T>\nclass A : public B<T> {\n  T f();\n  struct In {\n    T h();\n  "
      "};\n};\n");
  Add("a.cpp", "");
  Insert(Item("A", "f"), "T g() const");
  EXPECT_NE(Header().find("  T f();\n  T g() const\n  {\n    @\n  }\n"), std::string::npos)
      << Header();
  Insert(Item("A::In", "h"), "T i() const");
  EXPECT_EQ(Source(), "");
}

TEST_F(MemberEditsTest, Insert_ClassInANamespace_IsDefinedInIt) {
  Add("a.h", "namespace n {\nnamespace m {\nclass A {\n  void f();\n};\n}\n}\n");
  Add("a.cpp", "#include \"a.h\"\nnamespace n::m {\nint one() { return 1; }\n}  // namespace\n");
  Insert(Item("A", "f"), "void g()");
  EXPECT_EQ(
      Source(),
      "#include \"a.h\"\nnamespace n::m {\nint one() { return 1; }\n\nvoid A::g() {\n    @\n}\n"
      "}  // namespace\n");
}

TEST_F(MemberEditsTest, Insert_SourceWithoutTheNamespace_GetsIt) {
  Add("a.h", "namespace n {\nnamespace m {\nclass A {\n  void f();\n};\n}\n}\n");
  Add("a.cpp", "#include \"a.h\"");
  Insert(Item("A", "f"), "void g()");
  EXPECT_EQ(Source(),
            "#include \"a.h\"\n\nnamespace n { namespace m {\n\nvoid A::g()\n{\n    @\n}\n\n} }\n");
}

TEST_F(MemberEditsTest, Insert_NamespaceBeforeTheNameIsKept) {
  Add("a.h", "namespace n {\nclass A {\n  void f();\n};\n}\n");
  Add("a.cpp", "#include \"a.h\"\nvoid n::A::f() {}\n");
  Insert(Item("A", "f"), "void g()");
  EXPECT_TRUE(Source().ends_with("void n::A::f() {}\n\nvoid n::A::g() {\n    @\n}\n")) << Source();
}

TEST_F(MemberEditsTest, Insert_NestedClass_IsNamedInFull) {
  Add("a.h", "class A {\n  class In {\n    void f();\n  };\n  enum State { one };\n};\n");
  Add("a.cpp", "");
  Insert(Item("A::In", "f"), "void g()");
  EXPECT_NE(Header().find("    void f();\n    void g();\n  };\n"), std::string::npos) << Header();
  EXPECT_EQ(Source(), "void A::In::g()\n{\n    @\n}\n");
}

TEST_F(MemberEditsTest, Insert_AfterAnEnumerator_GoesBehindTheEnumeration) {
  Add("a.h", "class A {\n  enum State { one, two };\n  int b;\n};\n");
  Add("a.cpp", "");
  Insert(Item("A", "one"), "State f()");
  EXPECT_NE(Header().find("two };\n  State f();\n  int b;\n"), std::string::npos) << Header();
  EXPECT_EQ(Source(), "A::State A::f()\n{\n    @\n}\n");
}

TEST_F(MemberEditsTest, Insert_Blank_ChangesNothing) {
  Add("a.h", cHeader);
  Insert(Item("A", "f"), " ;\n");
  EXPECT_EQ(Header(), cHeader);
  EXPECT_EQ(error, "");
}

TEST_F(MemberEditsTest, Insert_WithoutParameters_DeclaresOnly) {
  Add("a.h", cHeader);
  Add("a.cpp", cSource);
  Insert(Item("A", "m"), "int n");
  EXPECT_NE(Header().find("  int m;\n  int n;\n"), std::string::npos);
  EXPECT_EQ(Source(), cSource);
}

TEST_F(MemberEditsTest, Insert_WithABody_KeepsIt) {
  Add("a.h", cHeader);
  Add("a.cpp", cSource);
  Insert(Item("A", "m"), "int n() { return 1; }");
  EXPECT_NE(Header().find("  int m;\n  int n() { return 1; }\n"), std::string::npos) << Header();
  EXPECT_EQ(Source(), cSource);
}

TEST_F(MemberEditsTest, Insert_ClassClosedByAMacro_GoesBehindTheMember) {
  Add("a.h", "class A {\n  int f();\n  int g();\nEND_OF_CLASS\n");
  Add("a.cpp", "");
  Insert(Item("A", "f"), "int h()");
  EXPECT_EQ(Header(), "class A {\n  int f();\n  int h();\n  int g();\nEND_OF_CLASS\n");
}

TEST_F(MemberEditsTest, Insert_IntoTextsThatDoNotParse_LeavesAllElse) {
  const std::string brokenHeader = "class A {\n  int f();\n  int g(;\n  }} @@@ \"\n";
  const std::string brokenSource = "int A::f() {\n  return (1;\n}\n}}} '\n";
  Add("a.h", brokenHeader);
  Add("a.cpp", brokenSource);
  Insert(Item("A", "f"), "int h()");
  EXPECT_EQ(Header(), "class A {\n  int f();\n  int h();\n  int g(;\n  }} @@@ \"\n");
  std::string rest = Source();
  const std::string added = "int A::h() {\n  @\n}\n";
  const size_t at = rest.find(added);
  ASSERT_NE(at, rest.npos) << rest;
  rest.erase(at, added.size());
  std::erase(rest, '\n');
  std::string before = brokenSource;
  std::erase(before, '\n');
  EXPECT_EQ(rest, before) << "every byte but empty lines is where it was";
}

TEST_F(MemberEditsTest, Insert_TextThatHasChangedSince_ChangesNothing) {
  Add("a.h", cHeader);
  Add("a.cpp", cSource);
  const TagItem& after = Item("A", "f");
  files["/p/a.h"] = "int nothing;\n{{{\n";
  Insert(after, "int h()");
  EXPECT_EQ(Header(), "int nothing;\n{{{\n");
  EXPECT_EQ(Source(), cSource);
  EXPECT_NE(error, "");
  files.erase("/p/a.h");
  Insert(after, "int h()");
  EXPECT_EQ(error, "Could not open file \"/p/a.h\"");
}

TEST_F(MemberEditsTest, Insert_ClassKnownFromItsMembersOnly_IsRefused) {
  Add("a.cpp", "void Gone::f() {}\n");
  Insert(Item("Gone", "f"), "int h()");
  EXPECT_EQ(error, "No class \"Gone\" in the files of the project");
}

TEST_F(MemberEditsTest, Handler_ThatIsThere_IsFound) {
  Add("a.h", cHeader);
  Add("a.cpp", cSource);
  Item("A");
  const HandlerPlace found = Edits().GoToOrAddHandler("A", "f", "int", "int a");
  ASSERT_TRUE(found.place);
  EXPECT_EQ(found.place->path, "/p/a.cpp");
  EXPECT_EQ(found.place->line, 5);
  EXPECT_EQ(Edits().GoToOrAddHandler("A", "g", "int", "").place->path, "/p/a.h");
}

TEST_F(MemberEditsTest, Handler_ThatIsMissing_IsAddedAfterTheLastMember) {
  Add("a.h", cHeader);
  Add("a.cpp", cSource);
  Item("A");
  const HandlerPlace added = Edits().GoToOrAddHandler("A", "onClick", "void", "Args& args");
  EXPECT_FALSE(added.place);
  Apply(added.change);
  EXPECT_NE(Header().find("  int m;\n  void onClick(Args& args);\n};"), std::string::npos);
  EXPECT_NE(Source().find("\nvoid A::onClick(Args& args) {\n  @\n}\n"), std::string::npos);
  EXPECT_NE(Edits().GoToOrAddHandler("None", "f", "void", "").change.error, "");
}

TEST_F(MemberEditsTest, Remove_TakesDeclarationAndDefinitionOfThatOverload) {
  Add("a.h", "class A {\n  void f();\n  void f(int a = 1);  // more\n  void g();\n};\n");
  Add("a.cpp",
      "#include \"a.h\"\n\nvoid A::f() {\n}\n\nvoid A::f(int b) {\n  { }\n}\n\nvoid A::g() {}\n");
  Apply(Edits().Remove(Item("A", "f", 3)));
  EXPECT_EQ(Header(), "class A {\n  void f();\n  void g();\n};\n");
  EXPECT_EQ(Source(), "#include \"a.h\"\n\nvoid A::f() {\n}\n\nvoid A::g() {}\n");
}

TEST_F(MemberEditsTest, Remove_InlineMethodDataAndClass) {
  Add("a.h",
      "class A {\n  A() : m{1} {}\n  int m;\n  std::map<int, int> n;\n};\nstruct B : A {\n  int "
      "c;\n};\n");
  Apply(Edits().Remove(Item("A", "A")));
  EXPECT_TRUE(Header().starts_with("class A {\n  int m;\n")) << Header();
  project.Add("/p/a.h", Header());
  Apply(Edits().Remove(Item("A", "n")));
  EXPECT_TRUE(Header().starts_with("class A {\n  int m;\n};\n")) << Header();
  project.Add("/p/a.h", Header());
  Apply(Edits().Remove(Item("B")));
  EXPECT_EQ(Header(), "class A {\n  int m;\n};\n");
}

TEST_F(MemberEditsTest, Remove_OneOfSeveralNames_IsRefused) {
  Add("a.h", "struct A {\n  int a, b;\n};\n");
  Apply(Edits().Remove(Item("A", "b")));
  EXPECT_EQ(error, "It can't be told where \"b\" begins and ends in /p/a.h");
  EXPECT_EQ(Header(), "struct A {\n  int a, b;\n};\n");
}

TEST_F(MemberEditsTest, Remove_MacroAndGlobal) {
  Add("a.h", "#define ONE(a) \\\n  (a)\nint twice(int a);\n");
  Add("a.cpp", "#include \"a.h\"\nint twice(int a) { return 2 * a; }\nint v;\n");
  Add("other.cpp", "static int twice(int a);\n");
  const auto global = [&](int module, const std::string& name) -> TagItem& {
    TagData* data = project.Modules()[static_cast<size_t>(module)];
    TagItem* found = data->findGlobal(name);
    found->module = data;
    return *found;
  };
  Apply(Edits().Remove(global(0, "ONE")));
  EXPECT_EQ(Header(), "int twice(int a);\n");
  project.Add("/p/a.h", Header());
  Apply(Edits().Remove(global(1, "twice")));
  EXPECT_EQ(Header(), "");
  EXPECT_EQ(Source(), "#include \"a.h\"\nint v;\n");
  EXPECT_EQ(files["/p/other.cpp"], "static int twice(int a);\n") << "another function";
}

TEST_F(MemberEditsTest, Remove_SecondStatementOfALine_LeavesTheFirst) {
  Add("a.h", "struct A {\n  int a; int b;\n};\n");
  Apply(Edits().Remove(Item("A", "b")));
  EXPECT_EQ(Header(), "struct A {\n  int a; \n};\n");
}

// What is written must compile: all kinds of prototypes, added to classes of all kinds.
TEST_F(MemberEditsTest, Insert_WhatIsWritten_Compiles) {
  const std::string members =
      "  struct Inner { int i; };\n  enum State { one };\n  typedef int Number;\n";
  Add("a.h",
      "#pragma once\n#include <map>\n#include <string>\n#include <vector>\n"
      "struct Base {\n  virtual ~Base() {}\n  virtual int over(int a) const { return a; }\n};\n"
      "class Plain : public Base {\n public:\n" +
          members +
          "  Plain();\n  class In {\n   public:\n    void f();\n  };\n};\n"
          "namespace n {\nnamespace m {\nclass Deep : public Base {\n public:\n" +
          members +
          "  void f();\n};\n}\n}\n"
          "template <class T>\nclass Bag : public Base {\n public:\n" +
          members + "  T take(T a) { return a; }\n};\n");
  Add("a.cpp", "#include \"a.h\"\nPlain::Plain() {}\nvoid n::m::Deep::f() {}\n");
  const auto refresh = [&] {
    for (auto& [path, text] : files) {
      if (const size_t caret = text.find('@'); caret != text.npos) text.erase(caret, 1);
      project.Add(path, text);
    }
  };
  int number = 0;
  for (const auto& [owner, after] : std::map<std::string, std::string>{
           {"Plain", "Plain"}, {"Plain::In", "f"}, {"Deep", "f"}, {"Bag", "take"}, {"Deep ", ""}}) {
    const std::string className = owner == "Deep " ? "Deep" : owner;
    const std::string own = className.substr(className.rfind(':') + 1);
    const std::string name = " f" + std::to_string(++number);
    std::vector<std::string> prototypes = {
        "virtual void" + name + "a(int a = 1, std::map<int, int> b = {{1, 2}})",
        "static int" + name + "b()",
        "const std::string&" + name + "c(const char* text = \"a, b\") const noexcept",
        "auto" + name + "d(int a) const -> std::vector<int>",
        "auto" + name + "e()",
        "template <class U> U" + name + "f(U u)",
        "constexpr void" + name + "g()",
        "void (*" + name + "h(int a))(char)",
        "explicit " + own + "(int a, char b = 'c')",
        own + "(const " + own + "&) = default",
        "bool operator<(const " + own + "& other) const",
        "int operator()(int a = 3)",
        "operator double() const",
        "[[nodiscard]] int" + name + "i(...)",
        "int" + name + "j;",
        "int" + name + "k() { return 1; }",
        "inline int" + name + "l() const&",
        "friend void" + name + "m(" + own + "&)"};
    // The name of the class is used up by the second round.
    if (owner == "Deep ")
      std::erase_if(prototypes, [&](const std::string& prototype) {
        return prototype.find(own) != std::string::npos ||
               prototype.find("operator") != std::string::npos;
      });
    if (own != "In") {
      prototypes.push_back("Inner" + name + "n(Inner* a, Number b = 0)");
      prototypes.push_back("std::vector<State>" + name + "o(State a = one)");
      if (owner != "Deep ") prototypes.push_back("int over(int a) const override");
    }
    for (const std::string& prototype : prototypes) {
      refresh();
      TagItem& place = Item(className, after);
      Insert(place, prototype);
      ASSERT_EQ(error, "") << prototype;
    }
  }
  refresh();
  test::TempFolder folder;
  for (const auto& [path, text] : files) folder.Write(path.substr(3), text);
  const std::string command =
      "g++ -std=c++20 -w -fsyntax-only " + folder.Path() + "/a.cpp 2>" + folder.Path() + "/errors";
  EXPECT_EQ(std::system(command.c_str()), 0) << folder.Read("errors") << Header() << Source();
}

}  // namespace
}  // namespace zendry
