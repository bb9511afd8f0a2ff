#include "RtfReader.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "RtfRows.h"
#include "RtfScan.h"

namespace mavro {

namespace {

// The destination of a group's text.
enum class Target { cPage, cFonts, cColors, cInstruction, cNowhere };

// The state that ends with its group.
struct GroupState {
  Target target = Target::cPage;
  RtfStyle style;
  RtfParagraph paragraph;  // without runs: the look of the paragraphs that end here
  int unicodeSkip = 1;     // number of characters that replace one given by number
  int fontIndex = 0;
};

constexpr size_t cMaxDepth = 200;
constexpr size_t cMaxTable = 1000;  // fonts or colours
constexpr size_t cMaxFaceBytes = 100;
constexpr size_t cMaxLinkBytes = 2000;

struct Destination {
  std::string_view word;
  Target target;
};

// The groups that are not part of the page. Unknown ones are marked with "\*".
constexpr Destination cDestinations[] = {
    {"fonttbl", Target::cFonts},       {"colortbl", Target::cColors},
    {"fldinst", Target::cInstruction}, {"stylesheet", Target::cNowhere},
    {"info", Target::cNowhere},        {"pict", Target::cNowhere},
    {"object", Target::cNowhere},      {"header", Target::cNowhere},
    {"footer", Target::cNowhere},      {"footnote", Target::cNowhere},
    {"listtable", Target::cNowhere},   {"listoverridetable", Target::cNowhere},
    {"generator", Target::cNowhere},   {"themedata", Target::cNowhere},
};

struct Symbol {
  std::string_view word;
  std::string_view text;
};

constexpr Symbol cSymbols[] = {
    {"tab", "\t"},
    {"line", "\n"},
    {"bullet", "\xE2\x80\xA2"},
    {"emdash", "\xE2\x80\x94"},
    {"endash", "\xE2\x80\x93"},
    {"lquote", "\xE2\x80\x98"},
    {"rquote", "\xE2\x80\x99"},
    {"ldblquote", "\xE2\x80\x9C"},
    {"rdblquote", "\xE2\x80\x9D"},
    {"emspace", "\xE2\x80\x83"},
    {"enspace", "\xE2\x80\x82"},
    {"~", "\xC2\xA0"},
    {"_", "\xE2\x80\x91"},
    {"-", ""},
};

struct Flag {
  std::string_view word;
  bool RtfStyle::*member;
};

constexpr Flag cFlags[] = {{"b", &RtfStyle::bold},
                           {"i", &RtfStyle::italic},
                           {"ul", &RtfStyle::underline},
                           {"strike", &RtfStyle::strike}};

struct ParagraphNumber {
  std::string_view word;
  int RtfParagraph::*member;
};

constexpr ParagraphNumber cParagraphNumbers[] = {{"li", &RtfParagraph::leftIndent},
                                                 {"fi", &RtfParagraph::firstIndent},
                                                 {"sb", &RtfParagraph::before},
                                                 {"sa", &RtfParagraph::after}};

struct Alignment {
  std::string_view word;
  RtfParagraph::Align align;
};

constexpr Alignment cAlignments[] = {{"ql", RtfParagraph::cLeft},
                                     {"qc", RtfParagraph::cCenter},
                                     {"qr", RtfParagraph::cRight},
                                     {"qj", RtfParagraph::cJustified}};

template <class Table>
auto FindRow(const Table& table, std::string_view word) {
  const auto row = std::find_if(std::begin(table), std::end(table),
                                [word](const auto& one) { return one.word == word; });
  return row == std::end(table) ? nullptr : &*row;
}

// The address in a field instruction: HYPERLINK "address".
std::string LinkOf(std::string_view instruction) {
  constexpr std::string_view cWord = "HYPERLINK";
  const size_t word = instruction.find(cWord);
  if (word == std::string_view::npos) return std::string();
  const size_t open = instruction.find('"', word + cWord.size());
  if (open == std::string_view::npos) return std::string();
  return std::string(instruction.substr(open + 1, instruction.find('"', open + 1) - open - 1));
}

class Reader {
 public:
  explicit Reader(std::string_view bytes) : scan(bytes) {}

  RtfText Read() {
    for (RtfToken token = scan.Next(); token.kind != RtfToken::cEnd; token = scan.Next())
      Take(token);
    EndText();
    text.complete = opened && groups.size() == 1 && tooDeep == 0;
    return std::move(text);
  }

 private:
  GroupState& Now() { return groups.back(); }

