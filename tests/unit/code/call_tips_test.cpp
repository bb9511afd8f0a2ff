#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ParsedProject.h"

// Call tips, from the text through the tag parser to what is shown.

namespace zendry {
namespace {

struct TipRow {
  const char* body;
  const char* tip;
};

class CallTips : public ::testing::Test {
 protected:
  CallTips() {
    project.Add("slice.h", cSlice);
    project.Add("other.cpp",
                "static int helper(int far) { return far; }\nint join(int a) { return a; }\n");
  }
  std::optional<CallTip> At(const std::string& withCaret) {
    const test::CodeText editor = project.Edit("main.cpp", withCaret);
    return project.completion.callTipAt(editor);
  }
  std::optional<CallTip> InFunction(const std::string& body) {
    return At("#include \"slice.h\"\nint main(int argc, char** argv) {\n  " + body);
  }
  // The labels, one a line; the parameter at the caret is in "[]".
  static std::string Print(const std::optional<CallTip>& tip) {
    std::string text;
    if (!tip) return text;
    for (size_t i = 0; i < tip->overloads.size(); ++i) {
      const CallSignature& signature = tip->overloads[i];
      std::string label = signature.label;
      if (const int at = tip->Parameter(i); at >= 0) {
        const auto [start, end] = signature.parameters[static_cast<size_t>(at)];
        label.insert(static_cast<size_t>(end), "]").insert(static_cast<size_t>(start), "[");
      }
      text += (i > 0 ? "\n" : "") + label;
    }
    return text;
  }
  void Expect(const std::vector<TipRow>& rows) {
    for (const auto& [body, tip] : rows) EXPECT_EQ(Print(InFunction(body)), tip) << body;
  }

  test::ParsedProject project;

