#include "code/CppIndent.h"

#include <algorithm>
#include <map>

#include "code/IndentScan.h"

namespace zendry {

namespace {

constexpr size_t cMostLearned = 128 * 1024;
constexpr int cMostColumns = 16;
constexpr int cWidestUnit = 8;

using Votes = std::map<int, int>;

size_t IndexOf(IndentHabit habit) {
  return static_cast<size_t>(habit);
}

int ColumnsOf(const IndentPlace& place, const IndentHabits& habits) {
  if (place.aligned >= 0 && habits.aligns) return place.aligned;
  return std::max(0, place.base + habits.Of(place.habit));
}

// The value with most votes; `otherwise` if there is no vote.
int MostOf(const Votes& votes, int otherwise) {
  const auto best = std::max_element(
      votes.begin(), votes.end(), [](const auto& a, const auto& b) { return a.second < b.second; });
  return best == votes.end() ? otherwise : best->first;
}

// How the lines of a text begin.
struct LineStarts {
  int tabs = 0;        // lines that begin with a tab
  int fewBlanks = 0;   // with two to seven blanks
  int manyBlanks = 0;  // with eight or more blanks
  int after[8] = {};   // lines that begin with tabs and then so many blanks
};

LineStarts StartsOf(std::string_view text) {
  LineStarts starts;
  for (size_t at = 0; at < text.size();) {
    const size_t tabEnd = std::min(text.find_first_not_of('\t', at), text.size());
    const size_t first = std::min(text.find_first_not_of(' ', tabEnd), text.size());
    const size_t blanks = first - tabEnd;
    const bool isCode = first < text.size() && text[first] != '\n' && text[first] != '\r' &&
                        text[first] != '*' && text[first] != '\t';
    if (isCode && tabEnd > at) {
      ++starts.tabs;
      if (blanks > 0 && blanks < 8) ++starts.after[blanks];
    } else if (isCode && blanks > 1) {
      ++(blanks < 8 ? starts.fewBlanks : starts.manyBlanks);
    }
    at = std::min(text.find('\n', first), text.size() - 1) + 1;
  }
  return starts;
}

// Blanks after tabs never reach a tab's width. A text that has less than a tab indented by blanks,
// and more by tabs and blanks, has the tabs of terminals.
int TabWidthOf(const LineStarts& starts, int otherwise) {
  int few = 0, many = 0;
  for (int i = 1; i < 8; ++i) (i < 4 ? few : many) += starts.after[i];
  if (starts.fewBlanks > 4 && (few + many) * 3 > starts.tabs) return 8;
  if (many > 2 && many * 40 > starts.tabs) return 8;
  return otherwise;
}

// True if a line of this kind is never left of where it is measured from.
bool IsInner(IndentHabit habit) {
  using enum IndentHabit;
  return habit == cBlock || habit == cSub || habit == cCaseBody || habit == cClass ||
         habit == cContinuation || habit == cParen || habit == cInit || habit == cEnum;
}

struct Learned {
  int atLineEnds = 0;  // braces that open at the ends of lines
  std::array<Votes, static_cast<size_t>(IndentHabit::cCount)> votes;
  int aligned = 0, notAligned = 0;
};

Learned VotesOf(std::string_view text, int tabWidth) {
  Learned learned;
  IndentScan scan(text, tabWidth, [&](size_t start, const IndentPlace& place, int columns) {
    const size_t first = text.find_first_not_of(" \t", start);
    const size_t lineEnd = std::min(text.find_first_of("\r\n", start), text.size());
    if (first != text.npos && first + 1 < lineEnd && text[lineEnd - 1] == '{') ++learned.atLineEnds;
    constexpr std::string_view cNoCode = "/*\n\r";
    if (first == text.npos || cNoCode.find(text[first]) != cNoCode.npos) return;
    const int delta = columns - place.base;
    if (place.aligned >= 0) {
      if (columns == place.aligned)
        ++learned.aligned;
      else if (delta > 0 && delta <= cWidestUnit)
        ++learned.notAligned;
    }
    if (delta < -cMostColumns || delta > cMostColumns) return;
    const bool isInner = !(delta > 0) && IsInner(place.habit);
    if (place.aligned < 0 && !isInner) ++learned.votes[IndexOf(place.habit)][delta];
  });
  scan.Run();
  return learned;
}

BraceHabit BracesOf(const Learned& learned) {
  const auto count = [&](IndentHabit habit) {
    int all = 0;
    for (const auto& [columns, votes] : learned.votes[IndexOf(habit)]) all += votes;
    return all;
  };
  const Votes& ofStatements = learned.votes[IndexOf(IndentHabit::cBraceControl)];
  if (count(IndentHabit::cBraceControl) > learned.atLineEnds)
    return MostOf(ofStatements, 0) > 0 ? BraceHabit::cIndented : BraceHabit::cOwn;
  if (count(IndentHabit::cBraceOther) == 0) return BraceHabit::cAttached;
  if (learned.atLineEnds == 0) return BraceHabit::cOwn;
  return count(IndentHabit::cBraceOther) * 4 > learned.atLineEnds ? BraceHabit::cOwnOfFunctions
                                                                  : BraceHabit::cAttached;
}

int UnitOf(const Learned& learned, int otherwise) {
  Votes votes;
  for (const IndentHabit habit : {IndentHabit::cBlock, IndentHabit::cSub, IndentHabit::cClass})
    for (const auto& [columns, count] : learned.votes[IndexOf(habit)])
      if (columns > 0 && columns <= cWidestUnit) votes[columns] += count;
  return MostOf(votes, otherwise);
}

}  // namespace

IndentHabits UsualHabits(int unit, int tabWidth, bool useTabs) {
  IndentHabits habits;
  habits.unit = unit;
  habits.tabWidth = tabWidth;
  habits.useTabs = useTabs;
  const auto set = [&](IndentHabit habit, int columns) {
    habits.columns[IndexOf(habit)] = columns;
  };
  for (const IndentHabit habit : {IndentHabit::cBlock, IndentHabit::cSub, IndentHabit::cCaseBody,
                                  IndentHabit::cClass, IndentHabit::cEnum, IndentHabit::cInit})
    set(habit, unit);
  for (const IndentHabit habit : {IndentHabit::cContinuation, IndentHabit::cTernary,
                                  IndentHabit::cParen, IndentHabit::cColon})
    set(habit, std::max(4, unit));
  return habits;
}

IndentHabits LearnHabits(std::string_view text, const IndentHabits& usual) {
  text = text.substr(0, cMostLearned);
  const LineStarts starts = StartsOf(text);
  const bool isIndented = starts.tabs + starts.fewBlanks + starts.manyBlanks > 0;
  const bool useTabs = isIndented ? starts.tabs > starts.manyBlanks : usual.useTabs;
  const int tabWidth = starts.tabs > 0 ? TabWidthOf(starts, usual.tabWidth) : usual.tabWidth;
  const Learned learned = VotesOf(text, tabWidth);
  const int unit = UnitOf(learned, usual.unit);
  IndentHabits habits = UsualHabits(unit, tabWidth, useTabs);
  for (size_t i = IndexOf(IndentHabit::cBlock); i < habits.columns.size(); ++i)
    habits.columns[i] = MostOf(learned.votes[i], habits.columns[i]);
  // Names in lines of their own and blocks of two columns come with indented braces.
  const bool indentsBraces = unit == 2 && !learned.votes[IndexOf(IndentHabit::cHead)].empty();
  if (indentsBraces && learned.votes[IndexOf(IndentHabit::cBraceControl)].empty())
    habits.columns[IndexOf(IndentHabit::cBraceControl)] = unit;
  habits.braces = BracesOf(learned);
  habits.aligns = learned.aligned >= learned.notAligned;
  return habits;
}

std::string BlanksOf(int from, int to, const IndentHabits& habits) {
  std::string blanks;
  if (habits.useTabs)
    for (int next = from - from % habits.tabWidth + habits.tabWidth; next <= to;
         next += habits.tabWidth) {
      blanks += '\t';
      from = next;
    }
  return blanks.append(static_cast<size_t>(std::max(0, to - from)), ' ');
}

std::optional<int> IndentOfLastLine(std::string_view text, const IndentHabits& habits) {
  const size_t lineEnd = text.rfind('\n');
  const size_t last = lineEnd == text.npos ? 0 : lineEnd + 1;
  std::optional<int> columns;
  IndentScan scan(text, habits.tabWidth, [&](size_t start, const IndentPlace& place, int) {
    if (start == last && !columns) columns = ColumnsOf(place, habits);
  });
  scan.Run();
  return columns;
}

}  // namespace zendry
