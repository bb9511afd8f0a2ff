#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>

#include "ParsedProject.h"
#include "TempFolder.h"
#include "tags/LibraryNames.h"

// What can stand where an expression or a statement begins: the free list.

namespace zendry {
namespace {

class FreeNames : public ::testing::Test {
 protected:
  FreeNames() {
    project.Add("/p/shape.h",
                "struct sShape { int width; };\nunion sUnion { int i; };\nclass sClass {};\n"
                "enum sColor { sRed, sGreen };\ntypedef int sInt;\n#define S_MAC 1\n"
                "#define sMac(x) x\nextern int sVar;\nint sFunc(int a);\nnamespace sSpace {\n}\n"
                "class Base {\npublic:\n  void sOpen();\nprotected:\n  int sGuarded;\nprivate:\n"
                "  int sHidden;\n};\n"
                "class Door : public Base {\n  struct sInner { int i; };\n  int sOwn;\n"
                "  void turn();\n  enum sKind { sOak };\n};\n");
  }
  std::string Names(const std::string& code, const std::string& path = "/p/main.cpp") {
    return project.Names(path, "#include \"shape.h\"\n" + code);
  }
  // The row of a name as "kind type signature"; empty without one.
  std::string Row(const std::string& code, const std::string& name) {
    const CompletionList list = project.List("/p/main.cpp", "#include \"shape.h\"\n" + code);
    const CompletionRow* row = list.Find(name);
    if (!row) return "";
    return std::string(NameOf(row->kind)) + " " + row->type + " " + row->signature;
  }

