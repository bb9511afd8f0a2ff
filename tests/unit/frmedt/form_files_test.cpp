#include "frmedt/FormFiles.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "Privileges.h"
#include "TempFolder.h"

namespace zendry {
namespace {

using Texts = std::vector<std::string>;

// The regions as the designer writes them.
const std::string cDecl = "\t//!decl\n\tButton ok;\n\t//!end\n";
const std::string cInit =
    "\t\t//!init\n\t\tthis->SetBounds(0, 0, 300, 200);\n\t\t//!<Button>\n"
    "\t\tok1.SetBounds(1, 2, 3, 4);\n\t\tthis->Add(&ok1);\n\t\t//!end\n";

std::string Form(const std::string& more = "") {
  std::string decl = cDecl;
  decl.replace(decl.find("ok"), 2, "ok1");
  return "#include <mavro>\n\nclass Main: public Form {\npublic:\n" + decl +
         "private:\n  void Initialize() {\n" + cInit + more + "  }\n};\n";
}

class FormFilesTest : public testing::Test {
 protected:
  bool Check(const std::string& path) { return forms.Check(path); }
  bool Rewrite(const std::string& path, FormFiles::Losses losses = FormFiles::Losses::cDrop) {
    return forms.Rewrite(path, losses);
  }
  // What was told, without the folder.
  Texts Told() const {
    Texts texts = told;
    for (std::string& text : texts)
      if (text.starts_with(folder.Path())) text.erase(0, folder.Path().size() + 1);
    return texts;
  }

