#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <cstdlib>
#include <deque>
#include <filesystem>
#include <random>
#include <set>

#include "EditorFixture.h"
#include "TypingModel.h"

// Types thousands of keys at random over copies of real files and compares each key's effect with a
// model. ZENDRY_MONKEY_KEYS sets the number of keys (3,000), ZENDRY_MONKEY_SEED another sequence.

namespace zendry {
namespace {

using test::Replaced;
using test::Selected;

long NumberFrom(const char* variable, long otherwise) {
  const char* value = std::getenv(variable);
  return value ? std::atol(value) : otherwise;
}

// Sources of this tree and headers of the system, of a size that is typed into in no time.
std::vector<std::filesystem::path> RealFiles() {
  constexpr size_t cFromTree = 36, cFiles = 50;
  constexpr uintmax_t cLargest = 40 * 1024;
  const auto collect = [](const std::filesystem::path& folder, size_t most) {
    std::set<std::filesystem::path> found;
    std::error_code ignored;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(
             folder, std::filesystem::directory_options::skip_permission_denied, ignored)) {
      const std::string extension = entry.path().extension().string();
      const bool isCode = extension == ".cpp" || extension == ".h" || extension == ".c";
      if (isCode && entry.is_regular_file(ignored) && entry.file_size(ignored) < cLargest)
        found.insert(entry.path());
    }
    std::vector<std::filesystem::path> some;
    const size_t step = std::max<size_t>(found.size() / most, 1);
    size_t i = 0;
    for (const auto& path : found)
      if (i++ % step == 0 && some.size() < most) some.push_back(path);
    return some;
  };
  const std::filesystem::path tree = std::filesystem::path(TEST_DATA).parent_path().parent_path();
  std::vector<std::filesystem::path> files = collect(tree / "src", cFromTree);
  for (const auto& path : collect("/usr/include/linux", cFiles - files.size()))
    files.push_back(path);
  return files;
}

class Monkey {
 public:
  Monkey(CppEditor& itsEditor, unsigned seed) : editor(itsEditor), random(seed) {}

  // Presses one key, or a few that belong together. False after the first surprise.
  bool Press();
  // Undoes everything and does it again.
  void CheckUndo(const std::string& file);

  int keys = 0;

 private:
  // The state before a key.
  struct Before {
    std::string text;
    std::vector<Selected> places;
    int caret = 0;
    bool isColumn = false;
    bool hasList = false;
    std::string row;
  };

  size_t Below(size_t count) { return random() % count; }
  Before Look() const;
  std::string Text() const { return editor.GetText(); }
  bool Letter(char c);
  bool Enter();
  bool Tab();
  bool Remove(Qt::Key key);
  bool Move(Qt::Key key, Qt::KeyboardModifiers modifiers);
  bool Paste();
  bool Undo();
  bool Redo();
  bool Command();
  bool Elsewhere();
  bool TakesRow(const Before& before) const;
  bool Holds(bool holds, const Before& before, const std::string& key);
  void Follow(const Before& before, int closer);
  std::vector<Selected> AroundEach(const Before& before, Qt::Key key) const;
  bool IsSteppedOver(const Before& before, char c, const std::string& now) const;

  static void Send(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
  }

