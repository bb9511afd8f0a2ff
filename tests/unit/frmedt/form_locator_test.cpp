#include "frmedt/FormLocator.h"

#include <gtest/gtest.h>

#include "FormSource.h"

namespace zendry {
namespace {

FormTextPtr Text(std::string text, const std::string& path = "form.cpp") {
  return std::make_shared<FormText>(path, std::move(text));
}
FormTextPtr NoCompanion(const std::string&, bool) {
  return nullptr;
}
std::string Owner(const std::string& text) {
  const FormTextPtr source = Text(text);
  int line = 0;
  while (source->Line(line).find("//!") == std::string_view::npos) ++line;
  return source->TagAtLine(line).className;
}
constexpr char cForm[] =
    "class Main: public Form {\n"
    "public:\n"
    "\t//!decl\n\tButton ok;\n\t//!end\n"
    "\tMain() { Initialize(); }\n"
    "private:\n"
    "\tvoid Initialize() {\n\t\t//!init\n\t\tthis->Add(&ok);\n\t\t//!end\n\t}\n"
    "};\n";

TEST(MarkerOf, TellsTheKindsApart) {
  EXPECT_EQ(MarkerOf("//!decl"), FormMarker::cDecl);
  EXPECT_EQ(MarkerOf(" \t//!declaration"), FormMarker::cDecl);
  EXPECT_EQ(MarkerOf("//!init\r\n"), FormMarker::cInit);
  EXPECT_EQ(MarkerOf("//!ending"), FormMarker::cEnd);
  EXPECT_EQ(MarkerOf("//!dec"), FormMarker::cOther);
  EXPECT_EQ(MarkerOf("//! end"), FormMarker::cOther);
  for (const char* line : {"// !decl", "/!decl", "x //!decl", "", "//"})
    EXPECT_EQ(MarkerOf(line), FormMarker::cNone) << line;
}

TEST(FormText, Lines_EndWithAnyLineEnd) {
  const FormTextPtr text = Text("a\r\nb\rc\n");
  ASSERT_EQ(text->LineCount(), 4);
  EXPECT_EQ(text->Line(0), "a\r\n");
  EXPECT_EQ(text->Line(1), "b\r");
  EXPECT_EQ(text->Line(2), "c\n");
  EXPECT_EQ(text->Line(3), "");
}

TEST(FormText, TagAtLine_IsTheClassAround) {
  EXPECT_EQ(Owner("class A : B {\n//!decl\n"), "A");
  EXPECT_EQ(Owner("class EXPORT A final : public B<int> {\nint x;\n//!decl\n"), "A");
  EXPECT_EQ(Owner("namespace n { namespace m::o {\nstruct A {\n//!decl\n"), "n::m::o::A");
  EXPECT_EQ(Owner("class A { struct Row { int a; };\n//!decl\n"), "A");
  EXPECT_EQ(Owner("class A { struct Row {\n//!decl\n"), "A::Row");
  EXPECT_EQ(Owner("template <class T> class A : B {\n//!decl\n"), "A");
  EXPECT_EQ(Owner("void help() {}\nclass A {\n//!decl\n"), "A");
  EXPECT_EQ(Owner("namespace {\nclass A {\n//!decl\n"), "A");
}

TEST(FormText, TagAtLine_IsTheClassOfAMethod) {
  EXPECT_EQ(Owner("class A {\nvoid Initialize() {\n//!init\n"), "A");
  EXPECT_EQ(Owner("void A::Initialize()\n{\n//!init\n"), "A");
  EXPECT_EQ(Owner("namespace n {\nvoid B::A::Initialize() const {\nif (x) {\n//!init\n"),
            "n::B::A");
  EXPECT_EQ(Owner("template <class T> void A<T>::Initialize() {\n//!init\n"), "A");
  EXPECT_EQ(Owner("struct B A::make() {\n//!init\n"), "A");
  EXPECT_EQ(Owner("A::A() : b(1) {\n//!init\n"), "A");
}

TEST(FormText, TagAtLine_IsToldBehindTheLastMarker) {
  const FormTextPtr text = Text("class A {\n//!decl\n//!end\n};\nclass B {\nint x;\n};\n");
  EXPECT_EQ(text->TagAtLine(1).className, "A");
  EXPECT_EQ(text->TagAtLine(5).className, "B");
  EXPECT_EQ(text->TagAtLine(2).className, "A");
  EXPECT_EQ(text->TagAtLine(7).className, "");
}

TEST(FormText, TagAtLine_IsEmptyOutside) {
  EXPECT_EQ(Owner("//!decl\n"), "");
  EXPECT_EQ(Owner("class A {\n};\n//!decl\n"), "");
  EXPECT_EQ(Owner("void help() {\n//!init\n"), "");
  EXPECT_EQ(Owner("DECLARE_FORM(Main) {\n//!decl\n"), "");
  EXPECT_EQ(Owner("/* class A { */ \"class B {\";\n//!decl\n"), "");
  EXPECT_EQ(Owner("enum class A {\n//!decl\n"), "");
  EXPECT_EQ(Owner("}}} class\n//!decl\n"), "");
}

TEST(FormLocator, AFormInOneFile_HasBothRegions) {
  FormLocator locator;
  locator.Scan(Text(cForm));
  ASSERT_EQ(locator.targets.size(), 1U);
  ASSERT_TRUE(locator.Select(0, NoCompanion));
  EXPECT_EQ(locator.Selected().className, "Main");
  EXPECT_EQ(locator.Selected().decl.startLine, 2);
  EXPECT_EQ(locator.Selected().decl.endLine, 4);
  EXPECT_EQ(locator.Selected().init.Lines(),
            (std::vector<std::string>{"\t\t//!init\n", "\t\tthis->Add(&ok);\n"}));
}

TEST(FormLocator, TheLastLine_IsNotLookedAt) {
  FormLocator locator;
  locator.Scan(Text("class A {\n//!decl\n//!end"));
  EXPECT_TRUE(locator.targets.empty());
  ASSERT_EQ(locator.reports.size(), 1U);
  EXPECT_EQ(locator.reports[0].text, "The //!decl section has no end!");
  FormLocator other;
  other.Scan(Text("class A {\n//!decl\n//!end\n"));
  EXPECT_EQ(other.targets.size(), 1U);
}

TEST(FormLocator, ARegionWithoutAClass_IsReportedAndTheScanGoesOn) {
  FormLocator locator;
  locator.Scan(Text("//!decl\n//!end\n" + std::string(cForm)));
  ASSERT_EQ(locator.reports.size(), 1U);
  EXPECT_EQ(locator.reports[0].text, "class name error!");
  EXPECT_EQ(locator.reports[0].line, 0);
  EXPECT_EQ(locator.targets.size(), 1U);
}

TEST(FormLocator, TwoForms_AreTwoTargets) {
  std::string second = cForm;
  for (size_t at; (at = second.find("Main")) != std::string::npos;) second.replace(at, 4, "Other");
  FormLocator locator;
  locator.Scan(Text(cForm + second));
  ASSERT_EQ(locator.targets.size(), 2U);
  ASSERT_TRUE(locator.Select(1, NoCompanion));
  EXPECT_EQ(locator.Selected().className, "Other");
}

TEST(FormLocator, AMarkerInAnOpenRegion_IsPassedOver) {
  FormLocator locator;
  locator.Scan(Text("class A {\n//!decl\n//!decl\n//!foo\n//!init\n//!end\n//!foo\n"));
  ASSERT_EQ(locator.targets.size(), 1U);
  EXPECT_EQ(locator.targets[0].decl.startLine, 1);
  EXPECT_EQ(locator.targets[0].decl.endLine, 5);
}

constexpr char cHeader[] =
    "class Main: public Form {\n//!decl\nButton ok;\n//!end\nvoid Initialize();\n};\n";
constexpr char cSource[] = "void Main::Initialize()\n{\n//!init\nthis->Add(&ok);\n//!end\n}\n";

TEST(FormLocator, AFormInTwoFiles_OpensFromEither) {
  const FormTextPtr header = Text(cHeader, "form.h");
  const FormTextPtr source = Text(cSource, "form.cpp");
  for (const bool fromHeader : {true, false}) {
    FormLocator locator;
    locator.Scan(fromHeader ? header : source);
    std::string asked;
    ASSERT_TRUE(locator.Select(0, [&](const std::string& path, bool isHeader) {
      asked = path;
      EXPECT_EQ(isHeader, !fromHeader);
      return fromHeader ? source : header;
    }));
    EXPECT_EQ(asked, fromHeader ? "form.h" : "form.cpp");
    EXPECT_EQ(locator.Selected().decl.text, header);
    EXPECT_EQ(locator.Selected().init.text, source);
  }
}

TEST(FormLocator, AMissingRegion_IsReported) {
  FormLocator header;
  header.Scan(Text(cHeader, "form.h"));
  EXPECT_FALSE(header.Select(0, NoCompanion));
  EXPECT_EQ(header.reports.back().text, "The //!init section not found!");
  FormLocator source;
  source.Scan(Text(cSource));
  EXPECT_FALSE(source.Select(0, [](const std::string&, bool) { return Text("int x;\n"); }));
  EXPECT_EQ(source.reports.back().text, "The //!decl section not found!");
}

// Replaces both regions by the same statements.
std::string Replaced(const std::string& text, const std::vector<std::string>& decl,
                     const std::vector<std::string>& init) {
  FormLocator locator;
  locator.Scan(Text(text));
  EXPECT_TRUE(locator.Select(0, NoCompanion));
  std::string result = text;
  for (const RegionEdit& one : locator.ReplaceRegions(decl, init))
    result.replace(one.edit.offset, one.edit.length, one.edit.text);
  return result;
}
const std::vector<std::string> cDecl = {"\t//!decl\r\n", "\tEdit a;\r\n", "\t//!end\r\n"};
const std::vector<std::string> cInit = {"\t\t//!init\r\n", "\t\t//!end\r\n"};

TEST(FormLocator, ReplaceRegions_LeavesEverythingElse) {
  EXPECT_EQ(Replaced(cForm, cDecl, cInit),
            "class Main: public Form {\npublic:\n\t//!decl\n\tEdit a;\n\t//!end\n"
            "\tMain() { Initialize(); }\nprivate:\n"
            "\tvoid Initialize() {\n\t\t//!init\n\t\t//!end\n\t}\n};\n");
}

TEST(FormLocator, ReplaceRegions_WorksWithTheDeclarationsBelow) {
  const std::string text =
      "class A {\nvoid Initialize() {\n//!init\n//!end\n}\n//!decl\n//!end\n};\n";
  EXPECT_EQ(Replaced(text, cDecl, cInit),
            "class A {\nvoid Initialize() {\n\t\t//!init\n\t\t//!end\n}\n\t//!decl\n\tEdit "
            "a;\n\t//!end\n};\n");
}

TEST(FormLocator, ReplaceRegions_KeepsTheLineEndsOfTheSource) {
  const std::string text =
      "class A {\r\n\t//!decl\r\n\tEdit a;\n\t//!end\n\r\nvoid Initialize() "
      "{\n//!init\n//!end\n}};\n";
  EXPECT_EQ(Replaced(text, cDecl, cInit),
            "class A {\r\n\t//!decl\r\n\tEdit a;\n\t//!end\n\r\nvoid Initialize() "
            "{\n\t\t//!init\n\t\t//!end\n}};\n");
}

}  // namespace
}  // namespace zendry
