#include "code/ExprTypes.h"

#include <gtest/gtest.h>

#include <deque>
#include <map>
#include <string>

#include "CodeText.h"
#include "code/Completion.h"
#include "tags/EditorReader.h"
#include "tags/TagParser.h"

// The lists after expressions of every form, from the text through the tag parser.

namespace zendry {
namespace {

// A project of "shape.h" and the edited "main.cpp", with a small library whose members have the
// types that a real one's have.
class ExprTypesTest : public ::testing::Test, protected CodeSources {
 protected:
  ExprTypesTest() {
    AddModule("shape.h", cShape);
    AddModule("main.cpp", "");
    library.fileName = "library.h";
    Parse(library, cLibrary);
    for (auto& [name, record] : library.classes)
      for (TagItem& member : record.members) member.access = 1;
  }
  std::string Complete(const std::string& withCaret) {
    const test::CodeText editor(withCaret);
    edited = &editor;
    std::string text = editor.LeftOfCaret();
    std::string list;
    completion.getCompletion(editor, text, list);
    return list;
  }
  // The list inside a function.
  std::string InFunction(const std::string& body) {
    return Complete("#include \"shape.h\"\nint main(int argc, char** argv) {\n  " + body);
  }
  std::string Tip(const std::string& body) {
    const test::CodeText editor("#include \"shape.h\"\nint main(int argc) {\n  " + body);
    edited = &editor;
    const std::optional<CallTip> tip = completion.callTipAt(editor);
    return tip ? tip->overloads.front().label : "";
  }
  void TextsAreGone() { texts.clear(); }
  void Expect(const std::vector<std::pair<const char*, const char*>>& rows) {
    for (const auto& [body, expected] : rows) EXPECT_EQ(InFunction(body), expected) << body;
  }

  static constexpr const char* cPoint = "x?1 y?1";
  static constexpr const char* cVector = "at?2 back?2 begin?2 end?2 front?2 size?2";
  static constexpr const char* cMap = "at?2 begin?2 find?2 insert?2";
  static constexpr const char* cString = "size?2 substr?2";
  static constexpr const char* cPair = "first?1 second?1";

  Completion completion{*this};
  TagData library;
  const test::CodeText* edited = nullptr;

 private:
  static constexpr const char* cShape =
      "namespace ns {\n"
      "struct Point {\n  int x, y;\n};\n"
      "class Outer {\n public:\n  struct Inner {\n    Point deep;\n  };\n  Inner inner;\n};\n"
      "}\n"
      "class Shape {\n public:\n"
      "  static Shape& Instance();\n"
      "  Point method(int a, const char* b);\n"
      "  Shape* next();\n"
      "  const std::vector<ns::Point>& all() const;\n"
      "  Point pos;\n"
      "  std::vector<ns::Point> points;\n"
      "  std::map<std::string, ns::Point*> named;\n"
      "  Shape* link;\n"
      "};\n"
      "class Derived : public Outer {\n};\n"
      "typedef std::vector<Point> Points;\n"
      "using PointPointer = Point*;\n"
      "template <class T>\nclass Box {\n public:\n  T& get();\n  T* operator->();\n  T value;\n};\n"
      "template <class T>\nclass List {\n public:\n"
      "  class Iter {\n   public:\n    T& operator*();\n    T* operator->();\n  };\n"
      "  Iter begin();\n};\n"
      "enum class Color { red, green };\n"
      "struct Brush {\n  enum Style { solid, dotted };\n  using Ptr = std::shared_ptr<Brush>;\n"
      "  std::vector<Brush> parts;\n  int width;\n};\n"
      "Point findPoint(const Shape& in, int number);\n"
      "std::vector<Point> allPoints();\n"
      "std::map<std::string, Shape> theShapes;\n"
      "Shape theShape;\n";
  static constexpr const char* cLibrary =
      "template <class T> class vector {\n public:\n  reference front();\n  reference back();\n"
      "  reference at(size_type n);\n  iterator begin();\n  iterator end();\n  size_t size();\n};\n"
      "template <class K, class T> class map {\n public:\n  T& at(const K& k);\n"
      "  iterator begin();\n  iterator find(const K& k);\n  pair insert(const value_type& x);\n};\n"
      "class string {\n public:\n  size_t size();\n  basic_string substr(size_t a);\n};\n"
      "class exception {\n public:\n  virtual const char* what();\n};\n"
      "template <class T> class unique_ptr {\n public:\n  pointer get();\n  void reset();\n};\n"
      "template <class T> class shared_ptr {\n public:\n  pointer get();\n  long use_count();\n};\n"
      "template <class A, class B> struct pair {\n  A first;\n  B second;\n};\n"
      "struct iterator {\n  Category iterator_category;\n};\n";

