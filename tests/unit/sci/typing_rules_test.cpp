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
  language.tipCalls = "{,";
  language.blockStart = "{";
  language.blockEnd = "}";
  language.memberChars = ".->:";
  return language;
}

struct PlanCase {
  char typed;
  TypingState state;
  Steps steps;
};

void Check(const std::vector<PlanCase>& cases) {
  const EditorLanguage language = Language();
  const EditorOptions options;
  for (const PlanCase& row : cases) {
    EXPECT_EQ(PlanTyping(row.typed, row.state, &language, options), row.steps) << row.typed;
  }
}

TEST(TypingRules, InText_EachKindOfCharacter) {
  Check({
      {'(', {}, {cStartTip}},
      {',', {}, {cForgetWords, cAutoIndent, cStartTip}},
      {'{', {}, {cForgetWords, cAutoIndent, cStartTip}},
      {'.', {}, {cForgetWords, cAutoIndent, cStartCompletion}},
      {'>', {}, {cForgetWords, cAutoIndent, cStartCompletion}},
      {':', {}, {cForgetWords, cAutoIndent, cStartCompletion}},
      {'a', {}, {cForgetWords, cAutoIndent, cOfferWords}},
      {'1', {}, {cForgetWords, cAutoIndent}},
      {';', {}, {cForgetWords, cAutoIndent}},
      {')', {}, {cForgetWords, cAutoIndent}},
      {'\0', {}, {cForgetWords, cAutoIndent}},
      {'\xFF', {}, {cForgetWords, cAutoIndent}},
  });
}

TEST(TypingRules, InTip_MembersAreListed_AndTheTipFollows) {
  Check({
      {'(', {.tipActive = true}, {cStartTip}},
      {',', {.tipActive = true}, {cStartTip}},
      {')', {.tipActive = true}, {cUpdateTip}},
      {'.', {.tipActive = true}, {cStartCompletion, cUpdateTip}},
      {'x', {.tipActive = true}, {cUpdateTip}},
      {'{', {.tipActive = true}, {cAutoIndent, cStartTip}},
      {'}', {.tipActive = true}, {cAutoIndent, cUpdateTip}},
      {'\n', {.tipActive = true}, {cAutoIndent, cUpdateTip}},
  });
}

TEST(TypingRules, InList_LettersGoOn_OthersCloseIt) {
  for (const bool tip : {false, true})
    Check({
        {'(', {.tipActive = tip, .listActive = true}, {cStartTip}},
        {')', {.tipActive = tip, .listActive = true}, {}},
        {'a', {.tipActive = tip, .listActive = true}, {}},
        {'a', {.tipActive = tip, .listActive = true, .wordCompleting = true}, {cStartWords}},
        {'1', {.tipActive = tip, .listActive = true}, {cCancelList}},
        {' ', {.tipActive = tip, .listActive = true}, {cCancelList}},
        {'.', {.tipActive = tip, .listActive = true}, {cCancelList, cStartCompletion}},
    });
}