  void Take(const RtfToken& token) {
    switch (token.kind) {
      case RtfToken::cOpen:
        pendingSkip = 0;
        return Open();
      case RtfToken::cClose:
        pendingSkip = 0;
        return Close();
      case RtfToken::cText:
        return TakeText(token.text);
      case RtfToken::cByte:
        if (pendingSkip > 0)
          --pendingSkip;
        else
          Add(WindowsCharacter(static_cast<unsigned char>(token.number)));
        return;
      case RtfToken::cBinary:
        return;
      default:
        return TakeWord(token);
    }
  }

  // The characters after one given by number are its replacement, for readers that don't know it.
  void TakeText(std::string_view plain) {
    while (pendingSkip > 0 && !plain.empty()) {
      plain.remove_prefix(CharacterBytes(plain));
      --pendingSkip;
    }
    if (!plain.empty()) Add(plain);  // else half of a character may still wait for the other half
  }

  void Open() {
    opened = true;
    groupStart = true;
    if (groups.size() >= cMaxDepth)
      ++tooDeep;
    else
      groups.push_back(Now());
  }

  void Close() {
    groupStart = false;
    if (tooDeep > 0) {
      --tooDeep;
      return;
    }
    if (groups.size() == 1) return;
    const bool wasInstruction = Now().target == Target::cInstruction;
    groups.pop_back();
    if (wasInstruction && Now().target != Target::cInstruction) {
      TakeLink(LinkOf(instruction));
      instruction.clear();
    }
  }

  void TakeLink(std::string link) {
    Now().style.link = link.empty() ? -1 : static_cast<int>(text.links.size());
    if (!link.empty()) text.links.push_back(std::move(link));
  }

  void TakeWord(const RtfToken& token) {
    const bool starts = std::exchange(groupStart, false);
    if (tooDeep > 0) return;
    if (token.text == "*") {
      groupStart = starts;
      ignorable = starts;
      return;
    }
    const bool mayIgnore = std::exchange(ignorable, false);
    if (starts)
      if (const Destination* row = FindRow(cDestinations, token.text)) {
        if (Now().target != Target::cNowhere) Now().target = row->target;
        return;
      }
    if (mayIgnore) Now().target = Target::cNowhere;
    if (Now().target == Target::cNowhere) return;
    if (pendingSkip > 0 && token.text != "u") --pendingSkip;
    Apply(token);
  }

  void Apply(const RtfToken& token) {
    if (Now().target == Target::cPage && rows.Take(token, colors)) return;
    if (token.text == "u") {
      TakeNumbered(token.number);
    } else if (token.text == "uc") {
      Now().unicodeSkip = std::clamp(token.number, 0, 100);
    } else if (Now().target == Target::cColors) {
      ApplyColorPart(token);
    } else if (const Symbol* symbol = FindRow(cSymbols, token.text)) {
      Add(symbol->text);
    } else if (!ApplyParagraph(token)) {
      ApplyStyle(token);
    }
  }

  void TakeNumbered(int number) {
    const int unit = number < 0 ? number + 0x10000 : number;
    Put(units.Take(unit));
    pendingSkip = Now().unicodeSkip;
  }

  void ApplyColorPart(const RtfToken& token) {
    const int level = std::clamp(token.number, 0, 255);
    if (token.text == "red") color = (color & 0x00FFFF) | level << 16;
    if (token.text == "green") color = (color & 0xFF00FF) | level << 8;
    if (token.text == "blue") color = (color & 0xFFFF00) | level;
    hasColor = true;
  }

  bool ApplyParagraph(const RtfToken& token) {
    RtfParagraph& look = Now().paragraph;
    if (token.text == "row" && rows.HasCells()) {
      EndRow();
    } else if (token.text == "par" || token.text == "page" || token.text == "row") {
      if (Now().target == Target::cPage) EndParagraph();
    } else if (token.text == "pard") {
      look = RtfParagraph();
    } else if (token.text == "intbl") {
      look.isInTable = true;
    } else if (token.text == "cell") {
      EndCell();
    } else if (const ParagraphNumber* row = FindRow(cParagraphNumbers, token.text)) {
      look.*row->member = std::clamp(token.number, -cMaxTwips, cMaxTwips);
    } else if (const Alignment* align = FindRow(cAlignments, token.text)) {
      look.align = align->align;
    } else {
      return false;
    }
    return true;
  }