  void AddModule(const std::string& name, const std::string& text) {
    modules.push_back(&stores.emplace_back());
    modules.back()->fileName = name;
    texts[modules.back()] = text;
    Parse(*modules.back(), text);
  }
  static void Parse(TagData& data, const std::string& text) {
    data.clear();
    test::CodeText editor(text);
    EditorReader reader(editor);
    theTagParser.parseBuffer(data, &reader, false);
    data.Changed();
  }
  const std::vector<TagData*>& Modules() const override { return modules; }
  TagData* Library() const override { return const_cast<TagData*>(&library); }
  TagData* ModuleOf(const EditorText&) override { return modules.back(); }
  void RefreshTags() override { Parse(*modules.back(), edited->text); }
  std::string TextOf(const TagData& module) override { return texts[&module]; }
  void Log(std::string_view, std::string_view) override {}

  std::deque<TagData> stores;
  std::vector<TagData*> modules;
  std::map<const TagData*, std::string> texts;
};

TEST_F(ExprTypesTest, TemplateArguments_NestedAndQualified) {
  Expect({
      {"std::vector<std::string> v;\n  v.@", cVector},
      {"std::vector<std::string> v;\n  v.si@", "size?2"},
      {"std::map<std::string, std::vector<Point>> m;\n  m.@", cMap},
      {"const std::map<std::string, std::vector<Point>>& m = f();\n  m.@", cMap},
      {"std::vector<Point*> v;\n  v.@", cVector},
      {"std::vector<std::vector<int> > v;\n  v.@", cVector},
      {"std::vector<std::function<void(int, Point)>> v;\n  v.@", cVector},
      {"static const std::vector<ns::Point> v{}, *w = &v;\n  w->@", cVector},
  });
}

TEST_F(ExprTypesTest, SmartPointers) {
  Expect({
      {"std::unique_ptr<ns::Point> p;\n  p->@", cPoint},
      {"std::unique_ptr<Point> p;\n  p->@", cPoint},
      {"std::unique_ptr<ns::Point> p;\n  p.@", "get?2 reset?2"},
      {"std::unique_ptr<ns::Point> p;\n  p.get()->@", cPoint},
      {"std::unique_ptr<ns::Point> p;\n  (*p).@", cPoint},
      {"const std::shared_ptr<const ns::Outer> p;\n  p->inner.deep.@", cPoint},
      {"std::unique_ptr<Point> p;\n  p->x@", "x?1"},
      {"auto p = std::make_unique<Point>(1);\n  p->@", cPoint},
      {"auto p = std::make_unique<ns::Point>(1, \"(\");\n  p->@", cPoint},
      {"auto p = make_shared<Point>();\n  p.@", "get?2 use_count?2"},
      {"std::vector<std::unique_ptr<ns::Point>> v;\n  v[0]->@", cPoint},
      {"std::vector<std::unique_ptr<ns::Point>> v;\n  for (const auto& p : v) p->@", cPoint},
  });
}

TEST_F(ExprTypesTest, Elements) {
  Expect({
      {"std::vector<Point> v;\n  v[0].@", cPoint},
      {"std::vector<Point> v;\n  v[0].x@", "x?1"},
      {"std::vector<Point> v;\n  v[f(argc) + 1].@", cPoint},
      {"std::vector<Point> v;\n  v.front().@", cPoint},
      {"std::vector<ns::Point> v;\n  v.back().@", cPoint},
      {"std::vector<Point> v;\n  v.at(0).@", cPoint},
      {"std::vector<Point*> v;\n  v.at(0)->@", cPoint},
      {"std::map<std::string, Point> m;\n  m[\"x\"].@", cPoint},
      {"std::map<std::string, Point> m;\n  m.at(\"x]\").@", cPoint},
      {"std::map<std::string, std::vector<Point>> m;\n  m[\"x\"][0].@", cPoint},
      {"std::map<int, Point> m;\n  m.find(1)->second.@", cPoint},
      {"Point arr[10];\n  arr[i].@", cPoint},
      {"Shape a, arr[10][2];\n  arr[i][j].pos.@", cPoint},
      {"std::vector<std::string> v;\n  v[0].@", cString},
      {"Brush b;\n  b.parts[0]->wi@", "width?1"},
      {"auto s = std::to_string(1);\n  s.@", cString},
  });
}

TEST_F(ExprTypesTest, Iterators) {
  Expect({
      {"std::map<std::string, Point>::iterator it;\n  it->second.@", cPoint},
      {"std::map<std::string, Point>::const_iterator it = m.begin();\n  it->@", cPair},
      {"std::vector<Point>::iterator it;\n  it->@", cPoint},
      {"std::vector<Point>::iterator it;\n  (*it).@", cPoint},
      {"std::vector<Point*>::iterator it;\n  (*it)->@", cPoint},
      {"std::vector<Point> v;\n  auto it = v.begin();\n  it->@", cPoint},
      {"std::vector<Point> v;\n  auto x = *v.begin();\n  x.@", cPoint},
      {"std::vector<Point> v;\n  for (auto it = v.begin(); it != v.end(); ++it) it->@", cPoint},
      {"std::map<int, Point> m;\n  auto it = m.find(3);\n  it->second.@", cPoint},
      {"std::map<int, Point> m;\n  auto r = m.insert(x);\n  r.first->second.@", cPoint},
      {"std::vector<Point> v;\n  auto it = std::find_if(v.begin(), v.end(), f);\n  it->@", cPoint},
  });
}

TEST_F(ExprTypesTest, RangeFor) {
  Expect({
      {"std::vector<Point> v;\n  for (const auto& x : v) x.@", cPoint},
      {"std::vector<Point> v;\n  for (auto x : v) {\n    x.@\n  }", cPoint},
      {"std::vector<Point*> v;\n  for (auto* x : v) {\n    x->@\n  }", cPoint},
      {"std::map<int, Point> m;\n  for (auto& [k, v] : m) v.@", cPoint},
      {"std::map<Point, int> m;\n  for (const auto& [k, v] : m) {\n    k.@", cPoint},
      {"std::map<int, Point> m;\n  for (auto& entry : m) entry.second.@", cPoint},
      {"for (auto& p : theShape.points) p.@", cPoint},
      {"for (auto& p : theShape.all()) p.@", cPoint},
      {"for (auto& [name, p] : theShape.named) p->@", cPoint},
      {"for (auto& p : allPoints()) p.@", cPoint},
      {"Point arr[3];\n  for (auto& p : arr) p.@", cPoint},
      {"for (ns::Point& p : theShape.points) p.@", cPoint},
  });
}

TEST_F(ExprTypesTest, Auto) {
  Expect({
      {"auto x = Point(1);\n  x.@", cPoint},
      {"auto x = ns::Point{1};\n  x.@", cPoint},
      {"auto p = new Point;\n  p->@", cPoint},
      {"auto* p = new ns::Point(1, 2);\n  p->@", cPoint},
      {"Shape obj;\n  auto& r = obj.pos;\n  r.@", cPoint},
      {"const auto x = findPoint(theShape, 1);\n  x.@", cPoint},
      {"auto q = static_cast<Point*>(argv);\n  q->@", cPoint},
      {"Point* p;\n  auto q = p;\n  auto r = *q;\n  r.@", cPoint},
      {"Point p;\n  auto q = &p;\n  q->@", cPoint},
      {"auto x = argc ? theShape.pos : f();\n  x.@", cPoint},
      {"auto x = std::move(theShape.pos);\n  x.@", cPoint},
      {"auto [a, b] = theShape.pos;\n  auto& s = theShape;\n  s.pos.@", cPoint},
      {"auto&& x = theShapes[\"a\"].pos;\n  x.@", cPoint},
      {"auto x{theShape.pos};\n  x.@", cPoint},
      {"decltype(auto) x = 1;\n  x.@", ""},
      {"auto x = x;\n  x.@", ""},
      {"auto x = y;\n  auto y = x;\n  y.@", ""},
      {"auto x = 1 + theShape.pos;\n  x.@", ""},
  });
}

TEST_F(ExprTypesTest, Casts) {
  Expect({
      {"static_cast<Point*>(q)->@", cPoint},
      {"dynamic_cast<ns::Point&>(q).@", cPoint},
      {"reinterpret_cast<const Shape*>(q)->pos.@", cPoint},
      {"const_cast<Point*>(f(a, b))->@", cPoint},
      {"((Point*)argv)->@", cPoint},
      {"((const ns::Point *) argv[1])->@", cPoint},
      {"(*(Point**)argv)->@", cPoint},
      {"((Point*)f(1, \")\"))->x@", "x?1"},
      {"(Point*)argv->@", ""},
  });
}

TEST_F(ExprTypesTest, Chains) {
  Expect({
      {"findPoint(theShape, 1).@", cPoint},
      {"theShape.method(1, \"a)\").@", cPoint},
      {"theShape.method(1, ')').x@", "x?1"},
      {"theShape.next()->pos.@", cPoint},
      {"theShape.next()->next()->method(f(1), \"(\").@", cPoint},
      {"Shape::Instance().pos.@", cPoint},
      {"Shape::Instance().next()->@",
       "Instance?2 all?2 link?1 method?2 named?1 next?2 points?1 pos?1"},
      {"theShape.points[0].@", cPoint},
      {"theShape.points.back().@", cPoint},
      {"theShapes[\"a\"].link->named[\"b\"]->@", cPoint},
      {"(theShape).pos.@", cPoint},
      {"(&theShape)->pos.@", cPoint},
      {"theShape\n    .next()  // the next\n    ->pos.@", cPoint},
      {"Point(1, 2).@", cPoint},
      {"ns::Point{1, 2}.@", cPoint},
      {"std::string s;\n  s.substr(1).@", cString},
  });
}

TEST_F(ExprTypesTest, This) {
  EXPECT_EQ(Complete("void Shape::draw() {\n  this->pos.@\n}\n"), cPoint);
  EXPECT_EQ(Complete("void Shape::draw() {\n  this->next()->pos.@\n}\n"), cPoint);
  EXPECT_EQ(Complete("void Shape::draw() {\n  (*this).pos.@\n}\n"), cPoint);
  EXPECT_EQ(Complete("void Shape::draw() {\n  points[0].@\n}\n"), cPoint);
  EXPECT_EQ(Complete("void Shape::draw() {\n  for (auto& p : points) p.@\n}\n"), cPoint);
  EXPECT_EQ(InFunction("this->next()->@"), "");
}

TEST_F(ExprTypesTest, Aliases) {
  Expect({
      {"Points v;\n  v.@", cVector},
      {"Points v;\n  v[0].@", cPoint},
      {"Points::iterator it;\n  it->@", cPoint},
      {"PointPointer p;\n  p->@", cPoint},
      {"typedef std::vector<Point> Own;\n  Own v;\n  v.front().@", cPoint},
      {"typedef Point Place;\n  Place p;\n  p.@", cPoint},
      {"typedef Point *PlacePointer, Place;\n  Place p;\n  p.@", cPoint},
      {"using P = const Point*;\n  P p = f();\n  p->@", cPoint},
      {"using Map = std::map<int, Points>;\n  Map m;\n  m[1][2].@", cPoint},
      {"using namespace ns;\n  Outer o;\n  o.inner.deep.@", cPoint},
      {"std::vector<Point>::value_type x;\n  x.@", cPoint},
      {"Brush::Ptr p;\n  p->w@", "width?1"},
      {"std::vector<Brush::Ptr> all;\n  for (auto& p : all) p->wi@", "width?1"},
      {"using A = B;\n  using B = A;\n  A a;\n  a.@", ""},
      {"typedef A A;\n  A a;\n  a.@", ""},
  });
}

TEST_F(ExprTypesTest, AliasesOfAliases_AreFollowedEightTimes) {
  std::string chain = "using A1 = Point;\n";
  for (int i = 2; i <= 9; ++i)
    chain += "using A" + std::to_string(i) + " = A" + std::to_string(i - 1) + ";\n";
  Expect({{(chain + "A2 a;\n  a.@").c_str(), cPoint},
          {(chain + "A8 a;\n  a.@").c_str(), cPoint},
          {(chain + "A9 a;\n  a.@").c_str(), ""}});
}

TEST_F(ExprTypesTest, PointersToAliases_CountBoth) {
  Expect({{"PointPointer* p;\n  (*p)->@", cPoint},
          {"PointPointer* p;\n  (**p).@", cPoint},
          {"using Q = PointPointer*;\n  Q* p;\n  (***p).@", cPoint}});
}

TEST_F(ExprTypesTest, TypedefOf64Tokens_IsRead) {
  const auto text = [](const std::string& first) {
    std::string body = "typedef " + first + "std::vector<Point";
    for (int i = 0; i < 28; ++i) body += ", a";
    return body + "> Own;\n  Own v;\n  v.front().@";
  };
  Expect({{text("").c_str(), cPoint}, {text("const ").c_str(), ""}});
}

TEST_F(ExprTypesTest, FunctionsOfOtherNamespaces_AreNotTheLibrarys) {
  Expect({{"auto p = move(theShape.pos);\n  p.@", cPoint},
          {"auto p = any::move(theShape.pos);\n  p.@", ""},
          {"auto p = std::any::move(theShape.pos);\n  p.@", ""},
          {"auto p = any::make_unique<Point>();\n  p->@", ""},
          {"auto s = any::to_string(1);\n  s.@", ""}});
}

TEST_F(ExprTypesTest, BoundNames_CountDataMembersOnly) {
  const std::string text =
      "struct Sized {\n  int count();\n  Point at;\n  Shape* next();\n  Shape of;\n};\n"
      "void f(Sized s) {\n  auto& [a, b] = s;\n  ";
  EXPECT_EQ(Complete(text + "a.@"), cPoint);
  EXPECT_EQ(Complete(text + "b.pos.@"), cPoint);
  EXPECT_EQ(Complete(text + "a.pos.@"), "");
  EXPECT_EQ(Complete("struct One {\n  Point at;\n};\nvoid f(One s) {\n  auto [a, b] = s;\n  b.@"),
            "");
}

TEST_F(ExprTypesTest, ProjectsClassOfALibrarysName_HasItsOwnMembers) {
  const std::string text =
      "template <class T>\nstruct vector {\n  Brush front();\n};\nvoid f() {\n  ";
  EXPECT_EQ(Complete(text + "vector<Point> v;\n  v.front().wi@"), "width?1");
  EXPECT_EQ(Complete(text + "vector<Point> v;\n  (v).front().wi@"), "width?1");
  EXPECT_EQ(Complete(text + "vector<Point> v;\n  v.fr@"), "front?2");
}

TEST_F(ExprTypesTest, InitialValue_SeesWhatIsBeforeItOnly) {
  Expect({{"Shape s;\n  auto p = s.pos;\n  {\n    std::vector<int> s;\n    p.@", cPoint},
          {"auto p = s.pos;\n  Shape s;\n  p.@", ""}});
}

TEST_F(ExprTypesTest, ValuesOfValues_AreFollowedToADepth) {
  const auto text = [](int count) {
    std::string body = "auto a0 = theShape.pos;\n";
    for (int i = 1; i <= count; ++i)
      body += "auto a" + std::to_string(i) + " = a" + std::to_string(i - 1) + ";\n";
    return body + "a" + std::to_string(count) + ".@";
  };
  EXPECT_EQ(InFunction(text(1)), cPoint);
  EXPECT_EQ(InFunction(text(21)), cPoint);
  EXPECT_EQ(InFunction(text(22)), "");
}

TEST_F(ExprTypesTest, ExpressionsOfTypes_AreNoMembersOrClasses) {
  const std::string text = "void f() {\n  theShape.next()->me@thod(1);";
  const test::CodeText editor(text);
  edited = &editor;
  for (const int kind : {cClassRequest, cMemberRequest, cPrefixRequest}) {
    ResolveInfo info;
    info.kind = kind;
    EXPECT_FALSE(completion.wizard.resolveAt(editor, info, 0)) << kind;
  }
}

TEST_F(ExprTypesTest, NestedClassesAndScopes) {
  Expect({
      {"Outer::Inner x;\n  x.@", "deep?1"},
      {"ns::Outer::Inner x;\n  x.deep.@", cPoint},
      {"Derived d;\n  d.inner.deep.@", cPoint},
      {"Derived d;\n  (&d)->inner.deep.x@", "x?1"},
      {"auto i = Derived().inner;\n  i.deep.@", cPoint},
      {"ns::Outer::@", "Inner?3 inner?1"},
      {"ns::Outer::in@", "inner?1"},
      {"Outer::Inner::@", "deep?1"},
      {"Shape::In@", "Instance?2"},
      {"std::vector<Point>::@", cVector},
      {"ns::Po@", "Point?3 PointPointer?6 Points?6"},
      {"std::ve@", "vector?3"},
      {"Color::@", "green?5 red?5"},
      {"ns::Color::r@", "red?5"},
      {"Brush::Style::@", "dotted?5 solid?5"},
      {"gone::@", ""},
      {"::gone::x@", ""},
  });
}

TEST_F(ExprTypesTest, Parameters) {
  const std::pair<const char*, const char*> rows[] = {
      {"void f(const std::vector<std::string>& v, int n) {\n  v.@", cVector},
      {"void f(int n, std::map<int, Point>& m) {\n  m[1].@", cPoint},
      {"void f(std::vector<Point> (&v)) {\n}\nvoid g(const std::vector<Point>& v) {\n  v[0].@",
       cPoint},
      {"void f() {\n  g([](std::vector<Point>& a) { a[0].@", cPoint},
      {"void f() {\n  std::vector<Point> a;\n  g([&a, b](int c) { a[0].@", cPoint},
      {"void f() {\n  auto g = [p = theShape.pos, q = 1]() { p.@", cPoint},
      {"void f() {\n  try {\n  } catch (const std::exception& e) {\n    e.@", "what?2"},
      {"void f() {\n  if (auto p = theShape.next(); p) p->pos.@", cPoint},
      {"void f() {\n  while (auto* p = theShape.next()) {\n    p->pos.@", cPoint},
      {"void f() {\n  Shape a(1), *b = nullptr, c[3];\n  b->pos.@", cPoint},
      {"void f() {\n  Shape a(1), *b = nullptr, c[3];\n  c[0].pos.@", cPoint},
      {"void f() {\n  std::vector<Point> a{1, 2}, b;\n  b.front().@", cPoint},
      {"void f(Point a) {\n}\nvoid g(std::vector<Shape> a) {\n  a[0].@",
       "Instance?2 all?2 link?1 method?2 named?1 next?2 points?1 pos?1"},
  };
  for (const auto& [text, expected] : rows) EXPECT_EQ(Complete(text), expected) << text;
}

TEST_F(ExprTypesTest, ClosedBlocks_AreNotSeen) {
  EXPECT_EQ(InFunction("std::vector<Point> v;\n  {\n    std::vector<int> v;\n  }\n  v[0].@"),
            cPoint);
  EXPECT_EQ(InFunction("{\n    std::vector<Point> v;\n  }\n  v[0].@"), "");
  EXPECT_EQ(Complete("void f(std::vector<Point> v) {\n}\nvoid g() {\n  v[0].@"), "");
}

TEST_F(ExprTypesTest, ClassOfTheEditedText) {
  EXPECT_EQ(
      Complete("class Own {\n  void f() {\n    all[0].@\n  }\n  std::vector<Point> all;\n};\n"),
      cPoint);
  EXPECT_EQ(Complete("class Own {\n  std::vector<Point> all;\n  void f() {\n    all[0].@"), cPoint);
}

TEST_F(ExprTypesTest, TemplatesOfTheProject) {
  Expect({
      {"Box<Point> b;\n  b.get().@", cPoint},
      {"Box<Point> b;\n  b.value.@", cPoint},
      {"Box<ns::Point> b;\n  b.get().x@", "x?1"},
      {"Box<Point>* b;\n  (*b).get().@", cPoint},
      {"Box<std::vector<Point>> b;\n  b.get()[0].@", cPoint},
      {"List<Point> l;\n  l.begin()->@", cPoint},
      {"List<Point> l;\n  for (auto& p : l) p.@", cPoint},
      {"List<ns::Point>::Iter i;\n  (*i).@", cPoint},
      {"Box<Gone> b;\n  b.get().@", ""},
  });
}

TEST_F(ExprTypesTest, WhatOnlyLooksLikeADeclaration_DeclaresNothing) {
  Expect({
      {"std::vector<Point> p;\n  if (argc & p) p[0].@", cPoint},
      {"std::vector<Point> p;\n  f(argc + 1, p);\n  p[0].@", cPoint},
      {"std::vector<Point> p;\n  argc * p;\n  p[0].@", cPoint},
      {"std::vector<Point> p;\n  return p[0].@", cPoint},
      {"std::vector<Point> p;\n  x = y ? 1 : p[0].@", cPoint},
      {"std::vector<Point> p;\n  puts(\"Shape p;\"); // Shape p;\n  p[0].@", cPoint},
  });
}

TEST_F(ExprTypesTest, CallTips) {
  EXPECT_EQ(Tip("Shape s;\n  s.next()->method(@"), "Point Shape::method(int a, const char* b)");
  EXPECT_EQ(Tip("std::vector<std::string> v;\n  v.at(@"), "reference vector::at(size_type n)");
  EXPECT_EQ(Tip("std::vector<std::unique_ptr<Shape>> v;\n  v[0]->method(@"),
            "Point Shape::method(int a, const char* b)");
  EXPECT_EQ(Tip("gone[0].method(@"), "");
}

TEST_F(ExprTypesTest, FindSymbol_GivesTheTagsPlace) {
  const std::string text = "void f() {\n  theShape.next()->me@thod(1);";
  const test::CodeText editor(text);
  edited = &editor;
  ResolveInfo info;
  info.kind = cAnyRequest;
  ASSERT_TRUE(completion.wizard.resolveAt(editor, info, 0));
  EXPECT_EQ(info.name, "method");
  EXPECT_EQ(info.className, "Shape");
  EXPECT_EQ(info.file, "shape.h");
  EXPECT_EQ(info.targetLine, 15);
}

TEST_F(ExprTypesTest, WithoutTexts_TheTagsTypesCount) {
  TextsAreGone();
  EXPECT_EQ(InFunction("theShape.next()->pos.@"), cPoint);
  EXPECT_EQ(InFunction("auto v = theShape.points;\n  v.@"), cVector);
  EXPECT_EQ(InFunction("theShape.points[0].@"), "");
}

TEST_F(ExprTypesTest, BrokenText_ShowsNothing) {
  for (const char* text : {"[0].@",
                           ").@",
                           "].@",
                           "}.@",
                           ">.@",
                           "(.@",
                           "f(.@",
                           "\"a\".@",
                           "'a'.@",
                           "5.@",
                           "5[0].@",
                           "a[.@",
                           "a].@",
                           "(a.@",
                           ").x@",
                           "()->@",
                           "[]->@",
                           "((((a)))->@",
                           "<>::@",
                           "<a>::@",
                           "+.@",
                           "new .@",
                           "return .@",
                           "return().@",
                           "if (a).@",
                           "*.@",
                           "std::.@",
                           "::.@",
                           ". .@",
                           "->.@",
                           "a.@.b",
                           "static_cast<.@",
                           "static_cast<>().@",
                           "static_cast<Point>.@",
                           "auto.@",
                           "[&].@",
                           "[] { return 1; }.@",
                           "Point{.@",
                           "template <.@",
                           "operator.@",
                           "// theShape.next().@",
                           "/* theShape.next().@",
                           "\"theShape.next().@",
                           "R\"x(theShape.next().@",
                           "#define A theShape.f().@",
                           "# theShape.f().@",
                           "\xff\xfe.@",
                           "\xc3\xa4[0].@"})
    EXPECT_EQ(Complete(std::string("\n") + text), "") << text;
}

TEST_F(ExprTypesTest, BrokenText_BeforeIt_StillCompletes) {
  Expect({
      {"std::vector<Point> v; \"not closed\n  v[0].@", cPoint},
      {"std::vector<Point> v; ) ]\n  v[0].@", cPoint},
      {"std::vector<Point> v; if (( {{{\n  v[0].@", cPoint},
      {"std::vector<Point> v; x = 'a\n  v[0].@", cPoint},
      {"std::vector<Point> v; x = R\"a(\n  v[0].@", cPoint},
      {"std::vector<Point> v;\n#define X {{{ \\\n  std::vector<int> v;\n  v[0].@", cPoint},
      {"std::vector<Point> v;\n#if 0\n  x\n#endif\n  v[0].@", cPoint},
      {"std::vector<Point> v; < < <\n  v[0].@", cPoint},
      {"std::vector<Point> v; std::map<int,\n  v[0].@", cPoint},
  });
}

TEST_F(ExprTypesTest, EverySourceCutAnywhere_EndsWithoutHarm) {
  const std::string text =
      "template <class T> struct A : B<T> { T x; typedef A<T> Self; using P = Self*; };\n"
      "A<A<int>> f(A<int> a) {\n  for (auto& [i, j] : a.b(\")\")[1]) i.x->y[2].z();\n"
      "  auto p = static_cast<A<int>*>(a), q = c ? *p : (A<int>)a;\n  [&a, b = p](int c) {\n"
      "    std::map<int, A<int>>::iterator it = m.begin(); (*it).second.x[0].self()->P::x.\n";
  for (size_t length = 0; length <= text.size(); ++length)
    for (const char* end : {"@", ".@", "->@", "::@", "[0].x@"})
      Complete(text.substr(0, length) + end);
}

TEST_F(ExprTypesTest, HugeText_EndsSoon) {
  const auto repeat = [](const std::string& piece, size_t bytes) {
    std::string text;
    while (text.size() < bytes) text += piece;
    return text;
  };
  constexpr size_t cBytes = 1'000'000, cLongLine = 10'000'000;
  for (const char* piece :
       {"a, ", "(", "[", "{", "<", "a<", "a::", "a.", "a().", "*", "auto a = a;",
        "auto a = *a + (a", "using a = a;", "typedef a a;", "a & a;", "\"", "/*"})
    EXPECT_EQ(Complete(repeat(piece, cBytes) + " a[0].@"), "") << piece;
  EXPECT_EQ(Complete("std::vector<Point> v;" + std::string(cLongLine, ' ') + "v[0].@"), cPoint);
  EXPECT_EQ(Complete(std::string(cLongLine, 'x') + " std::vector<Point> v; v[0].@"), cPoint);
}

}  // namespace
}  // namespace zendry