  CppEditor& editor;
  std::mt19937 random;
  std::set<size_t> states;       // texts that have been there, without their indentation
  std::string automatic;         // for each byte, "a" for a closer that was written automatically
  std::deque<std::string> past;  // the last keys
  bool movedInList = false;
};

size_t DigestOf(const std::string& text) {
  std::string bare;
  for (const std::string_view line : test::ModelLines(text)) bare += test::WithoutIndent(line);
  return std::hash<std::string>()(bare);
}

Monkey::Before Monkey::Look() const {
  Before before;
  before.text = Text();
  before.caret = editor.CaretPosition();
  const auto mode = editor.Send(mavro::SCI_GETSELECTIONMODE);
  before.isColumn = (mode == mavro::SC_SEL_RECTANGLE || mode == mavro::SC_SEL_THIN) &&
                    editor.Send(mavro::SCI_GETSELECTIONS) > 1;
  const auto count = static_cast<std::uintptr_t>(editor.Send(mavro::SCI_GETSELECTIONS));
  for (std::uintptr_t i = 0; i < count; ++i) {
    const auto caret = static_cast<int>(editor.Send(mavro::SCI_GETSELECTIONNCARET, i));
    const auto anchor = static_cast<int>(editor.Send(mavro::SCI_GETSELECTIONNANCHOR, i));
    before.places.push_back({std::min(caret, anchor), std::max(caret, anchor)});
  }
  std::sort(before.places.begin(), before.places.end(),
            [](const Selected& a, const Selected& b) { return a.start < b.start; });
  if (!before.isColumn) before.places = test::Merged(before.places);
  before.hasList = editor.Send(mavro::SCI_AUTOCACTIVE) != 0;
  if (before.hasList) {
    before.row.resize(static_cast<size_t>(editor.Send(mavro::SCI_AUTOCGETCURRENTTEXT)) + 1);
    editor.Send(mavro::SCI_AUTOCGETCURRENTTEXT, 0, before.row.data());
    before.row.resize(before.row.find('\0'));
  }
  return before;
}

bool Monkey::Holds(bool holds, const Before& before, const std::string& key) {
  ++keys;
  past.push_back(key);
  if (past.size() > 30) past.pop_front();
  const std::string now = Text();
  states.insert(DigestOf(now));
  if (holds) return true;
  const auto start = static_cast<size_t>(
      std::mismatch(before.text.begin(), before.text.end(), now.begin(), now.end()).first -
      before.text.begin());
  const size_t from = start > 80 ? start - 80 : 0;
  std::string keysBefore;
  for (const std::string& one : past) keysBefore += one + " ";
  ADD_FAILURE() << editor.fileName << ": key " << keys << ", after " << keysBefore << "\ncarets "
                << before.places.size() << (before.isColumn ? " column" : "") << ", first at "
                << before.places[0].start << "-" << before.places[0].end << ", main at "
                << before.caret << (before.hasList ? ", list at " + before.row : "")
                << "\n--- was\n"
                << before.text.substr(from, 200) << "\n--- is\n"
                << (from < now.size() ? now.substr(from, 200) : "");
  return false;
}

// Keeps the marks of automatic closers at their bytes: what a key changes lies between the bytes
// that it leaves. `closer` is the place of a new one, or -1.
void Monkey::Follow(const Before& before, int closer) {
  automatic.resize(before.text.size(), ' ');
  const std::string now = Text();
  size_t front = 0;
  const size_t shorter = std::min(now.size(), before.text.size());
  while (front < shorter && now[front] == before.text[front]) ++front;
  size_t back = 0;
  while (back < shorter - front &&
         now[now.size() - 1 - back] == before.text[before.text.size() - 1 - back])
    ++back;
  automatic = automatic.substr(0, front) + std::string(now.size() - front - back, ' ') +
              automatic.substr(automatic.size() - back);
  if (closer >= 0) automatic[static_cast<size_t>(closer)] = 'a';
}

// The closer after the caret, or at the start of the next line if the caret's line is blank.
bool Monkey::IsSteppedOver(const Before& before, char c, const std::string& now) const {
  if (before.places.size() != 1 || before.places[0].start != before.places[0].end) return false;
  const auto caret = static_cast<size_t>(before.caret);
  const auto isAutomatic = [&](size_t at) {
    return at < before.text.size() && before.text[at] == c && at < automatic.size() &&
           automatic[at] == 'a';
  };
  const auto line = static_cast<size_t>(
      std::count(before.text.begin(), before.text.begin() + before.caret, '\n'));
  if (isAutomatic(caret) && test::SameButIndent(now, before.text, {{line, line}})) return true;
  if (c != '}') return false;
  const auto lines = test::ModelLines(before.text);
  if (line == 0 || line + 1 >= lines.size()) return false;
  const auto closing =
      static_cast<size_t>(test::WithoutIndent(lines[line + 1]).data() - before.text.data());
  if (!isAutomatic(closing) || lines[line].find_first_not_of(" \t\r\n") != std::string::npos)
    return false;
  const auto from = static_cast<size_t>(lines[line].data() - before.text.data());
  const std::string without =
      before.text.substr(0, from) + before.text.substr(from + lines[line].size());
  return test::SameButIndent(now, without, {{line, line}});
}

bool Monkey::Letter(char c) {
  const Before before = Look();
  QTest::keyClick(QApplication::focusWidget(), c);
  const std::string now = Text();
  const std::string key(1, c);
  if (IsSteppedOver(before, c, now)) {
    Follow(before, -1);
    return Holds(now[static_cast<size_t>(editor.CaretPosition()) - 1] == c, before, key);
  }
  const Replaced typed = test::ReplaceAll(before.text, before.places, key);
  const char partner = test::PartnerInModel(c);
  if (before.isColumn) {
    Follow(before, -1);
    const std::vector<test::LineSpan> all = {{0, before.text.size()}};
    return Holds(test::SameButBlanks(now, typed.text, all), before, key);
  }
  bool holds = test::SameButIndent(now, typed.text, typed.lines);
  int closer = -1;
  if (!holds && partner && before.places.size() == 1) {
    const Selected place = before.places[0];
    const std::string inside = before.text.substr(static_cast<size_t>(place.start),
                                                  static_cast<size_t>(place.end - place.start));
    const bool mayClose =
        place.start < place.end || static_cast<size_t>(place.end) == before.text.size() ||
        std::string_view(" \t\r\n)]}").find(before.text[static_cast<size_t>(place.end)]) !=
            std::string_view::npos;
    const Replaced paired = test::ReplaceAll(before.text, before.places, key + inside + partner);
    holds = mayClose && test::SameButIndent(now, paired.text, paired.lines);
    if (inside.empty()) closer = editor.CaretPosition();
  }
  Follow(before, holds ? closer : -1);
  const auto caret = static_cast<size_t>(editor.CaretPosition());
  const bool isAfter =
      editor.Selection().first != editor.Selection().second || (caret > 0 && now[caret - 1] == c);
  return Holds(holds && isAfter, before, key);
}

// A list that nobody asked for gives a row to Enter only if the user has moved in it.
bool Monkey::TakesRow(const Before& before) const {
  const std::string now = Text();
  const int most = static_cast<int>(before.row.size());
  for (int start = before.caret; start >= std::max(before.caret - most, 0); --start)
    if (now == test::ReplaceAll(before.text, {{start, before.caret}}, before.row).text) return true;
  return false;
}

bool Monkey::Enter() {
  const Before before = Look();
  const bool mayTake = before.hasList && (!editor.wordCompleting || movedInList);
  Send(Qt::Key_Return);
  const std::string now = Text();
  bool holds = mayTake && TakesRow(before);
  const std::string lineEnd = editor.LineEndName() == "CR LF" ? "\r\n" : "\n";
  auto places = before.places;
  if (before.isColumn) places = {{before.caret, before.caret}};  // the others are left
  if (!holds && !before.isColumn) {
    const Replaced typed = test::ReplaceAll(before.text, places, lineEnd);
    holds = test::SameButIndent(now, typed.text, typed.lines);
    const auto caret = static_cast<size_t>(before.caret);
    const bool opens = places.size() == 1 && places[0].start == places[0].end && caret > 0 &&
                       before.text[caret - 1] == '{' && caret < automatic.size() &&
                       automatic[caret] == 'a';
    if (!holds && opens) {
      const Replaced block = test::ReplaceAll(before.text, places, lineEnd + lineEnd);
      holds = test::SameButIndent(now, block.text, block.lines);
    }
  }
  if (before.isColumn) {
    // Any of the rows may be the one that is left, and what it selects goes.
    const auto linesBefore = std::count(before.text.begin(), before.text.end(), '\n');
    holds = std::count(now.begin(), now.end(), '\n') == linesBefore + 1;
  }
  Follow(before, -1);
  return Holds(holds, before, "<enter>");
}

bool Monkey::Tab() {
  const Before before = Look();
  Send(Qt::Key_Tab);
  const std::string now = Text();
  bool holds = before.hasList && TakesRow(before);
  const auto lineOf = [&](int place) {
    return static_cast<size_t>(std::count(before.text.begin(), before.text.begin() + place, '\n'));
  };
  // A selection within a line gives way to the tab; the lines of a longer one are indented.
  std::vector<test::LineSpan> spans;
  std::vector<Selected> within;
  for (const Selected& place : before.places) {
    spans.push_back({lineOf(place.start), lineOf(place.end)});
    if (spans.back().first == spans.back().last) within.push_back(place);
  }
  holds = holds || test::SameButBlanks(now, before.text, spans) ||
          test::SameButBlanks(now, test::ReplaceAll(before.text, within, "").text, spans) ||
          (before.isColumn && std::count(now.begin(), now.end(), '\n') ==
                                  std::count(before.text.begin(), before.text.end(), '\n'));
  Follow(before, -1);
  return Holds(holds, before, "<tab>");
}

std::vector<Selected> Monkey::AroundEach(const Before& before, Qt::Key key) const {
  std::vector<Selected> places = before.places;
  const bool areEmpty = std::all_of(places.begin(), places.end(),
                                    [](const Selected& one) { return one.start == one.end; });
  if (!areEmpty) return places;
  for (Selected& place : places) {
    const bool isBack = key == Qt::Key_Backspace;
    const auto at = static_cast<std::uintptr_t>(place.start);
    const auto other = static_cast<int>(
        editor.Send(isBack ? mavro::SCI_POSITIONBEFORE : mavro::SCI_POSITIONAFTER, at));
    place = {std::min(place.start, other), std::max(place.end, other)};
  }
  return places;
}

bool Monkey::Remove(Qt::Key key) {
  const Before before = Look();
  std::vector<Selected> places = AroundEach(before, key);
  Send(key);
  const std::string now = Text();
  for (size_t i = 1; i < places.size(); ++i)
    places[i].start = std::min(std::max(places[i].start, places[i - 1].end), places[i].end);
  bool holds = now == test::ReplaceAll(before.text, places, "").text;
  if (!holds && key == Qt::Key_Backspace && places.size() == 1 && before.caret > 0) {
    const auto caret = static_cast<size_t>(before.caret);
    const bool isPair = caret < before.text.size() && caret < automatic.size() &&
                        automatic[caret] == 'a' &&
                        test::PartnerInModel(before.text[caret - 1]) == before.text[caret];
    holds = isPair &&
            now == test::ReplaceAll(before.text, {{before.caret - 1, before.caret + 1}}, "").text;
  }
  if (before.isColumn)
    holds = test::WithoutBlanks(now).size() <= test::WithoutBlanks(before.text).size() &&
            std::count(now.begin(), now.end(), '\n') ==
                std::count(before.text.begin(), before.text.end(), '\n');
  Follow(before, -1);
  return Holds(holds, before, key == Qt::Key_Backspace ? "<back>" : "<del>");
}

bool Monkey::Move(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  const Before before = Look();
  Send(key, modifiers);
  if (before.hasList) movedInList = editor.Send(mavro::SCI_AUTOCACTIVE) != 0;
  std::string name = QKeySequence(modifiers | key).toString().toStdString();
  return Holds(Text() == before.text, before, "<" + name + ">");
}

bool Monkey::Paste() {
  constexpr const char* cPieces[] = {"x",    "foo(bar)", "\tif (c)\n\t\td();\n",
                                     "a\nb", "  }\n",    "\"'{"};
  const std::string piece = cPieces[Below(std::size(cPieces))];
  const Before before = Look();
  QGuiApplication::clipboard()->setText(QString::fromStdString(piece));
  Send(Qt::Key_V, Qt::ControlModifier);
  const std::string now = Text();
  const bool isCrLf = editor.LineEndName() == "CR LF";
  std::string shown;
  for (const char c : piece) shown += c == '\n' && isCrLf ? std::string("\r\n") : std::string(1, c);
  const Replaced typed = test::ReplaceAll(before.text, before.places, shown);
  bool holds = test::SameButIndent(now, typed.text, typed.lines);
  const std::vector<test::LineSpan> all = {{0, now.size()}};
  if (before.isColumn) holds = test::SameButBlanks(now, typed.text, all);
  if (!holds && before.places.size() > 1) {  // a line for each
    holds = std::count(now.begin(), now.end(),
                       '\n') == std::count(before.text.begin(), before.text.end(), '\n') - [&] {
      long lost = 0;
      for (const Selected& place : before.places)
        lost +=
            std::count(before.text.begin() + place.start, before.text.begin() + place.end, '\n');
      return lost;
    }();
  }
  Follow(before, -1);
  return Holds(holds, before, "<paste>");
}

bool Monkey::Undo() {
  const Before before = Look();
  Send(Qt::Key_Z, Qt::ControlModifier);
  Follow(before, -1);
  return Holds(states.count(DigestOf(Text())) > 0, before, "<undo>");
}

bool Monkey::Redo() {
  const Before before = Look();
  editor.Send(mavro::SCI_REDO);
  Follow(before, -1);
  return Holds(states.count(DigestOf(Text())) > 0, before, "<redo>");
}

// Commands that only select, or ask for a list.
bool Monkey::Command() {
  struct Row {
    int id;
    const char* name;
  };
  constexpr Row cRows[] = {{mavro::cSciCaretBelow, "<caret below>"},
                           {mavro::cSciCaretAbove, "<caret above>"},
                           {mavro::cSciNextOccurrence, "<next>"},
                           {mavro::cSciSelectOccurrences, "<all>"}};
  const Before before = Look();
  const size_t which = Below(std::size(cRows) + 1);
  movedInList = false;
  if (which == std::size(cRows)) {
    editor.AskForList();
    return Holds(Text() == before.text, before, "<list>");
  }
  editor.OnCommand(cRows[which].id);
  return Holds(Text() == before.text, before, cRows[which].name);
}

bool Monkey::Elsewhere() {
  const Before before = Look();
  const auto place = static_cast<int>(Below(static_cast<size_t>(editor.Length()) + 1));
  const auto line = static_cast<std::uintptr_t>(editor.LineOf(place));
  const auto start = static_cast<int>(editor.Send(mavro::SCI_POSITIONFROMLINE, line));
  const int at = Below(2) ? editor.LineEnd(static_cast<int>(line)) : start;
  editor.Select(at, at);
  return Holds(Text() == before.text, before, "<go " + std::to_string(at) + ">");
}

bool Monkey::Press() {
  constexpr const char* cWords[] = {"std::",    "this->", "int x = ", "for (",   "#include <",
                                    "// it's ", "/* ",    "if (x) {", "case 1:", "return ",
                                    "\"",       "f(a, ",  "else ",    "do {",    "};"};
  constexpr std::string_view cSigns = " ;,.<>()[]{}\"'#:/*-+=&|!_\\019";
  constexpr Qt::Key cMoves[] = {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up,     Qt::Key_Down,
                                Qt::Key_Home, Qt::Key_End,   Qt::Key_PageUp, Qt::Key_PageDown};
  if (states.empty()) states.insert(DigestOf(Text()));
  const size_t roll = Below(100);
  if (roll < 30) return Letter(static_cast<char>('a' + Below(26)));
  if (roll < 54) return Letter(cSigns[Below(cSigns.size())]);
  if (roll < 62) {
    for (const char c : std::string(cWords[Below(std::size(cWords))]))
      if (!Letter(c)) return false;
    return true;
  }
  if (roll < 68) return Enter();
  if (roll < 74) return Remove(Qt::Key_Backspace);
  if (roll < 76) return Remove(Qt::Key_Delete);
  if (roll < 84) return Move(cMoves[Below(std::size(cMoves))], Qt::NoModifier);
  if (roll < 87) return Move(cMoves[Below(6)], Qt::ShiftModifier);
  if (roll < 88) return Move(cMoves[Below(4)], Qt::AltModifier | Qt::ShiftModifier);
  if (roll < 90) return Tab();
  if (roll < 91) return Paste();
  if (roll < 93) return Undo();
  if (roll < 94) return Redo();
  if (roll < 96) return Move(Qt::Key_Escape, Qt::NoModifier);
  return roll < 98 ? Elsewhere() : Command();
}

void Monkey::CheckUndo(const std::string& file) {
  while (editor.Send(mavro::SCI_CANREDO)) editor.Send(mavro::SCI_REDO);
  const std::string typed = Text();
  while (editor.Send(mavro::SCI_CANUNDO)) editor.Send(mavro::SCI_UNDO);
  EXPECT_TRUE(Text() == file) << editor.fileName << ": undo doesn't lead back to the file";
  while (editor.Send(mavro::SCI_CANREDO)) editor.Send(mavro::SCI_REDO);
  EXPECT_TRUE(Text() == typed) << editor.fileName << ": redo doesn't lead to what was typed";
}

class IdeMonkey : public test::EditorFixture {};

TEST_F(IdeMonkey, NoByteChanges_ButByWhatIsTyped) {
  const long keys = NumberFrom("ZENDRY_MONKEY_KEYS", 3000);
  const auto seed = static_cast<unsigned>(NumberFrom("ZENDRY_MONKEY_SEED", 1));
  const std::vector<std::filesystem::path> files = RealFiles();
  ASSERT_GE(files.size(), 36U);
  const long share = keys / static_cast<long>(files.size()) + 1;
  ide.Run({}, [&] {
    int number = 0;
    for (const auto& path : files) {
      const std::string name = std::to_string(number++) + path.filename().string();
      std::filesystem::copy_file(path, ide.files.Path(name));
      const std::string text = ide.files.Read(name);
      CppEditor& editor = *Tabs().OpenFile(ide.files.Path(name));
      ASSERT_EQ(editor.GetText(), text);
      Monkey monkey(editor, seed * 1000 + static_cast<unsigned>(number));
      while (monkey.keys < share)
        if (!monkey.Press()) break;
      monkey.CheckUndo(text);
      ASSERT_TRUE(editor.Save(CppEditor::SavedBy::cUser).Ok());
      EXPECT_TRUE(ide.files.Read(name) == editor.GetText()) << name;
      if (HasFailure()) return;
      Tabs().CloseTab(Tabs().TabCount() - 1, EditTabs::Unsaved::cDrop);
      QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
  });
}

}  // namespace
}  // namespace zendry
