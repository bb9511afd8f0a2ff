#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <regex>
#include <set>

#include "FormMaker.h"
#include "FormSource.h"
#include "frmedt/FormCheck.h"
#include "frmedt/FormKeep.h"

namespace zendry {
namespace {

using test::FormMaker;
using test::WrittenDecl;
using test::WrittenInit;
using Lines = std::vector<std::string>;

constexpr int cUsualRounds = 50;

// The lines of a written region as they are read: without the closing marker.
Lines RegionOf(const std::string& written) {
  Lines lines = test::FormLines(written);
  lines.pop_back();
  return lines;
}

void ReadBack(FormData& form, const std::string& decl, const std::string& init) {
  form.ReadDecl(RegionOf(decl));
  form.ReadInit(RegionOf(init));
}

TEST(FormRoundTrip, GeneratedForms_ComeBackToTheByte) {
  const int rounds = test::FormRounds(cUsualRounds);
  for (int i = 0; i < rounds; ++i) {
    FormData form;
    FormMaker(static_cast<unsigned>(i)).Fill(form);
    const std::string decl = WrittenDecl(form), init = WrittenInit(form);
    FormData second;
    ReadBack(second, decl, init);
    ASSERT_TRUE(second.CheckParents()) << i << ' ' << second.reports.back().text;
    ASSERT_TRUE(SameForm(form, second)) << i << '\n' << init;
    ASSERT_EQ(WrittenDecl(second), decl) << i;
    ASSERT_EQ(WrittenInit(second), init) << i;
    ASSERT_TRUE(CheckRegions(RegionOf(decl), RegionOf(init)).empty()) << i << '\n' << init;
  }
}

// Statements of the shortest names are lost once, and then nothing more.
TEST(FormRoundTrip, ShortNames_SettleAfterTheFirstReading) {
  const int rounds = test::FormRounds(cUsualRounds);
  for (int i = 0; i < rounds; ++i) {
    FormData form;
    FormMaker(static_cast<unsigned>(i), 1).Fill(form);
    FormData second, third;
    ReadBack(second, WrittenDecl(form), WrittenInit(form));
    if (!second.CheckParents()) continue;
    const std::string decl = WrittenDecl(second), init = WrittenInit(second);
    ReadBack(third, decl, init);
    ASSERT_TRUE(SameForm(second, third)) << i << '\n' << init;
    ASSERT_EQ(WrittenInit(third), init) << i;
  }
}

// Damages the lines of a region, the first left out.
class Damage {
 public:
  explicit Damage(unsigned number) : maker(number) {}

  void Apply(Lines& lines) {
    for (int i = maker.Below(4) + 1; i > 0; --i) One(lines);
  }

 private:
  size_t Place(const Lines& lines) {
    return 1 + static_cast<size_t>(maker.Below(static_cast<int>(lines.size())));
  }

  void One(Lines& lines) {
    static const Lines cLines = {
        "// a comment\r\n",  "if (x) {\r\n",          "}\r\n",
        "Call(this);\r\n",   "abc.Foo(1, 2);\r\n",    "a.b = 1; c.d = 2;\r\n",
        "abc.text =\r\n",    "\"text\"\r\n",          ";\r\n",
        "//!decl\r\n",       "//!init\r\n",           "//!<Edit>\r\n",
        "//!dcl\r\n",        "this->Add(&nobody);\n", "nobody.SetBounds(1, x, 3);\r\n",
        "int x = 5;\r\n",    "Button a, *b;\r\n",     "\xFF\xFE\x01 \"\\\r\n",
        "/* open\r\n",       "this-.x = 1;\r\n",      "foo.Add(&foo);\r\n",
        "this->Add(that)\n", "\"a b\" c.d = 1;\r\n",  "foo.bar x Add_H this &A::b;\r\n"};
    const size_t at = Place(lines);
    const int what = maker.Below(6);
    if (what < 2 || at >= lines.size()) {
      lines.insert(lines.begin() + static_cast<long>(std::min(at, lines.size())),
                   cLines[static_cast<size_t>(maker.Below(static_cast<int>(cLines.size())))]);
    } else if (what == 2) {
      lines.erase(lines.begin() + static_cast<long>(at));
    } else if (what == 3) {
      std::swap(lines[at], lines[lines.size() - 1]);
    } else if (what == 4) {
      std::string& line = lines[at];
      line.insert(static_cast<size_t>(maker.Below(static_cast<int>(line.size() - 1))),
                  maker.Text());
    } else {
      lines.push_back(lines[at]);
    }
  }