  void ApplyStyle(const RtfToken& token) {
    RtfStyle& style = Now().style;
    if (const Flag* flag = FindRow(cFlags, token.text)) {
      style.*flag->member = !token.hasNumber || token.number != 0;
    } else if (token.text == "ulnone") {
      style.underline = false;
    } else if (token.text == "fs") {
      style.halfPoints = token.number > 0 ? std::min(token.number, cMaxHalfPoints) : cHalfPoints;
    } else if (token.text == "cf") {
      style.color = token.number >= 0 && static_cast<size_t>(token.number) < colors.size()
                        ? colors[static_cast<size_t>(token.number)]
                        : -1;
    } else if (token.text == "f") {
      Now().fontIndex = token.number;
      if (Now().target == Target::cPage) style.face = FaceOf(token.number);
    } else if (token.text == "plain") {
      style = RtfStyle();
    }
  }

  void Add(std::string_view plain) {
    Put(units.Rest());
    Put(plain);
  }

  void Put(std::string_view plain) {
    if (plain.empty() || tooDeep > 0) return;
    switch (Now().target) {
      case Target::cPage:
        return AddToPage(plain);
      case Target::cFonts:
        return AddToFonts(plain);
      case Target::cColors:
        return AddToColors(plain);
      case Target::cInstruction:
        if (instruction.size() < cMaxLinkBytes) instruction += plain;
        return;
      case Target::cNowhere:
        return;
    }
  }

  void AddToPage(std::string_view plain) {
    if (runs.empty() || !(runs.back().style == Now().style)) runs.push_back({Now().style, {}});
    runs.back().text += plain;
  }

  // "Name;" of the font that \f has selected.
  void AddToFonts(std::string_view plain) {
    const size_t end = plain.find(';');
    if (face.size() < cMaxFaceBytes) face += plain.substr(0, end);
    if (end == std::string_view::npos) return;
    if (text.faces.size() < cMaxTable) {
      fonts.emplace(Now().fontIndex, static_cast<int>(text.faces.size()));
      text.faces.push_back(face);
    }
    face.clear();
  }

  // Each semicolon ends a colour; one without components is the page's own.
  void AddToColors(std::string_view plain) {
    for (const char c : plain) {
      if (c != ';') continue;
      if (colors.size() < cMaxTable) colors.push_back(hasColor ? color : -1);
      color = 0;
      hasColor = false;
    }
  }

  int FaceOf(int index) const {
    const auto found = fonts.find(index);
    return found == fonts.end() ? -1 : found->second;
  }

  void EndParagraph() {
    Put(units.Rest());
    text.paragraphs.push_back(Now().paragraph);
    RtfParagraph& ended = text.paragraphs.back();
    ended.runs = std::exchange(runs, {});
    if (!ended.isInTable || !rows.IsDefined()) return;
    ended.row = static_cast<int>(text.rows.size());
    ended.cell = rows.Cell();
    rowHasText = true;
  }

  // A cell outside of all rows is a tab. So are those beyond the limit.
  void EndCell() {
    if (Now().target != Target::cPage || !rows.IsDefined() || rows.IsFull()) return Add("\t");
    Now().paragraph.isInTable = true;
    EndParagraph();
    rows.NextCell();
  }

  void EndRow() {
    if (!runs.empty()) {
      Now().paragraph.isInTable = true;
      EndParagraph();
    }
    text.rows.push_back(rows.EndRow());
    rowHasText = false;
  }

  void EndText() {
    Put(units.Rest());
    if (!runs.empty()) EndParagraph();
    if (rowHasText) text.rows.push_back(rows.EndRow());
  }

  static constexpr int cHalfPoints = 24;
  static constexpr int cMaxHalfPoints = 400;
  static constexpr int cMaxTwips = 20000;

  RtfScan scan;
  RtfText text;
  std::vector<RtfRun> runs;
  std::vector<GroupState> groups{1};
  std::unordered_map<int, int> fonts;  // from the number after \f to the index of the face
  std::vector<int32_t> colors;
  std::string face;
  std::string instruction;
  UnitJoiner units;
  RtfRows rows;
  bool rowHasText = false;  // paragraphs belong to the row that hasn't ended
  int32_t color = 0;
  bool hasColor = false;
  bool opened = false;
  bool groupStart = false;  // nothing but "\*" has been seen of the group
  bool ignorable = false;
  int pendingSkip = 0;
  size_t tooDeep = 0;  // groups that are open beyond the limit
};

}  // namespace

bool IsRtf(std::string_view bytes) {
  return bytes.starts_with("{\\rtf");
}

RtfText ReadRtf(std::string_view bytes) {
  return Reader(bytes).Read();
}

}  // namespace mavro
