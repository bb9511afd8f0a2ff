#include <gtest/gtest.h>

#include <string>

#include "ParsedProject.h"

// Names that exist twice in a project: those of the file in front and of what it includes go first.

namespace zendry {
namespace {

class Namesakes : public ::testing::Test {
 protected:
  Namesakes() {
    project.Add("/p/one/options.h",
                "struct Options {\n  int oneWidth;\n  void oneApply();\n};\n"
                "int theLimit();\nextern Options theOptions;\n");
    project.Add("/p/one/options.cpp",
                "#include \"options.h\"\nvoid Options::oneApply() {\n}\nOptions theOptions;\n");
    project.Add("/p/two/options.h",
                "struct Options {\n  int twoWidth;\n  void twoApply();\n};\nlong theLimit();\n");
    project.Add("/p/two/options.cpp", "#include \"options.h\"\nvoid Options::twoApply() {\n}\n");
    project.Add("/p/two/thing.h",
                "#include \"options.h\"\nstruct Thing : Options {\n  Options options;\n};\n");
  }
  static std::string Function(const std::string& include, const std::string& body) {
    return "#include \"" + include + "\"\nvoid f() {\n  " + body + "\n}\n";
  }
  // The file and line of the symbol at the caret.
  std::string Target(const std::string& path, const std::string& withCaret) {
    const test::CodeText editor = project.Edit(path, withCaret);
    ResolveInfo info;
    if (!project.completion.wizard.resolveAt(editor, info, 0)) return "";
    return info.file + ":" + std::to_string(info.targetLine);
  }