TEST(TypingRules, InTextThatIsNoCode_OnlyWhatIsOpenTakesNotice) {
  Check({
      {'.', {.isQuiet = true}, {cForgetWords, cAutoIndent}},
      {'(', {.isQuiet = true}, {cForgetWords, cAutoIndent}},
      {',', {.isQuiet = true}, {cForgetWords, cAutoIndent}},
      {'a', {.isQuiet = true}, {cForgetWords, cAutoIndent}},
      {')', {.tipActive = true, .isQuiet = true}, {cUpdateTip}},
      {'(', {.tipActive = true, .isQuiet = true}, {cUpdateTip}},
      {'\n', {.tipActive = true, .isQuiet = true}, {cAutoIndent, cUpdateTip}},
      {'a', {.listActive = true, .isQuiet = true}, {}},
      {'.', {.listActive = true, .isQuiet = true}, {cForgetWords, cCancelList, cAutoIndent}},
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
      {')', {.tipActive = true}, false},
      {'.', {.tipActive = true}, true},
      {'{', {}, true},
      {',', {}, true},
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

TEST(WordRules, NamesMember_BehindADotAnArrowAndTwoColons) {
  EditorLanguage language;
  language.memberChars = ".->:";
  for (const char* line : {"a.", "a->", "a::", "::", "."})
    EXPECT_TRUE(NamesMember(line, &language)) << line;
  for (const char* line : {"", "a", "a-", "a>", "public:", "a. ", ":"})
    EXPECT_FALSE(NamesMember(line, &language)) << line;
  EXPECT_FALSE(NamesMember("a.", nullptr));
  language.memberChars = nullptr;
  EXPECT_FALSE(NamesMember("a.", &language));
}

TEST(TypingRules, NothingToDo_RecordingSelectionOrNoLanguage) {
  Check({{'.', {.recording = true}, {}}, {'(', {.hasCaret = false}, {}}});
  EXPECT_TRUE(PlanTyping('.', {}, nullptr, EditorOptions()).empty());
}

TEST(TypingRules, Indentation_ByTheOptions) {
  const EditorLanguage language = Language();
  EditorOptions options;
  options.simpleIndent = true;
  EXPECT_EQ(PlanTyping(';', {}, &language, options), (Steps{cForgetWords, cMaintainIndent}));
  options.simpleIndent = options.smartIndent = false;
  EXPECT_EQ(PlanTyping(';', {}, &language, options), Steps{cForgetWords});
}

TEST(TypingRules, LanguageWithoutWords_OffersNone) {
  EditorLanguage language = Language();
  language.wordCompletion = false;
  EXPECT_EQ(PlanTyping('a', {}, &language, {}), (Steps{cForgetWords, cAutoIndent}));
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

struct CallCase {
  const char* call;  // from its bracket
  int depth;
  int argument;
  int arguments;
};

TEST(TipRules, FollowCall_CountsTheArgumentsOfTheOuterCall) {
  const CallCase cases[] = {
      {"(", 1, 0, 0},          {"(1", 1, 0, 1},        {"(1,", 1, 1, 2},
      {"(1; 2", 1, 1, 2},      {"(bar(1, 2", 2, 0, 1}, {"(bar(1, 2), ", 1, 1, 2},
      {"(1)", 0, 0, 0},        {"(1) + (2", 0, 0, 0},  {"(\"a,)\", ", 1, 1, 2},
      {"(\"a\\\",)", 1, 0, 1}, {"(',', ", 1, 1, 2},    {"('", 1, 0, 1},
  };
  for (const CallCase& row : cases) {
    const CallEnd end = FollowCall(row.call, Language());
    EXPECT_EQ(end.depth, row.depth) << row.call;
    EXPECT_EQ(end.argument, row.argument) << row.call;
    EXPECT_EQ(end.arguments, row.arguments) << row.call;
  }
  EXPECT_EQ(FollowCall("(bar(1, (2", Language()).innermost, 8);
}

TEST(TipRules, OverloadOf_FindsTheParameters) {
  const std::pair<const char*, std::vector<TipRange>> cases[] = {
      {"foo(int a, int b)", {{4, 9}, {11, 16}}},
      {"foo(a;b", {{4, 5}, {6, 7}}},
      {"foo()", {}},
      {"foo", {}},
      {"", {}},
      {"foo( )", {}},
      {"foo(a) b, c", {{4, 5}}},
  };
  for (const auto& [text, parameters] : cases)
    EXPECT_EQ(OverloadOf(text, Language()).parameters, parameters) << text;
}

// Signatures "f(a)", "f(a, b)", ... with so many parameters.
EditorTip TipOf(const std::vector<int>& counts) {
  EditorTip tip;
  for (const int count : counts) {
    std::string text = "f(";
    for (int i = 0; i < count; ++i)
      text += std::string(i > 0 ? ", " : "") + static_cast<char>('a' + i);
    tip.overloads.push_back(OverloadOf(text + ")", Language()));
  }
  return tip;
}

TEST(TipRules, AnArgumentTooMany_ShowsTheNextSignatureThatTakesIt) {
  EditorTip tip = TipOf({1, 2, 0, 3});
  const std::pair<int, size_t> steps[] = {{0, 0}, {1, 0}, {2, 1}, {3, 3}, {4, 3}, {2, 3}, {0, 3}};
  for (const auto& [arguments, shown] : steps) {
    FollowArguments(tip, std::max(arguments - 1, 0), arguments);
    EXPECT_EQ(tip.shown, shown) << arguments;
  }
  tip.overloads[1].takesMore = true;
  FollowArguments(tip, 4, 5);
  EXPECT_EQ(tip.shown, 1u);
}

TEST(TipRules, ASignatureChosenByTheUser_Stays) {
  EditorTip tip = TipOf({1, 2, 3});
  StepOverload(tip, -1);
  EXPECT_EQ(tip.shown, 2u);
  StepOverload(tip, 1);
  EXPECT_EQ(tip.shown, 0u);
  FollowArguments(tip, 1, 2);
  EXPECT_EQ(tip.shown, 0u);
}

TEST(TipRules, KeepOverload_InTheSameCallOnly) {
  EditorTip earlier = TipOf({1, 2, 3});
  StepOverload(earlier, 1);
  EditorTip again = TipOf({3, 2, 1});
  again.bracket = 1;
  KeepOverload(again, earlier);
  EXPECT_EQ(again.shown, 0u);
  again.bracket = earlier.bracket;
  KeepOverload(again, earlier);
  EXPECT_EQ(again.shown, 1u);
  EXPECT_TRUE(again.isChosen);
  EXPECT_EQ(again.overloads[2].parameters.size(), 3u) << "the order stays too";
  EditorTip other = TipOf({4});
  KeepOverload(other, earlier);
  EXPECT_EQ(other.shown, 0u);
}

TEST(TipRules, LayOut_CountArrowsAndTheArgument) {
  EditorTip tip = TipOf({2});
  tip.argument = 1;
  EXPECT_EQ(LayOut(tip, 100).text, "f(a, b)");
  EXPECT_EQ(LayOut(tip, 100).argument, (TipRange{5, 6}));
  tip = TipOf({2, 1});
  tip.argument = 1;
  EXPECT_EQ(LayOut(tip, 100).text, "\001 1 of 2 \002 f(a, b)");
  EXPECT_EQ(LayOut(tip, 100).argument, (TipRange{16, 17}));
  tip.argument = 2;
  EXPECT_EQ(LayOut(tip, 100).argument, TipRange());
  tip.overloads[0].takesMore = true;
  EXPECT_EQ(LayOut(tip, 100).argument, (TipRange{16, 17}));
}

TEST(TipRules, LayOut_ALongSignature_IsBrokenBetweenParameters) {
  EditorTip tip = TipOf({4});  // "f(a, b, c, d)"
  EXPECT_EQ(LayOut(tip, 9).text, "f(a, b, c,\n    d)");
  EXPECT_EQ(LayOut(tip, 8).text, "f(a, b,\n    c, d)");
  EXPECT_EQ(LayOut(tip, 1).text, "f(a,\n    b,\n    c,\n    d)");
  tip.argument = 3;
  const TipText shown = LayOut(tip, 8);
  EXPECT_EQ(shown.text.substr(static_cast<size_t>(shown.argument.start), 1), "d");
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
  EXPECT_EQ(CollectWords("bee bear be bear", "be", chars, LetterCase::cCounts, "bear if").list,
            "bee");
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
