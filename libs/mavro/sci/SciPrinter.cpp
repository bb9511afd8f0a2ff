#include "SciPrinter.h"

#include <algorithm>
#include <chrono>
#include <string_view>
#include <tuple>
#include <utility>

#include "EditorColours.h"
#include "PageSetup.h"
#include "PrintProgressDlg.h"
#include "SciImpl.h"
#include "StylePalette.h"

namespace mavro {

namespace {

constexpr int cLinesStyledAhead = 200;

// The component's structure for a part of its text.
struct StyledRange {
  long start, end;
  char* bytes;
};

// The notes that the editor shows in place of lines that are too long to be shown.
void UnfoldNotes(const LongLines& lines, PrintLine& line) {
  for (auto found = LongLines::FindCharacter(line.text, 0); found.number >= 0;) {
    const size_t length = LongLines::CharacterOf(found.number).size();
    const std::string note = lines.NoteOf(found.number);
    size_t after = found.place + length;
    if (!note.empty()) {
      line.text.replace(found.place, length, note);
      line.styles.replace(found.place, length, std::string(note.size(), '\0'));
      after = found.place + note.size();
    }
    found = LongLines::FindCharacter(line.text, after);
  }
}

}  // namespace

// The text of an editor from a position to another.
class SciPrinter::Text : public PrintText {
 public:
  Text(SciEditor& itsEditor, int itsStart, int itsEnd, bool itsFolded)
      : editor(itsEditor), start(itsStart), end(itsEnd), isAsFolded(itsFolded) {
    last = editor.LineOf(end);
    // A selection that ends at the start of a line, or a text whose last line has an end.
    if (last > editor.LineOf(start) && end == editor.LineStart(last)) --last;
  }

  int LineFrom(int line) const override {
    line = std::max(line, editor.LineOf(start));
    while (isAsFolded && line <= last && !editor.Send(SCI_GETLINEVISIBLE, Unsigned(line))) ++line;
    return line <= last ? line : -1;
  }
  int LastNumber() const override { return last + 1; }
  int StartOf(int line) const { return std::max(editor.LineStart(line), start); }

  PrintLine Line(int line) const override {
    const int from = StartOf(line), till = std::min(editor.LineEnd(line), end);
    EnsureStyled(line, till);
    PrintLine read;
    ReadStyled(from, till, read);
    read.isFolded =
        isAsFolded && line < last && !editor.Send(SCI_GETLINEVISIBLE, Unsigned(line + 1));
    UnfoldNotes(static_cast<SciEditor::Impl*>(editor.impl)->longLines, read);
    return read;
  }

 private:
  static std::uintptr_t Unsigned(int number) { return static_cast<std::uintptr_t>(number); }

  // The component gives each byte with its style.
  void ReadStyled(int from, int till, PrintLine& read) const {
    if (till <= from) return;
    const auto count = static_cast<size_t>(till - from);
    std::string both(2 * count + 2, '\0');  // the component ends it with two zeros
    const StyledRange range = {from, till, both.data()};
    editor.Send(SCI_GETSTYLEDTEXT, 0, reinterpret_cast<std::intptr_t>(&range));
    read.text.resize(count);
    read.styles.resize(count);
    for (size_t i = 0; i < count; ++i) {
      read.text[i] = both[2 * i];
      read.styles[i] = both[2 * i + 1];
    }
  }

  // Editors style what is shown and what comes before it.
  void EnsureStyled(int line, int till) const {
    if (editor.IsHuge() || editor.Send(SCI_GETENDSTYLED) >= till) return;
    const int ahead = editor.LineEnd(std::min(line + cLinesStyledAhead, editor.LineCount() - 1));
    editor.Send(SCI_COLOURISE, static_cast<std::uintptr_t>(editor.Send(SCI_GETENDSTYLED)), ahead);
  }

