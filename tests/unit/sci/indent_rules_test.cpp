#include "IndentRules.h"

#include <gtest/gtest.h>

#include "MarkedText.h"

namespace mavro {
namespace {

using Changes = std::vector<IndentChange>;

EditorLanguage Language() {
  EditorLanguage language;
  language.indentWords = "if for while do";
  language.blockStart = "{";
  language.blockEnd = "}";
  return language;
}

EditorOptions Options() {
  EditorOptions options;
  options.keywordStyle = 5;
  return options;
}

struct ClassCase {
  const char* line;
  IndentClass wanted;
};

TEST(IndentRules, ClassifyLine_WordsAndBlocks) {
  const ClassCase cases[] = {
      {"int a;", IndentClass::cPlain},
      {"if (a)", IndentClass::cStatement},
      {"if (a) {", IndentClass::cBlockStart},
      {"} else {", IndentClass::cBlockStart},
      {"} while (a);", IndentClass::cBlockEnd},
      {"void f() {", IndentClass::cBlockStart},
      {"void f(){", IndentClass::cBlockStart},
      {"}", IndentClass::cBlockEnd},
      {"};", IndentClass::cBlockEnd},
      {"void f() {}", IndentClass::cBlockEnd},
      {"} x {", IndentClass::cBlockStart},
      {"// if {", IndentClass::cPlain},
      {"\"{\"", IndentClass::cPlain},
      {"iffy", IndentClass::cPlain},
      {"", IndentClass::cPlain},
  };
  const EditorLanguage language = Language();
  const EditorOptions options = Options();
  for (const ClassCase& row : cases) {
    const test::MarkedText text(row.line);
    EXPECT_EQ(ClassifyLine({text, options, language}, 0), row.wanted) << row.line;
  }
}

TEST(IndentRules, ClassifyLine_AtMostTwentyWords) {
  const EditorLanguage language = Language();
  const EditorOptions options = Options();
  std::string line;
  for (int i = 0; i < 20; ++i) line += "; ";
  const test::MarkedText text(line + "{");
  EXPECT_EQ(ClassifyLine({text, options, language}, 0), IndentClass::cPlain);
}

TEST(IndentRules, ClassifyLine_BlocksOfWords) {
  EditorLanguage language;
  language.blockStart = "begin";
  language.blockEnd = "end";
  EditorOptions options;
  options.operatorStyle = 5;
  const test::MarkedText text("begin\nend\nbegin end\nbending");
  const IndentContext context{text, options, language};
  EXPECT_EQ(ClassifyLine(context, 0), IndentClass::cBlockStart);
  EXPECT_EQ(ClassifyLine(context, 1), IndentClass::cBlockEnd);
  EXPECT_EQ(ClassifyLine(context, 2), IndentClass::cBlockEnd);
  EXPECT_EQ(ClassifyLine(context, 3), IndentClass::cPlain);
}

struct ExpectedCase {
  const char* text;  // the caret's line is asked about
  int wanted;
};

TEST(IndentRules, ExpectedIndent_AfterEachKindOfLine) {
  const ExpectedCase cases[] = {
      {"int a;@", 0},
      {"\tint a;@", 3},
      {"f() {@", 3},
      {"\tf() {@", 6},
      {"if (a)@", 3},
      {"if (a) {@", 3},
      {"if (a) {\n\ty;@", 3},
      {"do {\n\ty;\n} while (a);@", 0},
      {"if (a)\n\tx;@", 0},
      {"f() {\n\n\n@", 3},
      {"}@", 0},
      {"\t}@", 3},
      {"f() {\n\tx;\n}\ny;@", 0},
      {"@", 0},
  };
  const EditorLanguage language = Language();
  const EditorOptions options = Options();
  for (const ExpectedCase& row : cases) {
    const test::MarkedText text(row.text);
    const IndentContext context{text, options, language};
    EXPECT_EQ(ExpectedIndent(context, text.LineOf(text.caret)), row.wanted) << row.text;
  }
}

TEST(IndentRules, ExpectedIndent_IndentedBraces) {
  const EditorLanguage language = Language();
  EditorOptions options = Options();
  options.indentOpening = options.indentClosing = true;
  const auto expected = [&](const char* marked) {
    const test::MarkedText text(marked);
    return ExpectedIndent({text, options, language}, 0);
  };
  EXPECT_EQ(expected("\t{"), 3);
  EXPECT_EQ(expected("\t\t}"), 3);
  EXPECT_EQ(expected("}"), 0) << "never below 0";
}

TEST(IndentRules, ExpectedIndent_BeyondTheLookback_IsNotSeen) {
  const EditorLanguage language = Language();
  EditorOptions options = Options();
  std::string far = "f() {\n";
  for (int i = 0; i < 20; ++i) far += "x;\n";
  const test::MarkedText text(far + "y;");
  const IndentContext context{text, options, language};
  EXPECT_EQ(ExpectedIndent(context, 20), 3);
  EXPECT_EQ(ExpectedIndent(context, 21), 0);
  EXPECT_EQ(ExpectedIndent(context, -1), 0);
}

struct AutoCase {
  const char* text;  // after the character was typed
  char typed;
  Changes wanted;
};

TEST(IndentRules, AutoIndent_EachCharacter) {
  const AutoCase cases[] = {
      {"f() {\n@", '\n', {{1, 3}}},
      {"f() {\n\tx;\n@", '\n', {{2, 3}}},
      {"f() {\n\tx;\n\t}@", '}', {{2, 0}}},
      {"f() {\n\tx }@", '}', {}},
      {"if (a)\n\t{@", '{', {{1, 0}}},
      {"int a;\n\t{@", '{', {}},
      {"if (a) {@", '{', {}},
      {"x;@", ';', {}},
      {"f() {\n@ x", '\n', {}},
      {"f() {\nab@", '\n', {}},
      {"@", '\n', {}},
      {"\n@", '\n', {{1, 0}}},
  };
  const EditorLanguage language = Language();
  const EditorOptions options = Options();
  for (const AutoCase& row : cases) {
    const test::MarkedText text(row.text);
    EXPECT_EQ(AutoIndentChanges({text, options, language}, text.caret, row.typed), row.wanted)
        << row.text;
  }
}

TEST(IndentRules, AutoIndent_IndentedBraces_ChangeNothing) {
  const EditorLanguage language = Language();
  EditorOptions options = Options();
  options.indentOpening = options.indentClosing = true;
  for (const char* marked : {"if (a)\n\t{@", "f() {\n\t}@"}) {
    const test::MarkedText text(marked);
    const char typed = text.text.back();
    EXPECT_EQ(AutoIndentChanges({text, options, language}, text.caret, typed), Changes()) << marked;
  }
}

TEST(IndentRules, AutoIndent_BlocksOfWords) {
  EditorLanguage language;
  language.blockStart = "begin";
  language.blockEnd = "end";
  EditorOptions options;
  options.operatorStyle = 5;
  const test::MarkedText typing("begin\n\tx\n\tend @");
  EXPECT_EQ(AutoIndentChanges({typing, options, language}, typing.caret, ' '), (Changes{{2, 0}}));
  const test::MarkedText enter("begin\n\tx\n\tend\n@");
  EXPECT_EQ(AutoIndentChanges({enter, options, language}, enter.caret, '\n'),
            (Changes{{2, 0}, {3, 0}}));
}

TEST(IndentRules, AutoIndent_BraceAfterAStatement_GoesByTheLineAbove) {
  const EditorLanguage language = Language();
  const EditorOptions options = Options();
  const test::MarkedText text("int a;\n\tif (a)\n\t\t{@");
  EXPECT_EQ(AutoIndentChanges({text, options, language}, text.caret, '{'), (Changes{{2, 3}}));
}

TEST(IndentRules, AutoIndent_EndInTheFirstLine_IsLeftAlone) {
  EditorLanguage language;
  language.blockStart = "begin";
  language.blockEnd = "end";
  EditorOptions options;
  options.operatorStyle = 5;
  const test::MarkedText text("\tend\n@");
  EXPECT_EQ(AutoIndentChanges({text, options, language}, text.caret, '\n'), (Changes{{1, 3}}));
}

TEST(IndentRules, MaintainIndent_LooksBackAsFarAsTheOptionSays) {
  const EditorLanguage language = Language();
  EditorOptions options = Options();
  options.statementLookback = 2;
  const test::MarkedText near("\tx\n\n\n@"), far("\tx\n\n\n\n@");
  EXPECT_EQ(MaintainIndentChanges({near, options, language}, near.caret, '\n'), (Changes{{3, 3}}));
  EXPECT_EQ(MaintainIndentChanges({far, options, language}, far.caret, '\n'), Changes());
}

TEST(IndentRules, MaintainIndent_TheNearestLineAboveThatIsNotBlank) {
  const AutoCase cases[] = {
      {"\tx\n@", '\n', {{1, 3}}},
      {"\tx\n\n@", '\n', {{2, 3}}},
      {"\t\tx\n\ty\n \n@", '\n', {{3, 3}}},
      {"x\n@", '\n', {}},
      {"\tx@", 'x', {}},
      {"@", '\n', {}},
      {"\tx\n@", '\r', {}},
  };
  const EditorLanguage language = Language();
  const EditorOptions options = Options();
  for (const AutoCase& row : cases) {
    const test::MarkedText text(row.text);
    EXPECT_EQ(MaintainIndentChanges({text, options, language}, text.caret, row.typed), row.wanted)
        << row.text;
  }
}

TEST(IndentRules, EveryCutOfABrokenText_Ends) {
  const std::string broken = "if (a {\n\"unclosed { \n}}} //\n\tdo\n{\n";
  const EditorLanguage language = Language();
  const EditorOptions options = Options();
  for (size_t cut = 0; cut <= broken.size(); ++cut) {
    const test::MarkedText text(broken.substr(0, cut));
    for (const char typed : {'\n', '}', '{', ' '}) {
      const IndentContext context{text, options, language};
      for (const IndentChange& change : AutoIndentChanges(context, text.caret, typed))
        EXPECT_GE(change.columns, 0);
    }
  }
}

}  // namespace
}  // namespace mavro