  test::ParsedProject project;
};

TEST_F(Namesakes, ClassThatIsIncluded_GoesFirst) {
  EXPECT_EQ(project.Names("/p/one/main.cpp", Function("options.h", "Options o; o.@")),
            "oneApply oneWidth");
  EXPECT_EQ(project.Names("/p/two/main.cpp", Function("options.h", "Options o; o.@")),
            "twoApply twoWidth");
  EXPECT_EQ(project.Names("/p/two/main.cpp", Function("options.h", "Options o; o.two@")),
            "twoApply twoWidth");
  EXPECT_EQ(project.Names("/p/two/main.cpp", Function("options.h", "Options::@")),
            "twoApply twoWidth");
  EXPECT_EQ(project.Names("/p/main.cpp", Function("two/options.h", "Options o; (&o)->@")),
            "twoApply twoWidth");
}

TEST_F(Namesakes, ClassThatIsIncludedByAnIncludedFile_GoesFirst) {
  EXPECT_EQ(project.Names("/p/main.cpp", Function("two/thing.h", "Options o; o.@")),
            "twoApply twoWidth");
}

TEST_F(Namesakes, ClassOfTheFileInFront_GoesBeforeTheIncludedOne) {
  EXPECT_EQ(project.Names("/p/main.cpp",
                          "#include \"one/options.h\"\nstruct Options { int own; };\n"
                          "void f() {\n  Options o;\n  o.@\n}\n"),
            "own");
}

TEST_F(Namesakes, WithoutAnInclude_TheFirstOfTheProjectGoes) {
  EXPECT_EQ(project.Names("/p/main.cpp", Function("none.h", "Options o; o.@")),
            "oneApply oneWidth");
}

TEST_F(Namesakes, TypeOfAMember_IsTheClassThatItsFileMeans) {
  EXPECT_EQ(project.Names("/p/one/main.cpp",
                          "#include \"options.h\"\n#include \"../two/thing.h\"\n"
                          "void f() {\n  Thing t;\n  t.options.@\n}\n"),
            "twoApply twoWidth");
}

TEST_F(Namesakes, Base_IsTheClassThatItsFileMeans) {
  EXPECT_EQ(project.Names("/p/one/main.cpp",
                          "#include \"options.h\"\n#include \"../two/thing.h\"\n"
                          "void f() {\n  Thing t;\n  t.@\n}\n"),
            "options twoApply twoWidth");
}

TEST_F(Namesakes, InADefinition_TheClassOfItsFileCounts) {
  EXPECT_EQ(project.Names("/p/two/options.cpp",
                          "#include \"options.h\"\nvoid Options::twoApply() {\n  this->@\n}\n"),
            "twoApply twoWidth");
  EXPECT_EQ(project.Names("/p/two/options.cpp",
                          "#include \"options.h\"\nvoid Options::twoApply() {\n  two@\n}\n"),
            "twoApply twoWidth");
}

TEST_F(Namesakes, Symbols_LeadToTheirOwnFile) {
  EXPECT_EQ(Target("/p/two/main.cpp", Function("options.h", "Options* o; o->twoAp@ply();")),
            "/p/two/options.h:2");
  EXPECT_EQ(Target("/p/two/main.cpp", Function("options.h", "return theLi@mit();")),
            "/p/two/options.h:4");
  EXPECT_EQ(Target("/p/one/main.cpp", Function("options.h", "return theLi@mit();")),
            "/p/one/options.h:4");
  EXPECT_EQ(Target("/p/two/main.cpp", Function("options.h", "g(Opti@ons());")),
            "/p/two/options.h:0");
}

// In `void n::Tag::read() {` the function is one of the class Tag of the namespace n.
TEST(NamesakesOfKinds, MemberDefinedWithItsNamespace_BelongsToTheClass) {
  test::ParsedProject project;
  project.Add("/p/other.h", "struct Tag { int wrong; };\nstruct Outer { int x; };\n");
  project.Add("/p/tag.h", "namespace n {\nclass Tag {\n  void read();\n  int d;\n};\n}\n");
  const std::string start = "#include \"tag.h\"\nvoid n::Tag::read() {\n";
  project.Add("/p/tag.cpp", start + "}\n");
  EXPECT_EQ(project.Names("/p/tag.cpp", start + "  this->@\n}\n"), "d read");
  project.Add("/p/none.cpp", "#include \"tag.h\"\nvoid Outer::Tag::f() {\n}\n");
  EXPECT_EQ(
      project.Names("/p/none.cpp", "#include \"tag.h\"\nvoid Outer::Tag::f() {\n  this->rea@\n}\n"),
      "");
}

// Of a nested class and a namesake elsewhere the scope of the function's class, or of the member's,
// decides.
TEST(NamesakesOfKinds, Base_IsTheClassOfTheNamespaceAround) {
  test::ParsedProject project;
  project.Add("/p/tag.h",
              "namespace lib {\nclass Tag {\npublic:\n  virtual int title();\n  Tag* copy();\n};\n"
              "namespace three { class Other : public Tag {\npublic:\n  int other();\n}; }\n}\n");
  project.Add("/p/two/tag.h",
              "#include \"../tag.h\"\nnamespace lib {\nnamespace two {\n"
              "class Tag : public lib::Tag {\npublic:\n  int frames();\n};\n"
              "class Big : public Tag {\npublic:\n  int size();\n};\n}\n}\n");
  const std::string use = "#include \"two/tag.h\"\n";
  EXPECT_EQ(project.Names("/p/a.cpp", use + "void f(lib::three::Other* t) {\n  t->@\n}\n"),
            "copy other title");
  EXPECT_EQ(project.Names("/p/a.cpp", use + "void f(lib::two::Big* t) {\n  t->@\n}\n"),
            "copy frames size title");
  EXPECT_EQ(project.Names("/p/a.cpp", use + "void f(lib::two::Tag* t) {\n  t->@\n}\n"),
            "copy frames title");
  EXPECT_EQ(project.Names("/p/a.cpp", use + "using namespace lib;\nvoid f(Tag* t) {\n  t->@\n}\n"),
            "copy title");
}

TEST(NamesakesOfKinds, NestedClassOfTheScope_GoesFirst) {
  test::ParsedProject project;
  project.Add("/p/other.h", "struct State { int wrong; };\n");
  project.Add("/p/dfa.h",
              "class Dfa {\n  struct State { int right; };\n  struct Params { State* start; };\n"
              "  void Run(State* s, Params* p);\n};\n");
  const std::string code = "#include \"dfa.h\"\n#include \"other.h\"\n";
  const auto names = [&](const std::string& typed) {
    return project.Names("/p/a.cpp",
                         code + "void Dfa::Run(State* s, Params* p) {\n  " + typed + "@\n}\n");
  };
  EXPECT_EQ(names("s->"), "right");
  EXPECT_EQ(names("p->start->"), "right");
  EXPECT_EQ(project.Names("/p/a.cpp", code + "void run(State* s) {\n  s->@\n}\n"), "wrong");
}

TEST(NamesakesOfKinds, StandardClass_ByItsNamespace) {
  test::ParsedProject project;
  test::CodeStores::AddClass(project.library, "string", 0).members = {test::Tag("size", 'p')};
  project.Add("/p/mine.h", "struct string { int mine; };\nstd::string name();\nstring own();\n");
  const std::string code = "#include \"mine.h\"\nvoid f() {\n  auto s = ";
  EXPECT_EQ(project.Names("/p/a.cpp", code + "name();\n  s.@\n}\n"), "size");
  EXPECT_EQ(project.Names("/p/a.cpp", code + "own();\n  s.@\n}\n"), "mine");
}

TEST(NamesakesOfKinds, CallsOfAStandardClass_AreItsOwn) {
  test::ParsedProject project;
  TagItem replace = test::Tag("replace", 'p');
  replace.type = "string";
  replace.signature = "(size_t pos, size_t n)";
  test::CodeStores::AddClass(project.library, "string", 0).members = {replace};
  project.Add("/p/mine.h",
              "struct string : std::string { int mine(int a); };\n"
              "struct other { int replace(int b); };\n");
  const auto tip = [&](const std::string& call) {
    const test::CodeText editor = project.Edit(
        "/p/a.cpp",
        "#include \"mine.h\"\nvoid f(std::string s, string own, other o) {\n  " + call + "@\n}\n");
    const std::optional<CallTip> found = project.completion.callTipAt(editor);
    return found ? found->overloads.front().label : "";
  };
  EXPECT_EQ(tip("s.replace("), "string string::replace(size_t pos, size_t n)");
  EXPECT_EQ(tip("s.mine("), "");
  EXPECT_EQ(tip("own.mine("), "int string::mine(int a)");
  EXPECT_EQ(tip("o.replace("), "int other::replace(int b)");
}

TEST(NamesakesOfKinds, MembersOfAMacro_OfThisPlatform) {
  test::ParsedProject project;
  project.Add("/p/a/win.h", "#define FIELDS int handle;\nstruct Own { int wide; };\n");
  project.Add("/p/b/unix.h", "#define FIELDS int fd;\nstruct Own { int narrow; };\n");
  project.Add("/p/task.h",
              "#ifdef _WIN32\n# include \"a/win.h\"\n#else\n# include \"b/unix.h\"\n#endif\n"
              "struct Task {\n  FIELDS\n};\n#undef FIELDS\n");
  project.Add("/p/mine.h",
              "#ifdef MINE\n# include \"a/win.h\"\n#else\n# include \"b/unix.h\"\n#endif\n"
              "struct Mine {\n  FIELDS\n};\n");
  const auto names = [&](const std::string& file, const std::string& type) {
    return project.Names("/p/a.cpp",
                         "#include \"" + file + "\"\nvoid f(" + type + "* t) {\n  t->@\n}\n");
  };
  EXPECT_EQ(names("task.h", "Task"), "fd");
  EXPECT_EQ(names("task.h", "Own"), "narrow");
  EXPECT_EQ(names("mine.h", "Mine"), "handle") << "the first, as nobody knows";
}

TEST(NamesakesOfKinds, MembersOfAMacro_ThatTheClassesFileUndefines) {
  test::ParsedProject project;
  project.Add("/p/near.h", "#define SECOND int near;\n");
  project.Add("/p/parts.h",
              "typedef void (*Done)(int status);\n#define FIRST Done done; int count;\n"
              "#define SECOND int far;\n");
  project.Add("/p/all.h",
              "#include \"near.h\"\n#include \"parts.h\"\nstruct Task {\n  FIRST\n};\n"
              "struct Other {\n  SECOND\n};\nstruct None {\n  THIRD\n};\n"
              "#undef FIRST\n#undef SECOND\n#define THIRD\n");
  const auto names = [&](const std::string& type) {
    return project.Names("/p/a.cpp", "#include \"all.h\"\nvoid f(" + type + "* t) {\n  t->@\n}\n");
  };
  EXPECT_EQ(names("Task"), "count done");
  EXPECT_EQ(names("Other"), "near");
  EXPECT_EQ(names("None"), "");
  const test::CodeText editor =
      project.Edit("/p/a.cpp", "#include \"all.h\"\nvoid f(Task* t) {\n  t->done(@\n}\n");
  const std::optional<CallTip> tip = project.completion.callTipAt(editor);
  EXPECT_EQ(tip ? tip->overloads.front().label : "", "void done(int status)");
}

TEST(NamesakesOfKinds, BaseThatATypedefNames) {
  test::ParsedProject project;
  project.Add("/p/set.h",
              "template <class T> class SetOf {\npublic:\n  int size();\n};\n"
              "typedef SetOf<void> Set;\nclass Queue : public Set {\npublic:\n  int own;\n};\n");
  EXPECT_EQ(project.Names("/p/a.cpp", "#include \"set.h\"\nvoid f(Queue q) {\n  q.@\n}\n"),
            "own size");
}

TEST(NamesakesOfKinds, AliasOfANamespace) {
  test::ParsedProject project;
  project.Add("/p/lib.h", "namespace longName {\nstruct One {};\n}\n");
  EXPECT_EQ(project.Names("/p/a.cpp",
                          "#include \"lib.h\"\nnamespace ln = longName;\nvoid f() {\n"
                          "  ln::O@\n}\n"),
            "One");
}

TEST(NamesakesOfKinds, MembersOfAUnnamedUnion_HaveTheAccessAroundIt) {
  test::ParsedProject project;
  project.Add("/p/u.h",
              "class Inst {\npublic:\n  int open;\nprivate:\n  union {\n    int hidden;\n"
              "  };\n};\n");
  EXPECT_EQ(project.Names("/p/a.cpp", "#include \"u.h\"\nvoid f(Inst i) {\n  i.@\n}\n"), "open");
}

TEST(NamesakesOfKinds, ArrowOfAClassOfTheProject_LeadsToWhatItPointsTo) {
  test::ParsedProject project;
  project.Add("/p/u.h",
              "struct Node {\n  int val;\n};\ntemplate <class T> class Ptr {\npublic:\n"
              "  T* operator->() const;\n  void reset();\n};\n"
              "struct Tree {\n  Ptr<Node> root;\n  Ptr<Node>* many;\n};\n");
  const auto names = [&](const std::string& typed) {
    return project.Names("/p/a.cpp", "#include \"u.h\"\nvoid f(Tree t) {\n  " + typed + "@\n}\n");
  };
  EXPECT_EQ(names("t.root->"), "val");
  EXPECT_EQ(names("t.root."), "reset");
  EXPECT_EQ(names("t.many->"), "reset");
}

TEST(NamesakesOfKinds, FunctionWithSeveralDeclarations_ByTheNumberOfArguments) {
  test::ParsedProject project;
  project.Add("/p/u.h",
              "struct One {\n  int one;\n};\nstruct Two {\n  int two;\n};\n"
              "One* make(int a);\nTwo* make(int a, int b);\nTwo* more(const char* f, ...);\n"
              "One* more();\n");
  const auto names = [&](const std::string& typed) {
    return project.Names("/p/a.cpp",
                         "#include \"u.h\"\nvoid f() {\n  auto p = " + typed + ";\n  p->@\n}\n");
  };
  EXPECT_EQ(names("make(1)"), "one");
  EXPECT_EQ(names("make(g(1, 2), 2)"), "two");
  EXPECT_EQ(names("make()"), "one") << "none fits: the first";
  EXPECT_EQ(names("more(\"a, b\", 1, 2)"), "two");
  EXPECT_EQ(names("more()"), "one");
}

TEST(NamesakesOfKinds, MacroBetweenTypeAndPointer) {
  test::ParsedProject project;
  project.Add("/p/u.h", "#define FAR\ntypedef struct {\n  int op;\n} code;\n");
  EXPECT_EQ(project.Names("/p/a.c", "#include \"u.h\"\nvoid f(code const FAR *t) {\n  t->@\n}\n"),
            "op");
}

}  // namespace
}  // namespace zendry