  test::TempFolder folder;
  Texts told;
  FormFiles forms{[this](const std::string& line) { told.push_back(line); }};
};

std::string Replace(std::string text, const std::string& what, const std::string& with) {
  for (size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += with.size())
    text.replace(at, what.size(), with);
  return text;
}

std::string Utf16(const std::string& text, bool isBig) {
  std::string bytes = isBig ? "\xFE\xFF" : "\xFF\xFE";
  for (char c : text) bytes += isBig ? std::string{'\0', c} : std::string{c, '\0'};
  return bytes;
}

TEST_F(FormFilesTest, Check_IsSilentAboutWhatTheDesignerWrote) {
  EXPECT_TRUE(Check(folder.Write("a.cpp", Form())));
  EXPECT_TRUE(Check(folder.Write("plain.cpp", "int x;\n//!foo\n")));
  EXPECT_EQ(Told(), Texts{});
}

TEST_F(FormFilesTest, Check_TellsFileAndLine) {
  const std::string text = Replace(Form(), "\t\tthis->Add", "\t\t// note\n\t\tthis->Add");
  EXPECT_FALSE(Check(folder.Write("a.cpp", text)));
  EXPECT_EQ(Told(), Texts{"a.cpp:14: lost: // note"});
}

TEST_F(FormFilesTest, Check_TellsWhyAFormCannotBeOpened) {
  EXPECT_FALSE(Check(folder.Write("a.cpp", Replace(Form(), "\t\tthis->Add(&ok1);\n", ""))));
  EXPECT_EQ(Told(), Texts{"a.cpp:5: ok1 hasn't Add statment!"});
  told.clear();
  EXPECT_FALSE(Check(folder.Write("b.cpp", "//!decl\n//!end\n")));
  EXPECT_EQ(Told(), Texts{"b.cpp:1: class name error!"});
  told.clear();
  EXPECT_FALSE(Check(folder.Write("c.h", "class A {\n//!decl\n//!end\n};\n")));
  EXPECT_EQ(Told(), Texts{"c.h:2: The //!init section not found!"});
}

TEST_F(FormFilesTest, Check_TellsOfAMissingFile) {
  EXPECT_FALSE(Check(folder.Path("none.cpp")));
  EXPECT_EQ(told.size(), 1U);
  EXPECT_FALSE(Check(folder.Path()));
}

TEST_F(FormFilesTest, AFileOverTheLimit_IsNotRead) {
  for (const char* name : {"a.cpp", "b.cpp"}) folder.Write(name, Form());
  std::filesystem::resize_file(folder.Path("a.cpp"), FormFile::cLargest);
  std::filesystem::resize_file(folder.Path("b.cpp"), FormFile::cLargest + 1);
  EXPECT_TRUE(Check(folder.Path("a.cpp")));
  EXPECT_FALSE(Check(folder.Path("b.cpp")));
  EXPECT_EQ(Told(), Texts{"b.cpp: has more than 64 MB, it was not read"});
}

TEST_F(FormFilesTest, Rewrite_LeavesWhatTheDesignerWroteToTheByte) {
  std::string mixed = Form();
  mixed.replace(mixed.find('\n'), 1, "\r\n");
  mixed.replace(mixed.find("Button ok1;\n") + 11, 1, "\r\n");
  const Texts texts = {Form(),
                       Replace(Form(), "\n", "\r\n"),
                       mixed,
                       Form() + "int last;",
                       "\xEF\xBB\xBF" + Form(),
                       Replace(Form(), "include", "include \xFF\xFE\x80"),
                       Utf16(Form(), true),
                       Utf16(Replace(Form(), "\n", "\r\n"), false),
                       Utf16(Form(), false) + "x"};
  for (size_t i = 0; i < texts.size(); ++i) {
    const std::string path = folder.Write("a.cpp", texts[i]);
    EXPECT_TRUE(Rewrite(path)) << i;
    EXPECT_EQ(folder.Read("a.cpp"), texts[i]) << i;
  }
  EXPECT_EQ(Told(), Texts{});
}

TEST_F(FormFilesTest, Rewrite_WritesTheRegionsAnew) {
  const std::string text =
      Replace(Form(), "\t\tok1.Set", "\t\t// note\n\t\tok1.hot = false;\n\tok1.Set");
  EXPECT_TRUE(Rewrite(folder.Write("a.cpp", Replace(text, "\n", "\r\n"))));
  EXPECT_EQ(folder.Read("a.cpp"), Replace(Form(), "\n", "\r\n"));
  EXPECT_EQ(Told(), (Texts{"a.cpp:13: lost: // note",
                           "a.cpp:14: lost: ok1.hot = false; (it is the default)"}));
}

TEST_F(FormFilesTest, Rewrite_CanKeepWhatWouldBeLost) {
  const std::string text = Replace(Form(), "\t\tok1.Set", "\t\tok1.Foo(1);\n\t\tok1.Set");
  EXPECT_TRUE(Rewrite(folder.Write("a.cpp", text), FormFiles::Losses::cKeep));
  EXPECT_EQ(folder.Read("a.cpp"), Form("\t\tok1.Foo(1);\n"));
}

TEST_F(FormFilesTest, Rewrite_CanKeepWhatKeepsAFormFromBeingOpened) {
  const std::string text =
      Replace(Form(), "\t//!end\nprivate", "\tint count = 5;\n\t//!end\nprivate");
  const std::string path = folder.Write("a.cpp", text);
  EXPECT_FALSE(Rewrite(path));
  EXPECT_EQ(folder.Read("a.cpp"), text);
  EXPECT_TRUE(Rewrite(path, FormFiles::Losses::cKeep));
  EXPECT_EQ(folder.Read("a.cpp"),
            Replace(Form(), "\t//!end\nprivate", "\t//!end\n\tint count = 5;\nprivate"));
}

TEST_F(FormFilesTest, Rewrite_LeavesAFormThatCannotBeOpened) {
  const std::string text = Replace(Form(), "\t\tthis->Add(&ok1);\n", "// x\n");
  EXPECT_FALSE(Rewrite(folder.Write("a.cpp", text)));
  EXPECT_EQ(folder.Read("a.cpp"), text);
}

TEST_F(FormFilesTest, Rewrite_RefusesAReadOnlyFile) {
  const std::string text = Replace(Form(), "\t\tthis->Add", "\t\t// x\n\t\tthis->Add");
  const std::string path = folder.Write("a.cpp", text);
  std::filesystem::permissions(path, std::filesystem::perms(0444));
  std::filesystem::permissions(folder.Path(), std::filesystem::perms(0755));
  {
    const test::WithoutRights user;
    EXPECT_FALSE(Rewrite(path));
  }
  EXPECT_EQ(folder.Read("a.cpp"), text);
  EXPECT_EQ(told.size(), 2U);
}

TEST_F(FormFilesTest, Rewrite_OfACleanForm_TouchesNoFile) {
  const std::string path = folder.Write("a.cpp", Form());
  std::filesystem::permissions(path, std::filesystem::perms::owner_read);
  const auto before = std::filesystem::last_write_time(path);
  EXPECT_TRUE(Rewrite(path));
  EXPECT_EQ(std::filesystem::last_write_time(path), before);
}

TEST_F(FormFilesTest, AFormInTwoFiles_IsWrittenFromEither) {
  const std::string header =
      "class Main: public Form {\n\t//!decl\n\tButton ok1, two;\n\t//!end\n};\n";
  const std::string more = "\t\t//!<Button>\n\t\tthis->Add(&two);\n\t\t//!end\n";
  const std::string init = Replace(cInit, "\t\t//!end\n", more);
  const std::string source = "void Main::Initialize()\n{\n" + init + "}\n";
  for (const char* name : {"a.h", "a.cpp"}) {
    folder.Write("a.h", Replace(header, "ok1, two", "ok1;\n\tButton two"));
    folder.Write("a.cpp", Replace(source, "\t\t//!<Button>\n\t\tok1.S", "\t\tok1.S"));
    EXPECT_TRUE(Rewrite(folder.Path(name)));
    EXPECT_EQ(folder.Read("a.h"), header) << name;
    EXPECT_EQ(folder.Read("a.cpp"), source) << name;
  }
}

TEST_F(FormFilesTest, TheTwoFilesOfAForm_AreToldOfOnce) {
  folder.Write("a.h", "class Main: public Form {\n\t//!decl\n\t//x\n\t//!end\n};\n");
  folder.Write("a.cpp", "void Main::Initialize()\n{\n//!init\n// x\n//!end\n}\n");
  EXPECT_FALSE(Check(folder.Path("a.h")));
  EXPECT_FALSE(Check(folder.Path("a.cpp")));
  EXPECT_EQ(Told(), (Texts{"a.h:3: lost: //x", "a.cpp:4: lost: // x"}));
}

TEST_F(FormFilesTest, TwoFormsInAFile_AreBothWritten) {
  const std::string second = Replace(Form(), "Main", "Other");
  const auto damaged = [](const std::string& text) {
    return Replace(text, "\t\tthis->Add", "\t\t//x\n\t\tthis->Add");
  };
  EXPECT_TRUE(Rewrite(folder.Write("a.cpp", damaged(Form()) + damaged(second))));
  EXPECT_EQ(folder.Read("a.cpp"), Form() + second);
}

}  // namespace
}  // namespace zendry