 private:
  static constexpr const char* cSlice =
      "#define MAXOF(a, b) ((a) > (b) ? (a) : (b))\n"
      "#define PLAIN 3\n"
      "typedef void (*Handler)(int code, const char* text);\n"
      "using Other = std::function<int(double d)>;\n"
      "int (*globalPointer)(int a, char* b);\n"
      "std::string join(const std::vector<std::string>& parts, char sep = ',',\n"
      "                 const char* end = \"a,b)\");\n"
      "class Base {\n public:\n  Base(int level, const char* name = nullptr);\n};\n"
      "class Slice : public Base {\n public:\n"
      "  Slice();\n"
      "  Slice(const char* d, size_t n);\n"
      "  Slice(const std::string& s) : data(s.data()) {}\n"
      "  explicit Slice(int) = delete;\n"
      "  ~Slice();\n"
      "  virtual const char& at(int i) const;\n"
      "  char& at(int i);\n"
      "  int operator()(int a, int b) const;\n"
      "  int (*callback)(int a);\n"
      "  std::function<void(int level)> notify;\n"
      "  Handler handler;\n"
      "  static void* make(const Slice& other = Slice(\"x\", 1));\n"
      "  void take(std::map<int, std::pair<int, int>> all, int (*compare)(int, int), int last);\n"
      "  const char* data;\n"
      "};\n"
      "template <class T, class U = int> T convert(const U& from, T* to = nullptr);\n"
      "struct Point {\n  int x = 0;\n  unsigned int y;\n};\n"
      "int printf(const char* format, ...);\n"
      "int nothing(void);\n"
      "LUA_API const char *(lua_tostring) (lua_State *L, int index);\n";
};

TEST_F(CallTips, Functions_ShowWhatWasDeclared) {
  Expect({{"join(",
           "std::string join([const std::vector<std::string>& parts], char sep = ',', "
           "const char* end = \"a,b)\")"},
          {"join(a, b, ",
           "std::string join(const std::vector<std::string>& parts, char sep = ',', "
           "[const char* end = \"a,b)\"])"},
          {"Slice s;\n  s.take(1, f, ",
           "void Slice::take(std::map<int, std::pair<int, int>> all, int (*compare)(int, int), "
           "[int last])"},
          {"Slice::make(", "void* Slice::make([const Slice& other = Slice(\"x\", 1)])"},
          {"nothing(", "int nothing(void)"},
          {"printf(\"%d\", 1, 2, ", "int printf(const char* format, [...])"},
          {"convert<int>(", "T convert([const U& from], T* to = nullptr)"},
          {"convert(1, ", "T convert(const U& from, [T* to = nullptr])"},
          {"lua_tostring(L, ", "const char *lua_tostring(lua_State *L, [int index])"},
          {"gone(", ""}});
}

TEST_F(CallTips, Constructors_OfEveryForm) {
  const std::string all =
      "Slice::Slice()\nSlice::Slice([const std::string& s])\n"
      "Slice::Slice([const char* d], size_t n)";
  for (const char* body :
       {"Slice s(", "Slice s{", "const Slice s(", "auto s = Slice(", "auto s = Slice{",
        "auto* s = new Slice(", "use(new Slice{", "std::make_unique<Slice>(", "make_shared<Slice>(",
        "return Slice(", "for (;;) { Slice s(", "Slice a, b("})
    EXPECT_EQ(Print(InFunction(body)), all) << body;
  Expect({{"Slice s(p, ",
           "Slice::Slice(const char* d, [size_t n])\nSlice::Slice()\n"
           "Slice::Slice(const std::string& s)"},
          {"Point p{", "Point{[int x], unsigned int y}"},
          {"Point p{1, ", "Point{int x, [unsigned int y]}"},
          {"Point p(", ""},
          {"int n(", ""}});
}

TEST_F(CallTips, MemberInitialisers_ShowTheirConstructors) {
  const std::string head =
      "#include \"slice.h\"\nclass Holder : public Base {\n  Holder(int a);\n  Slice first;\n"
      "  int count;\n};\nHolder::Holder(int a)\n    : ";
  EXPECT_EQ(Print(At(head + "Base(@")), "Base::Base([int level], const char* name = nullptr)");
  EXPECT_EQ(Print(At(head + "Base(a), first(x, @")),
            "Slice::Slice(const char* d, [size_t n])\nSlice::Slice()\n"
            "Slice::Slice(const std::string& s)");
  EXPECT_EQ(Print(At(head + "Base(a), count(@")), "");
  EXPECT_EQ(Print(At(head + "Base(a), count{1}, first{@")).substr(0, 14), "Slice::Slice()");
}

TEST_F(CallTips, WhatIsDeclaredHere_HasNone) {
  for (const char* text : {"Slice make(@", "class A {\n  Slice make(@", "namespace n {\nSlice f(@",
                           "class Slice {@", "struct A : Base {@", "enum class E {@",
                           "int main() {@", "void f() { if (@", "void f() { while (x) {@"})
    EXPECT_EQ(Print(At(std::string("#include \"slice.h\"\n") + text)), "") << text;
  EXPECT_EQ(Print(At("#include \"slice.h\"\nSlice global = Slice(@")).substr(0, 14),
            "Slice::Slice()");
}

TEST_F(CallTips, Overloads_TheBestFittingFirst) {
  Expect({{"Slice s;\n  s.at(", "const char& Slice::at([int i])\nchar& Slice::at([int i])"}});
  project.Add("many.h",
              "void add(int a, int b, int c);\nvoid add(int a);\nvoid add();\n"
              "void add(char a, char b);\n");
  const std::string head = "#include \"many.h\"\nvoid f() {\n  add(";
  EXPECT_EQ(Print(At(head + "@")),
            "void add()\nvoid add([int a])\nvoid add([char a], char b)\n"
            "void add([int a], int b, int c)");
  EXPECT_EQ(Print(At(head + "x@")),
            "void add([int a])\nvoid add([char a], char b)\nvoid add([int a], int b, int c)\n"
            "void add()");
  EXPECT_EQ(Print(At(head + "x, @")).substr(0, 26), "void add(char a, [char b])");
  EXPECT_EQ(Print(At(head + "x, y, @")).substr(0, 33), "void add(int a, int b, [int c])\nv");
  EXPECT_EQ(Print(At(head + "x, y, z, @")).substr(0, 10), "void add()") << "none fits";
}

TEST_F(CallTips, OverloadsThatTakeAsMany_TheTypesBeforeTheCaretDecide) {
  project.Add(
      "put.h",
      "struct Text { Text(const std::string& s, int kind = 0);\n"
      "  Text(const wchar_t* s, int kind = 0);\n  Text(char c, int kind = 0);\n"
      "  Text(const char* s, int kind = 0); };\n"
      "struct Base {};\nstruct Derived : Base {};\n"
      "struct Pen { void put(const Text& text, int at = 0);\n  void put(char c, int at = 0);\n"
      "  void put(double d, int at, int depth);\n  void put(const Base& b, int at); };\n");
  const std::string head = "#include \"put.h\"\nvoid f(Pen pen, Derived d, Gone gone) {\n  ";
  const std::pair<const char*, const char*> cases[] = {
      {"pen.put('a', ", "void Pen::put(char c, [int at = 0])"},
      {"pen.put(d, ", "void Pen::put(const Base& b, [int at])"},
      {"pen.put(1.5, ", "void Pen::put(double d, [int at], int depth)"},
      {"pen.put('a', 1, ", "void Pen::put(double d, int at, [int depth])"},
      {"Text t(\"a,b\", ", "Text::Text(const char* s, [int kind = 0])"},
      {"Text t('a', ", "Text::Text(char c, [int kind = 0])"},
      {"pen.put(gone, ", "void Pen::put(const Text& text, [int at = 0])"},
      {"pen.put('a'", "void Pen::put([const Text& text], int at = 0)"},
  };
  for (const auto& [body, tip] : cases) {
    const std::string all = Print(At(head + body + "@"));
    EXPECT_EQ(all.substr(0, all.find('\n')), tip) << body;
  }
}

TEST_F(CallTips, LettersOfTheLibrarysStrings_AreChar) {
  const auto add = [this](const char* name) {
    TagClass& record = test::CodeStores::AddClass(project.library, name, 0);
    for (const char* parameters : {"(const string& s, size_t n)", "(const CharT* s, size_t n)"}) {
      record.members.push_back(test::Tag("append", 'p'));
      record.members.back().signature = parameters;
    }
  };
  add("string");
  add("other");
  const auto first = [this](const std::string& body) {
    const std::string all = Print(InFunction(body));
    return all.substr(0, all.find('\n'));
  };
  EXPECT_EQ(first("std::string s;\n  s.append(\"x\", "),
            "string::append(const CharT* s, [size_t n])");
  EXPECT_EQ(first("std::string s;\n  s.append(s, "), "string::append(const string& s, [size_t n])");
  EXPECT_EQ(first("std::other s;\n  s.append(\"x\", "),
            "other::append(const string& s, [size_t n])");
}

TEST_F(CallTips, AFunctionOfAnotherFile_IsLeftOutIfAnIncludedOneHasTheName) {
  Expect({{"helper(", "int helper([int far])"}});
  EXPECT_EQ(Print(At("void f() {\n  join(@")),
            "std::string join([const std::vector<std::string>& parts], char sep = ',', "
            "const char* end = \"a,b)\")");
}

TEST_F(CallTips, PrototypeAndDefinition_AreOne) {
  EXPECT_EQ(Print(At("int twice(int, const char* s = \"x\");\nint twice(int n, const char *t) {\n"
                     "  return twice(@")),
            "int twice([int], const char* s = \"x\")");
}

TEST_F(CallTips, Nested_TheInnermostKnownOne) {
  Expect({{"nothing(join(",
           "std::string join([const std::vector<std::string>& parts], "
           "char sep = ',', const char* end = \"a,b)\")"},
          {"Slice::make(join(1), ", "void* Slice::make(const Slice& other = Slice(\"x\", 1))"},
          {"convert(1, gone(2, ", "T convert(const U& from, [T* to = nullptr])"},
          {"convert((1, 2), ", "T convert(const U& from, [T* to = nullptr])"},
          {"convert({1, 2}, ", "T convert(const U& from, [T* to = nullptr])"},
          {"convert(x[1, 2], ", "T convert(const U& from, [T* to = nullptr])"},
          {"convert(\"a, (b\", ", "T convert(const U& from, [T* to = nullptr])"},
          {"convert(std::max<int, int>(1, 2), ", "T convert(const U& from, [T* to = nullptr])"},
          {"convert(1,\n // a, b(\n  ", "T convert(const U& from, [T* to = nullptr])"},
          {"convert(1)", ""},
          {"convert(1; ", ""},
          {"convert([&] { int a; ", ""},
          {"convert([&] { join(",
           "std::string join([const std::vector<std::string>& parts], "
           "char sep = ',', const char* end = \"a,b)\")"}});
}

TEST_F(CallTips, WhatCanBeCalled) {
  Expect({{"MAXOF(1, ", "MAXOF(a, [b])"},
          {"PLAIN(", ""},
          {"globalPointer(1, ", "int globalPointer(int a, [char* b])"},
          {"int (*compare)(const int* a, int b) = nullptr;\n  compare(1, ",
           "int compare(const int* a, [int b])"},
          {"(*globalPointer)(1, ", "int globalPointer(int a, [char* b])"},
          {"Slice* s;\n  (*s->callback)(", "int Slice::callback([int a])"},
          {"Handler h;\n  h(1, ", "void h(int code, [const char* text])"},
          {"Other o;\n  o(", "int o([double d])"},
          {"std::function<bool(int, std::pair<int, int> p)> g;\n  g(1, ",
           "bool g(int, [std::pair<int, int> p])"},
          {"using Local = int (*)(char c);\n  Local l;\n  l(", "int l([char c])"},
          {"auto twice = [](int a, int b = 2) { return a; };\n  twice(1, ",
           "twice(int a, [int b = 2])"},
          {"auto twice = [&](int a) mutable noexcept -> long { return a; };\n  twice(",
           "long twice([int a])"},
          {"auto none = [&] { return 1; };\n  none(", "none()"},
          {"Slice s;\n  s(1, ", "int Slice::operator ()(int a, [int b])"},
          {"Slice s;\n  s.callback(", "int Slice::callback([int a])"},
          {"Slice s;\n  s.notify(", "void Slice::notify([int level])"},
          {"Slice s;\n  s.handler(1, ", "void handler(int code, [const char* text])"}});
}

TEST_F(CallTips, APointerAmongParameters) {
  EXPECT_EQ(Print(At("void sort(int* all, int n, const int* (*less)(int a, int b)) {\n  less(@")),
            "const int* less([int a], int b)");
}

TEST_F(CallTips, BrokenText_EndsAndShowsNothing) {
  for (const char* text :
       {"",         "(",    "((((",      ")(",         "f)(",        "{(",    "x(<",  "a<b(",
        "::(",      ".(",   "->(",       "a::(",       "~(",         "[](",   "[]{",  "new(",
        "f(]",      "f({",  "operator(", "#define f(", "auto f = [", "= [](", "f(\"", "class",
        "struct {", "-> {", ": a(",      "X::X() : (", ", b("})
    EXPECT_EQ(Print(At(std::string(text) + "@")), "") << text;
}

}  // namespace
}  // namespace zendry