  test::ParsedProject project;
};

TEST_F(FreeNames, InAFunction_HaveAllKinds) {
  const std::string names = Names("void f(int sParam) {\n  char sLocal;\n  s@\n}\n");
  for (const char* name : {"sParam", "sLocal", "sShape", "sUnion", "sClass", "sColor", "sRed",
                           "sInt", "sMac", "sFunc", "sSpace", "static", "sizeof", "std"})
    EXPECT_NE((" " + names + " ").find(std::string(" ") + name + " "), std::string::npos) << name;
  for (const char* name : {"sOpen", "sOwn", "sInner", "width", "sOak", "sHidden"})
    EXPECT_EQ((" " + names + " ").find(std::string(" ") + name + " "), std::string::npos) << name;
}

TEST_F(FreeNames, InAMember_HaveThoseOfTheClassAndItsBases) {
  const std::string names = " " + Names("void Door::turn() {\n  s@\n}\n") + " ";
  for (const char* name : {"sOpen", "sGuarded", "sOwn", "sInner", "sOak", "sKind"})
    EXPECT_NE(names.find(std::string(" ") + name + " "), std::string::npos) << name;
  EXPECT_EQ(names.find(" sHidden "), std::string::npos);
}

TEST_F(FreeNames, Rows_TellKindTypeAndSignature) {
  const std::string code = "void f(const Foo& sParam) {\n  char* sLocal;\n  s@\n}\n";
  EXPECT_EQ(Row(code, "sParam"), "local Foo ");
  EXPECT_EQ(Row(code, "sLocal"), "local char* ");
  EXPECT_EQ(Row(code, "sFunc"), "function int (int a)");
  EXPECT_EQ(Row(code, "sRed").substr(0, 10), "enumerator");
  EXPECT_EQ(Row(code, "sizeof"), "keyword  ");
}

TEST_F(FreeNames, LocalGoesBeforeAGlobalOfItsName) {
  EXPECT_EQ(Row("void f(Foo* sFunc) {\n  s@\n}\n", "sFunc"), "local Foo* ");
}

TEST_F(FreeNames, Keywords_AreThoseOfTheLanguage) {
  EXPECT_EQ(Names("void f() {\n  virt@\n}\n"), "virtual");
  EXPECT_EQ(Names("void f() {\n  virt@\n}\n", "/p/main.c"), "");
  EXPECT_EQ(Names("void f() {\n  restr@\n}\n", "/p/main.c"), "restrict");
  EXPECT_EQ(Names("void f() {\n  constexp@\n}\n", "/p/other.h"), "constexpr");
}

TEST_F(FreeNames, WithoutLetters_AreAllOfThem) {
  const std::string names = " " + Names("void f(int param) {\n  @\n}\n") + " ";
  for (const char* name : {"param", "sShape", "f", "while", "sFunc"})
    EXPECT_NE(names.find(std::string(" ") + name + " "), std::string::npos) << name;
}

TEST_F(FreeNames, OfTheLibrary_WhereItsNamespaceIsUsed) {
  test::CodeStores::AddClass(project.library, "vector", 0);
  test::CodeStores::AddClass(project.library, "vault", 0).fileId = 7;
  project.library.headers.push_back({7, "", "bank", "/d/bank/all"});
  project.library.Changed();
  EXPECT_EQ(Names("void f() {\n  va@\n}\n"), "");
  EXPECT_EQ(Names("void f() {\n  ve@\n}\n"), "");
  EXPECT_EQ(Names("using namespace std;\nvoid f() {\n  v@\n}\n"), "vector virtual void volatile");
  EXPECT_EQ(Names("using namespace bank;\nvoid f() {\n  va@\n}\n"), "vault");
  EXPECT_EQ(Names("void f() {\n  std::v@\n}\n"), "vector");
}

TEST_F(FreeNames, OfC_ComeAfterTheProjects) {
  const test::TempFolder folder;
  const std::string path = folder.Write("c.tgn",
                                        " sFunc\tp\tint\t(void)\n sigset\tp\tint\t(int sig)\n"
                                        " sort\tp\tint\t()\nstd sort\tp\tvoid\t(I first, I last)\n"
                                        "std sort\tp\tvoid\t(I first, I last, C comp)\n");
  project.library.names = {std::make_shared<LibraryNames>(path)};
  EXPECT_EQ(Row("void f() {\n  s@\n}\n", "sFunc"), "function int (int a)");
  EXPECT_EQ(Row("void f() {\n  s@\n}\n", "sigset"), "function int (int sig)");
  EXPECT_EQ(Names("void f() {\n  std::so@\n}\n"), "sort");
  EXPECT_EQ(Names("using namespace std;\nvoid f() {\n  sor@\n}\n"), "sort");
  const auto tips = [&](const std::string& call) {
    const test::CodeText editor = project.Edit("/p/tip.cpp", "void f() {\n  " + call + "@\n}\n");
    const std::optional<CallTip> tip = project.completion.callTipAt(editor);
    std::string labels;
    for (size_t i = 0; tip && i < tip->overloads.size(); ++i)
      labels += (i ? "; " : "") + tip->overloads[i].label;
    return labels;
  };
  EXPECT_EQ(tips("sigset("), "int sigset(int sig)");
  EXPECT_EQ(tips("std::sort("), "void sort(I first, I last); void sort(I first, I last, C comp)");
  project.Add("/p/mine.h", "char sigset(char mine);\n");
  EXPECT_EQ(tips("sigset("), "char sigset(char mine)");
}

TEST_F(FreeNames, InsideAWord_DontHaveTheWordItself) {
  EXPECT_EQ(Names("int foo@bar;\n"), "");
  EXPECT_EQ(Names("int foobaz;\nint foo@bar;\n"), "foobaz");
  EXPECT_EQ(Names("struct foobaz {\n  int foo@bar;\n};\n"), "foobaz");
  EXPECT_EQ(Names("int foobar;\nvoid f() {\n  foo@bar = 1;\n}\n"), "foobar");
}

TEST_F(FreeNames, BehindANamespaceThatAMacroOpens_AreThoseOfTheIncludedFiles) {
  project.Add("/p/far.cpp", "namespace lib {\nint farOne;\n}\n");
  project.Add("/p/near.h",
              "#define LIB_BEGIN namespace lib {\nLIB_BEGIN\nstruct nearOne {};\n"
              "int nearTwo(int a);\n}\n");
  EXPECT_EQ(Names("#include \"near.h\"\nvoid f() {\n  lib::near@\n}\n"), "nearOne nearTwo");
  EXPECT_EQ(Names("namespace lib {\nint own;\n}\n#include \"near.h\"\nvoid f() {\n  lib::ne@\n}\n"),
            "nearOne nearTwo");
}

TEST_F(FreeNames, EnumeratorsOfAScopedEnum_AreBehindItsScopeOnly) {
  const std::string code = "enum class tKind { tRound };\nenum tPlain { tFlat };\nvoid f() {\n  ";
  EXPECT_EQ(Names(code + "t@\n}\n"),
            "tFlat tKind tPlain template this thread_local throw true try typedef typeid typename");
  EXPECT_EQ(Names(code + "tKind::@\n}\n"), "tRound");
}

TEST_F(FreeNames, BehindANamespace_AreItsEnumerators) {
  EXPECT_EQ(Names("enum before { e0 };\nnamespace geo {\nenum class Kind { k1 };\n"
                  "enum Plain { p1 };\nint g;\n}\nvoid f() {\n  geo::@\n}\n"),
            "Kind Plain f g p1");
}

TEST_F(FreeNames, OfANameThatExistsTwice_TheNearestIsShown) {
  project.Add("/p/aaa.h", "int sTwice(char far);\n");
  project.Add("/p/zzz.h", "int sTwice(char near);\n");
  EXPECT_EQ(Row("#include \"zzz.h\"\nvoid f() {\n  sT@\n}\n", "sTwice"),
            "function int (char near)");
}

TEST_F(FreeNames, BehindAScope_HaveTheClassesInIt) {
  EXPECT_EQ(Names("void f() {\n  Door::sIn@\n}\n"), "sInner");
  EXPECT_EQ(Names("void f() {\n  Door d;\n  d.sIn@\n}\n"), "");
}

}  // namespace
}  // namespace zendry
