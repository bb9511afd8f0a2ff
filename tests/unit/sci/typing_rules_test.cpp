#include "TypingRules.h"

#include <gtest/gtest.h>

#include "CharSets.h"
#include "MarkedText.h"
#include "TipRules.h"
#include "WordRules.h"

namespace mavro {
namespace {

using Steps = std::vector<TypingStep>;
using enum TypingStep;

EditorLanguage Language() {
  EditorLanguage language;
  language.wordChars = "_abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
  language.tipStart = "(";
  language.tipEnd = ")";
  language.tipSeparators = ",;";
  language.memberChars = ".->:";
  return language;
}

struct PlanCase {
  char typed;
  TypingState state;
  Steps steps;
  int depth;
};

void Check(const std::vector<PlanCase>& cases) {
  const EditorLanguage language = Language();
  const EditorOptions options;
  for (const PlanCase& row : cases) {
    const TypingPlan plan = PlanTyping(row.typed, row.state, &language, options);
    EXPECT_EQ(plan.steps, row.steps) << row.typed;
    EXPECT_EQ(plan.parenDepth, row.depth) << row.typed;
  }
}

TEST(TypingRules, InText_EachKindOfCharacter) {
  Check({
      {'(', {}, {cStartTip}, 1},
      {'(', {.parenDepth = 7}, {cStartTip}, 1},
      {'.', {}, {cForgetWords, cAutoIndent, cStartCompletion}, 0},
      {'>', {}, {cForgetWords, cAutoIndent, cStartCompletion}, 0},
      {':', {}, {cForgetWords, cAutoIndent, cStartCompletion}, 0},
      {'a', {}, {cForgetWords, cAutoIndent, cOfferWords}, 0},
      {'1', {}, {cForgetWords, cAutoIndent}, 0},
      {';', {}, {cForgetWords, cAutoIndent}, 0},
      {')', {}, {cForgetWords, cAutoIndent}, 0},
      {'\0', {}, {cForgetWords, cAutoIndent}, 0},
      {'\xFF', {}, {cForgetWords, cAutoIndent}, 0},
  });
}

TEST(TypingRules, InTip_ParenthesesCount) {
  Check({
      {'(', {.tipActive = true, .parenDepth = 1}, {cStartTip}, 2},
      {')', {.tipActive = true, .parenDepth = 2}, {cStartTip}, 1},
      {')', {.tipActive = true, .parenDepth = 1}, {cCancelTip}, 0},
      {',', {.tipActive = true, .parenDepth = 1}, {cUpdateTip}, 1},
      {'x', {.tipActive = true, .listActive = true, .parenDepth = 1}, {cUpdateTip}, 1},
  });
}

TEST(TypingRules, InList_LettersGoOn_OthersCloseIt) {
  Check({
      {'(', {.listActive = true, .parenDepth = 1}, {cStartTip}, 2},
      {')', {.listActive = true, .parenDepth = 1}, {}, 0},
      {'a', {.listActive = true}, {}, 0},
      {'a', {.listActive = true, .wordCompleting = true}, {cStartWords}, 0},
      {'1', {.listActive = true}, {cCancelList}, 0},
      {' ', {.listActive = true}, {cCancelList}, 0},
      {'.', {.listActive = true}, {cCancelList, cStartCompletion}, 0},
  });
}

TEST(TypingRules, InTextThatIsNoCode_OnlyWhatIsOpenTakesNotice) {
  Check({
      {'.', {.isQuiet = true}, {cForgetWords, cAutoIndent}, 0},
      {'(', {.isQuiet = true, .parenDepth = 1}, {cForgetWords, cAutoIndent}, 1},
      {'a', {.isQuiet = true}, {cForgetWords, cAutoIndent}, 0},
      {')', {.tipActive = true, .isQuiet = true, .parenDepth = 1}, {cUpdateTip}, 1},
      {'(', {.tipActive = true, .isQuiet = true, .parenDepth = 1}, {cUpdateTip}, 1},
      {'a', {.listActive = true, .isQuiet = true}, {}, 0},
      {'.', {.listActive = true, .isQuiet = true}, {cForgetWords, cCancelList, cAutoIndent}, 0},
  });
}

struct MattersCase {
  char typed;
  TypingState state;
  bool matters;
};

TEST(TypingRules, PlaceMatters_WhereSomethingMayOpenOrClose) {
  const MattersCase cases[] = {
      {'.', {}, true},
      {'(', {}, true},
      {')', {}, false},
      {'a', {}, true},
      {'1', {}, false},
      {' ', {}, false},
      {')', {.tipActive = true}, true},
      {'(', {.tipActive = true}, true},
      {'a', {.tipActive = true}, false},
      {')', {.listActive = true}, true},
      {'.', {.recording = true}, false},
      {'.', {.hasCaret = false}, false},
  };
  for (const MattersCase& row : cases)
    EXPECT_EQ(PlaceMatters(row.typed, row.state, Language(), {}), row.matters) << row.typed;
}

TEST(TypingRules, IsQuietPlace_ByTheStyleOfTheCharacter) {
  EditorLanguage language = Language();
  language.quietStyles = 1u << 2 | 1u << 6;
  const std::pair<const char*, bool> cases[] = {
      {"// a@", true}, {"x = \"a@", true}, {"x = \"a\";@", false},
      {"a@", false},   {"", false},        {"// a\nb@", false},
  };
  for (const auto& [marked, quiet] : cases) {
    const test::MarkedText text(marked);
    EXPECT_EQ(IsQuietPlace(text, text.caret - 1, language), quiet) << marked;
  }
  language.leftOutStyles = 2;
  language.quietStyles = 1;
  const test::MarkedText leftOut("// a@");
  EXPECT_TRUE(IsQuietPlace(leftOut, 1, language)) << "as the style of the text itself";
}

TEST(WordRules, IsOfferedUnasked_FromThreeLettersOn) {
  EditorLanguage language;
  language.keywords = "for int";
  EXPECT_FALSE(IsOfferedUnasked("ab", &language));
  EXPECT_TRUE(IsOfferedUnasked("abc", &language));
  EXPECT_TRUE(IsOfferedUnasked("fo_", nullptr));
  EXPECT_FALSE(IsOfferedUnasked("for", &language));
  EXPECT_TRUE(IsOfferedUnasked("form", &language));
  EXPECT_TRUE(IsOfferedUnasked("for", nullptr));
}

TEST(TypingRules, NothingToDo_RecordingSelectionOrNoLanguage) {
  Check({{'.', {.recording = true}, {}, 0}, {'(', {.hasCaret = false, .parenDepth = 3}, {}, 3}});
  EXPECT_TRUE(PlanTyping('.', {}, nullptr, EditorOptions()).steps.empty());
}

TEST(TypingRules, Indentation_ByTheOptions) {
  const EditorLanguage language = Language();
  EditorOptions options;
  options.simpleIndent = true;
  EXPECT_EQ(PlanTyping(';', {}, &language, options).steps, (Steps{cForgetWords, cMaintainIndent}));
  options.simpleIndent = options.smartIndent = false;
  EXPECT_EQ(PlanTyping(';', {}, &language, options).steps, Steps{cForgetWords});
}

TEST(TypingRules, LanguageWithoutWords_OffersNone) {
  EditorLanguage language = Language();
  language.wordCompletion = false;
  EXPECT_EQ(PlanTyping('a', {}, &language, {}).steps, (Steps{cForgetWords, cAutoIndent}));
}

TEST(CharSets, Includes_WordsOrCharacters) {
  EXPECT_TRUE(Includes("if for", "for"));
  EXPECT_FALSE(Includes("if for", "fo"));
  EXPECT_FALSE(Includes("if for", "if for"));
  EXPECT_FALSE(Includes("if  for", ""));
  EXPECT_TRUE(Includes("{}", "}"));
  EXPECT_FALSE(Includes("{}", "{}"));
  EXPECT_TRUE(Includes("BEGIN END", "END"));
  EXPECT_TRUE(Includes("Zap", "Zap"));
  EXPECT_TRUE(Includes("{a", "a")) << "the first character tells what it is";
  EXPECT_FALSE(Includes("a{", "{"));
  EXPECT_FALSE(Includes(nullptr, "x"));
  EXPECT_FALSE(Includes("", "x"));
  EXPECT_FALSE(IsInSet("abc", '\0'));
}

struct TextCase {
  const char* line;
  const char* wanted;
};

TEST(TipRules, CompletionText_NamesAndMemberSigns) {
  const TextCase cases[] = {
      {"f.", "f."},
      {"x = f.", "f."},
      {"a->b::c", "a->b::c"},
      {"foo(f.", "f."},
      {"a[1].", "."},
      {"x-", "x-"},
      {"", ""},
      {" ", ""},
      {"\xC3\xA4"
       "b.",
       "b."},
      {"a+b.c", "b.c"},
  };
  for (const TextCase& row : cases)
    EXPECT_EQ(CompletionText(row.line, Language()), row.wanted) << row.line;
}

TEST(TipRules, CompletionText_ALongLine_IsLookedAtForItsLast256Bytes) {
  EXPECT_EQ(CompletionText(std::string(1000, 'a'), Language()).size(), 256u);
}

struct NameCase {
  const char* line;
  const char* name;
  int start;
};

TEST(TipRules, FindTipName_TheCallAroundTheCaret) {
  const NameCase cases[] = {
      {"foo(", "foo", 0},
      {"x = foo(1, ", "foo", 4},
      {"foo (a", "foo", 0},
      {"foo(bar(1), ", "foo", 0},
      {"foo(bar(", "bar", 4},
      {"foo((a), (b", "foo", 0},
      {"(a + (", "", 0},
      {"foo(1)", "", 0},
      {"", "", 0},
      {")))(", "", 0},
      {"foo", "", 0},
  };
  for (const NameCase& row : cases) {
    const TipName found = FindTipName(row.line, Language());
    EXPECT_EQ(found.name, row.name) << row.line;
    EXPECT_EQ(found.start, row.start) << row.line;
  }
}

struct ArgumentCase {
  const char* tip;
  const char* call;
  const char* marked;
};

TEST(TipRules, FindTipArgument_TheRunningOne) {
  const ArgumentCase cases[] = {
      {"foo(int a, int b)", "foo(", "int a"},
      {"foo(int a, int b)", "foo(1,", " int b"},
      {"foo(int a, int b)", "foo(bar(1, 2", "int a"},
      {"foo(int a, int b)", "foo(bar(1, 2), ", " int b"},
      {"foo(int a, int b)", "foo(1, 2, 3", ""},
      {"foo()", "foo(", ""},
      {"foo", "foo(", ""},
      {"", "", ""},
      {"f(a;b", "f(1;", "b"},
      {"f(a)", ")))f(", "a"},
  };
  for (const ArgumentCase& row : cases) {
    const TipRange range = FindTipArgument(row.tip, row.call, Language());
    ASSERT_LE(range.start, range.end);
    EXPECT_EQ(std::string(row.tip).substr(static_cast<size_t>(range.start),
                                          static_cast<size_t>(range.end - range.start)),
              row.marked)
        << row.call;
  }
}

TEST(TipRules, TextAfterTheTip_IsNotRead) {
  const std::string_view tip = "f(ab";
  EXPECT_EQ(FindTipArgument(tip.substr(0, 3), "f(", Language()).end, 3);
}

TEST(WordRules, WordToComplete_DigitsOnly_IsNone) {
  EXPECT_EQ(WordToComplete("x = abc", "abcdefx1"), "abc");
  EXPECT_EQ(WordToComplete("x = 111", "abc1"), "");
  EXPECT_EQ(WordToComplete("a1", "abc1"), "a1");
  EXPECT_EQ(WordToComplete("a ", "abc"), "");
  EXPECT_EQ(WordToComplete("", "abc"), "");
}

TEST(WordRules, CollectWords_LongerOnes_SortedAndOnce) {
  const EditorOptions options;
  const char* chars = options.wordChars.c_str();
  const FoundWords found =
      CollectWords("bee bear be bear\nBeast (bell)", "be", chars, LetterCase::cCounts);
  EXPECT_EQ(found.list, "bear bee bell");
  EXPECT_EQ(found.count, 3);
  EXPECT_EQ(CollectWords("Beast bee", "be", chars, LetterCase::cIgnored).list, "Beast bee");
  EXPECT_EQ(CollectWords("", "be", chars, LetterCase::cCounts).count, 0);
  EXPECT_EQ(CollectWords("bee", "be", nullptr, LetterCase::cCounts).count, 0);
  const std::string_view cut = std::string_view("be bee").substr(0, 5);
  EXPECT_EQ(CollectWords(cut, "b", chars, LetterCase::cCounts).list, "be");
}

struct BraceCase {
  const char* text;
  int position;
};

TEST(WordRules, FindBrace_BeforeTheCaretThenAfter) {
  EditorOptions options;
  const BraceCase before[] = {{"(a)@", 2}, {"@(a)", -1}, {"a@", -1}, {"@", -1}, {"{@}", 0}};
  for (const BraceCase& row : before) {
    const test::MarkedText text(row.text);
    EXPECT_EQ(FindBrace(text, text.caret, options, nullptr).position, row.position) << row.text;
  }
  options.braceMatchAfter = true;
  const BraceCase after[] = {{"@(a)", 0}, {"{@}", 0}, {"a@]", 1}, {"a@", -1}};
  for (const BraceCase& row : after) {
    const test::MarkedText text(row.text);
    EXPECT_EQ(FindBrace(text, text.caret, options, nullptr).position, row.position) << row.text;
  }
  EXPECT_FALSE(FindBrace(test::MarkedText("()"), 1, options, nullptr).behind);
  EXPECT_TRUE(FindBrace(test::MarkedText("()"), 0, options, nullptr).behind);
  options.braceMatch = false;
  EXPECT_EQ(FindBrace(test::MarkedText("()"), 1, options, nullptr).position, -1);
}

TEST(WordRules, FindBrace_StyleOfTheLanguage_Decides) {
  EditorLanguage language;
  const test::MarkedText text("\"(\"@ // (");
  EXPECT_EQ(FindBrace(text, 2, {}, &language).position, 1) << "no style: any counts";
  language.operatorStyle = 10;
  EXPECT_EQ(FindBrace(text, 2, {}, &language).position, -1);
  EXPECT_EQ(FindBrace(test::MarkedText("("), 1, {}, &language).position, 0);
}

TEST(WordRules, FindBrace_AColonOfPython_IsOne) {
  EditorLanguage language;
  language.name = "python";
  const BraceAtCaret found = FindBrace(test::MarkedText("if x:"), 5, {}, &language);
  EXPECT_EQ(found.position, 4);
  EXPECT_TRUE(found.colon);
  language.name = "cpp";
  EXPECT_EQ(FindBrace(test::MarkedText("if x:"), 5, {}, &language).position, -1);
}

}  // namespace
}  // namespace mavro