  SciEditor& editor;
  const int start, end;
  const bool isAsFolded;
  int last = 0;
};

SciPrinter& TheSciPrinter() {
  static SciPrinter printer;
  return printer;
}

SciPrinter::SciPrinter() {
  InstallQtPrinting();
}

SciPrinter::~SciPrinter() = default;

void SciPrinter::SetEditor(SciEditor& newEditor, const PageSetup& setup,
                           std::vector<PrintMark> newMarks) {
  editor = &newEditor;
  marks = std::move(newMarks);
  isMetric = true;
  left = setup.left;
  top = setup.top;
  right = setup.right;
  bottom = setup.bottom;
  showHeader = setup.hasHeader;
  showFooter = setup.hasFooter;
  footerText = newEditor.fileName;
  isAsFolded = setup.isAsFolded;
  selectionOnly = false;
  fromPage = toPage = 0;
  onlyPages.clear();
  title = newEditor.fileName.substr(newEditor.fileName.rfind('/') + 1);
  std::tie(selectionStart, selectionEnd) = newEditor.Selection();
  MakeStyles(setup);
}

void SciPrinter::MakeStyles(const PageSetup& setup) {
  const EditorOptions& options = *editor->options;
  const auto* window = static_cast<SciEditor::Impl*>(editor->impl)->Window();
  const bool isFixed = options.monospaced;
  std::string face = isFixed ? options.monoFace : options.fontFace;
  if (face.empty())
    face = window->DefaultFace(isFixed ? FaceKind::cFixed : FaceKind::cProportional);
  const int size = setup.size > 0 ? setup.size : options.fontSize;
  const auto inkOf = [&](EditorColour colour) {
    return setup.hasColours ? ColourOf(colour).light : 0;
  };
  const PrintLook plain = {{face, size, (options.fontStyle & Font::cBold) != 0,
                            (options.fontStyle & Font::cItalic) != 0},
                           inkOf(cTextInk)};
  styles.looks.fill(plain);
  styles.numbers = plain;
  styles.numbers.ink = inkOf(cMarginInk);
  styles.tabWidth = options.tabWidth;
  styles.hasNumbers = setup.hasNumbers;
  styles.isUtf8 = editor->codePage == SC_CP_UTF8;
  const EditorLanguage* language = editor->language;
  if (!language || !language->styles) return;
  const auto isPossible = [](int style) { return style >= 0 && style < StyleRow::cEnd; };
  for (const StyleRow* row = language->styles; row->style < StyleRow::cEnd; ++row) {
    PrintLook look = plain;
    const int own = row->flags & 0xFF;
    if (own > 0 && !isFixed && options.fontSize > 0)
      look.font.size = std::max(1, own * size / options.fontSize);
    look.font.isBold |= (row->flags & StyleRow::cBold) != 0;
    look.font.isItalic |= (row->flags & StyleRow::cItalic) != 0;
    if (setup.hasColours) look.ink = row->foreground.light;
    for (const int style : {row->style, row->style + language->leftOutStyles})
      if (isPossible(style)) styles.looks[static_cast<size_t>(style)] = look;
  }
}

void SciPrinter::onBegin() {
  startPosition = 0;
  lengthPrinted = editor->Length();
  if (selectionOnly) {
    const auto [low, high] = std::minmax(selectionStart, selectionEnd);
    startPosition = std::clamp(low, 0, lengthPrinted);
    lengthPrinted = std::clamp(high, 0, lengthPrinted);
  }
  position = startPosition;
  text = std::make_unique<Text>(*editor, startPosition, lengthPrinted, isAsFolded);
  layout = std::make_unique<PrintLayout>(*text, *dc, styles);
  next = layout->First();
}

void SciPrinter::onPage(PageInfo& page) {
  using Drawing = PrintLayout::Drawing;
  std::vector<PrintLayout::LineTop> begun;
  next =
      layout->Page(next, page.print, page.isPrinted ? Drawing::cDrawn : Drawing::cMeasured, begun);
  for (const auto& [line, at] : begun) {
    const auto mark =
        std::lower_bound(marks.begin(), marks.end(), line,
                         [](const PrintMark& m, int wanted) { return m.line < wanted; });
    for (auto each = mark; each != marks.end() && each->line == line; ++each)
      dc->AddOutline(each->title, at);
  }
  hasMorePages = next.line >= 0;
  position = hasMorePages ? text->StartOf(next.line) + layout->StartOf(next) : lengthPrinted;
}

void SciPrinter::onEnd() {
  layout.reset();
  text.reset();
}

void SciPrinter::GoOn(PrintLayout::Place place, int number) {
  next = place;
  pageNumber = number;
  hasMorePages = true;
}

int SciPrinter::Progress() const {
  const long all = lengthPrinted - startPosition;
  return all > 0 ? static_cast<int>((position - startPosition) * 100L / all) : 100;
}

bool SciPrinter::PrintPages() {
  const auto start = std::chrono::steady_clock::now();
  while (std::chrono::steady_clock::now() - start < patience)
    if (!NextPage()) return true;
  PrintProgressDlg progress(
      [this] { return NextPage(); }, [this] { return Progress(); },
      [this] { return "Page " + std::to_string(pageNumber) + " of " + title; });
  return progress.PrintAll();
}

}  // namespace mavro