  FormMaker maker;
};

std::string WithoutBlanks(const std::string& line) {
  std::string plain;
  std::copy_if(line.begin(), line.end(), std::back_inserter(plain),
               [](char c) { return static_cast<unsigned char>(c) > ' '; });
  return plain;
}

// A statement that is written less often than it was read has not come back.
std::map<std::string, int> Counted(const Lines& lines) {
  std::map<std::string, int> counts;
  for (const std::string& line : lines) ++counts[WithoutBlanks(line)];
  return counts;
}

bool IsNamed(const std::vector<FormLoss>& losses, size_t line, bool isInDecl = false) {
  return std::any_of(losses.begin(), losses.end(), [=](const FormLoss& one) {
    return one.isInDecl == isInDecl && one.line == static_cast<int>(line);
  });
}

// The controls that lines declare, each with its class.
std::multiset<std::string> Declared(const Lines& lines) {
  static const std::regex cLine("\\s*([\\w:]+)\\s+(\\w+(?:\\s*,\\s*\\w+)*)\\s*;\\s*"),
      cName("\\w+");
  std::multiset<std::string> declared;
  for (const std::string& line : lines) {
    std::smatch match;
    if (!std::regex_match(line, match, cLine)) continue;
    const std::string names = match[2];
    for (std::sregex_iterator at(names.begin(), names.end(), cName), end; at != end; ++at)
      declared.insert(match[1].str() + ' ' + at->str());
  }
  return declared;
}

// Each declaration that isn't named comes back with all of its controls; another line as it is.
void ExpectDeclarationsNamed(const Lines& decl, const FormData& form,
                             const std::vector<FormLoss>& losses) {
  const Lines lines = test::FormLines(WrittenDecl(form));
  std::multiset<std::string> written = Declared(lines);
  const std::map<std::string, int> same = Counted(lines);
  for (size_t line = 1; line < decl.size(); ++line) {
    if (WithoutBlanks(decl[line]).empty() || IsNamed(losses, line, true)) continue;
    const std::multiset<std::string> declared = Declared({decl[line]});
    EXPECT_TRUE(!declared.empty() || same.contains(WithoutBlanks(decl[line]))) << decl[line];
    for (const std::string& one : declared) {
      const auto at = written.find(one);
      ASSERT_NE(at, written.end()) << decl[line];
      written.erase(at);
    }
  }
}

TEST(FormRoundTrip, DamagedRegions_LoseNothingUnnamed) {
  const int rounds = test::FormRounds(cUsualRounds);
  int opened = 0;
  for (int i = 0; i < rounds; ++i) {
    FormData form;
    FormMaker(static_cast<unsigned>(i)).Fill(form);
    Lines decl = RegionOf(WrittenDecl(form)), init = RegionOf(WrittenInit(form));
    Damage damage(static_cast<unsigned>(i));
    damage.Apply(init);
    if (i % 2) damage.Apply(decl);
    FormData second;
    second.ReadDecl(decl);
    second.ReadInit(init);
    const std::vector<FormLoss> losses = CheckRegions(decl, init);
    // Each line that is gone is named, by a comparison of its own.
    std::map<std::string, int> written = Counted(test::FormLines(WrittenInit(second)));
    for (size_t line = 0; line < init.size(); ++line) {
      const std::string plain = WithoutBlanks(init[line]);
      if (plain.empty() || --written[plain] >= 0) continue;
      ASSERT_TRUE(IsNamed(losses, line)) << i << ' ' << init[line];
    }
    ExpectDeclarationsNamed(decl, second, losses);
    if (!second.CheckParents()) continue;
    ++opened;
    FormData third;
    ReadBack(third, WrittenDecl(second), WrittenInit(second));
    ASSERT_TRUE(SameForm(second, third)) << i << '\n' << test::Joined(init);
    ASSERT_EQ(WrittenInit(third), WrittenInit(second)) << i;
    ASSERT_EQ(WrittenDecl(third), WrittenDecl(second)) << i;
  }
  EXPECT_GT(opened, rounds / 10);
}

TEST(FormRoundTrip, KeptLines_LeaveARestThatComesBack) {
  const int rounds = test::FormRounds(cUsualRounds);
  for (int i = 0; i < rounds; ++i) {
    FormData form;
    FormMaker(static_cast<unsigned>(i)).Fill(form);
    Lines decl = RegionOf(WrittenDecl(form)), init = RegionOf(WrittenInit(form));
    Damage damage(static_cast<unsigned>(i));
    damage.Apply(init);
    damage.Apply(decl);
    const Lines before = init;
    const KeptLines kept = TakeKept(decl, init);
    for (const FormLoss& loss : CheckRegions(decl, init))
      ASSERT_TRUE(loss.kind == FormLoss::Kind::cMoved || loss.text.starts_with("//!"))
          << i << ' ' << loss.Words();
    Lines all = init;
    for (std::string line : kept.init) {
      all.push_back(line);
      if (const size_t at = line.find("// "); at != std::string::npos)
        all.push_back(line.erase(at, 3));
    }
    const std::map<std::string, int> there = Counted(all);
    for (const std::string& line : before)
      ASSERT_TRUE(there.contains(WithoutBlanks(line))) << i << ' ' << line;
  }
}

TEST(FormRoundTrip, FiveThousandControls) {
  std::string decl, init;
  for (int i = 0; i < 5000; ++i) {
    const std::string name = "button" + std::to_string(i);
    decl += "Button " + name + ";\n";
    init += "//!<Button>\n" + name + ".SetBounds(1, 2, 3, 4);\n" + name +
            ".text = \"x\";\nthis->Add(&" + name + ");\n";
  }
  test::ReadForm form(decl, init);
  EXPECT_TRUE(form.data.CheckParents());
  EXPECT_EQ(form.data.controls.size(), 5001U);
  EXPECT_EQ(test::InitBody(form.data), init);
}

}  // namespace
}  // namespace zendry
