#include <QMimeData>
#include <QTextBlock>
#include <QTextBlockFormat>
#include <QTextBrowser>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QTextTable>
#include <QTimer>
#include <algorithm>
#include <functional>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include "NativeRich.h"
#include "QtFactories.h"
#include "QtRichTable.h"
#include "QtText.h"
#include "RtfReader.h"
#include "Virtual.h"

namespace mavro {

namespace {

constexpr double cTwipsPerPixel = 15;  // at 96 dots per inch
constexpr int cTabTwips = 720;         // between tab stops if the text sets none
constexpr int cPlainHalfPoints = 24;   // the RTF size if the text sets none

double Pixels(int twips) {
  return twips / cTwipsPerPixel;
}

QTextBlockFormat FormatOf(const RtfParagraph& paragraph) {
  static constexpr Qt::AlignmentFlag cAligns[] = {Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight,
                                                  Qt::AlignJustify};
  QTextBlockFormat format;
  format.setAlignment(cAligns[paragraph.align]);
  format.setLeftMargin(std::max(Pixels(paragraph.leftIndent), 0.0));
  format.setTextIndent(Pixels(paragraph.firstIndent));
  format.setTopMargin(std::max(Pixels(paragraph.before), 0.0));
  format.setBottomMargin(std::max(Pixels(paragraph.after), 0.0));
  return format;
}

// Black is the colour of plain letters in RTF: it follows the palette, but for letters on a
// background of their own.
QTextCharFormat FormatOf(const RtfStyle& style, const RtfText& text, const QPalette& palette,
                         const QColor& background) {
  QTextCharFormat format;
  if (style.bold) format.setFontWeight(QFont::Bold);
  format.setFontItalic(style.italic);
  format.setFontUnderline(style.underline);
  format.setFontStrikeOut(style.strike);
  if (style.halfPoints != cPlainHalfPoints) format.setFontPointSize(style.halfPoints / 2.0);
  if (style.face >= 0)
    format.setFontFamilies({ToScreen(text.faces[static_cast<size_t>(style.face)])});
  const bool isOwnPaper = background != palette.color(QPalette::Base);
  if (style.color > 0 || isOwnPaper)
    format.setForeground(
        Legible(QColor::fromRgb(static_cast<QRgb>(std::max(style.color, 0))), background));
  if (style.link < 0) return format;
  format.setAnchor(true);
  format.setAnchorHref(ToScreen(text.links[static_cast<size_t>(style.link)]));
  format.setForeground(palette.link());
  format.setFontUnderline(true);
  return format;
}

// Longest word that is laid out in one go: each line that it fills costs all the rest of it. A
// longer word is in several blocks, its parts; in the text that the view returns they are one word.
constexpr int cLongestWord = 512;
constexpr int cLaterPart = 1;  // state of a block whose word began in an earlier one

bool HasLongWord(const QString& text) {
  int length = 0;
  for (const QChar c : text) {
    length = c.isSpace() ? 0 : length + 1;
    if (length > cLongestWord) return true;
  }
  return false;
}

class RichBrowser final : public QTextBrowser {
 public:
  using QTextBrowser::QTextBrowser;

  void Begin() {
    clear();
    word = 0;
    hasParts = false;
  }

  void BeginParagraph() { word = 0; }

  std::function<void()> onPaletteChange, onResized;
  std::function<void()> needsAll;  // something is done that concerns the whole text

  // Inserts text at the cursor; its first word may continue the text before.
  void Insert(QTextCursor& cursor, const QString& text, const QTextCharFormat& format) {
    qsizetype start = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
      word = text[i].isSpace() ? 0 : word + 1;
      if (word <= cLongestWord || text[i].isLowSurrogate()) continue;
      cursor.insertText(text.mid(start, i - start), format);
      BeginPart(cursor);
      start = i;
      word = 1;
    }
    cursor.insertText(text.mid(start), format);
  }

  QString Selected(const QTextCursor& cursor) const {
    if (!hasParts) return cursor.selection().toPlainText();
    QString selected;
    const int end = cursor.selectionEnd();
    for (QTextBlock block = document()->findBlock(cursor.selectionStart());
         block.isValid() && block.position() <= end; block = block.next()) {
      if (block.position() > cursor.selectionStart() && block.userState() != cLaterPart)
        selected += '\n';
      const int from = std::max(cursor.selectionStart() - block.position(), 0);
      selected += block.text().mid(from, end - block.position() - from);
    }
    return selected.replace(QChar::LineSeparator, '\n');
  }

  QString All() const {
    QTextCursor cursor(document());
    cursor.select(QTextCursor::Document);
    return Selected(cursor);
  }

 protected:
  QMimeData* createMimeDataFromSelection() const override {
    if (!hasParts) return QTextBrowser::createMimeDataFromSelection();
    auto* data = new QMimeData;
    data->setText(Selected(textCursor()));
    return data;
  }

  void keyPressEvent(QKeyEvent* event) override {
    needsAll();
    QTextBrowser::keyPressEvent(event);
  }

  void mousePressEvent(QMouseEvent* event) override {
    needsAll();
    QTextBrowser::mousePressEvent(event);
  }

  void contextMenuEvent(QContextMenuEvent* event) override {
    needsAll();
    QTextBrowser::contextMenuEvent(event);
  }

  void resizeEvent(QResizeEvent* event) override {
    QTextBrowser::resizeEvent(event);
    if (onResized) onResized();
  }

  void changeEvent(QEvent* event) override {
    QTextBrowser::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && onPaletteChange) onPaletteChange();
  }

 private:
  void BeginPart(QTextCursor& cursor) {
    QTextBlockFormat upper = cursor.blockFormat();
    QTextBlockFormat lower = upper;
    upper.setBottomMargin(0);
    lower.setTopMargin(0);
    lower.setTextIndent(0);
    cursor.setBlockFormat(upper);
    cursor.insertBlock(lower);
    cursor.block().setUserState(cLaterPart);
    hasParts = true;
  }

  int word = 0;  // letters since the last place to break a line
  bool hasParts = false;
};

class RichWindow final : public NativeRichView {
  // What isn't shown yet of a text, and where it goes.
  struct Rest {
    Rest(RtfText&& itsText, QTextCursor itsCursor)
        : text(std::move(itsText)), cursor(std::move(itsCursor)) {}
    RtfText text;
    QTextCursor cursor;
    size_t paragraph = 0, run = 0;
    qsizetype offset = 0;   // in the run
    bool isInBlock = true;  // the cursor is in a paragraph that nothing was written to
  };

 public:
  RichWindow(const CreateInfo& info, RichBrowser* itsView)
      : NativeRichView(info, itsView), view(itsView) {
    view->setOpenLinks(false);
    view->setTabStopDistance(Pixels(cTabTwips));
    view->setUndoRedoEnabled(false);
    view->setTextInteractionFlags(Qt::TextBrowserInteraction | Qt::TextSelectableByKeyboard);
    view->onResized = [this] { FitTables(); };
    view->needsAll = [this] { ShowRest(); };
    later.setSingleShot(true);
    QObject::connect(&later, &QTimer::timeout, &context, [this] {
      if (!ShowSome(cLaterLetters)) later.start(0);
    });
    // Colours are chosen for the palette in force.
    view->onPaletteChange = [this] {
      if (IsRtf(Text())) ShowRich(ReadRtf(Text()));
    };
    QObject::connect(view, &QTextBrowser::anchorClicked, &context, [this](const QUrl& url) {
      RichHeader header;
      header.from = this;
      header.code = EN_LINK;
      header.link = FromScreen(url.toString());
      Notify(header);
    });
  }

  void SetText(const std::string& newText) override {
    NativeRichView::SetText(newText);
    if (IsRtf(newText))
      ShowRich(ReadRtf(newText));
    else
      ShowPlain(ToScreen(newText));
  }

  void SelectAll() override {
    ShowRest();
    view->selectAll();
  }
  std::string SelectedText() const override {
    return FromScreen(view->Selected(view->textCursor()));
  }
  std::string PlainText() const override {
    view->needsAll();
    return FromScreen(view->All());
  }

  // Enter follows the link that the keyboard has selected.
  bool WantsKey(int virtualKey) const override {
    return virtualKey == VK_RETURN && view->textCursor().charFormat().isAnchor() &&
           view->textCursor().hasSelection();
  }

 private:
  void ShowPlain(const QString& text) {
    tables.clear();
    rest.reset();
    view->Begin();
    if (!HasLongWord(text)) return view->setPlainText(text);
    QTextCursor cursor(view->document());
    cursor.beginEditBlock();
    view->Insert(cursor, text, QTextCharFormat());
    cursor.endEditBlock();
    view->moveCursor(QTextCursor::Start);
  }

  // The part that is seen at once, and a little more; the rest follows when the page is painted, in
  // pieces that nobody notices.
  void ShowRich(RtfText text) {
    tables.clear();
    view->Begin();
    rest.emplace(std::move(text), QTextCursor(view->document()));
    const bool isAll = ShowSome(cFirstLetters);
    view->moveCursor(QTextCursor::Start);
    if (!isAll) later.start(cUntilPainted);
  }

  void ShowRest() { ShowSome(std::numeric_limits<qsizetype>::max()); }

  // Shows about as many letters more; true if that is all.
  bool ShowSome(qsizetype letters) {
    if (!rest) return true;
    Rest& from = *rest;
    const std::vector<RtfParagraph>& paragraphs = from.text.paragraphs;
    from.cursor.beginEditBlock();
    while (from.paragraph < paragraphs.size() && letters > 0) {
      if (paragraphs[from.paragraph].row >= 0) {
        from.paragraph = ShowRow(from.cursor, from.text, from.paragraph);
        from.isInBlock = true;
        continue;
      }
      letters = ShowPiece(from, letters);
    }
    const bool isAll = from.paragraph >= paragraphs.size();
    from.cursor.endEditBlock();
    if (isAll) rest.reset();
    return isAll;
  }

  // Shows a paragraph outside of tables, or the part of it that is left, or as many letters of that
  // as are wanted. Answers how many are wanted still.
  qsizetype ShowPiece(Rest& from, qsizetype letters) {
    const RtfParagraph& paragraph = from.text.paragraphs[from.paragraph];
    if (from.run == 0 && from.offset == 0) {
      if (!from.isInBlock) from.cursor.insertBlock();
      from.isInBlock = false;
      from.cursor.setBlockFormat(FormatOf(paragraph));
      view->BeginParagraph();
    }
    const QColor paper = view->palette().color(QPalette::Base);
    while (from.run < paragraph.runs.size() && letters > 0) {
      const RtfRun& run = paragraph.runs[from.run];
      const QString shown = ShownText(run, paragraph);
      const QString piece = shown.mid(from.offset, letters);
      view->Insert(from.cursor, piece, FormatOf(run.style, from.text, view->palette(), paper));
      letters -= std::max<qsizetype>(piece.size(), 1);
      from.offset += piece.size();
      if (from.offset < shown.size()) continue;
      from.offset = 0;
      ++from.run;
    }
    if (from.run < paragraph.runs.size()) return 0;
    from.run = 0;
    ++from.paragraph;
    return letters - 1;
  }

  // A block is laid out whole, and only those in view at once: where a paragraph and its lines look
  // the same, each line is a block.
  static QString ShownText(const RtfRun& run, const RtfParagraph& paragraph) {
    const bool linesAreBlocks =
        paragraph.firstIndent == 0 && paragraph.before == 0 && paragraph.after == 0;
    QString shown = ToScreen(run.text);
    if (!linesAreBlocks) shown.replace('\n', QChar::LineSeparator);
    return shown;
  }

  void ShowParagraph(QTextCursor& cursor, const RtfText& text, const RtfParagraph& paragraph,
                     const QColor& background) {
    cursor.setBlockFormat(FormatOf(paragraph));
    view->BeginParagraph();
    for (const RtfRun& run : paragraph.runs)
      view->Insert(cursor, ShownText(run, paragraph),
                   FormatOf(run.style, text, view->palette(), background));
  }

  // Shows a row of a table, whose first paragraph is `first`. Answers the first one after it.
  size_t ShowRow(QTextCursor& cursor, const RtfText& text, size_t first) {
    const RtfParagraph& begin = text.paragraphs[first];
    const RtfRow& row = text.rows[static_cast<size_t>(begin.row)];
    size_t end = first;
    int cells = std::max(static_cast<int>(row.cells.size()), 1);
    for (; end < text.paragraphs.size() && text.paragraphs[end].row == begin.row; ++end)
      cells = std::max(cells, text.paragraphs[end].cell + 1);
    QTextTable* table =
        cursor.insertTable(1, cells, TableFormatOf(row, cells, view->viewport()->width()));
    tables.push_back({table, row, cells});
    for (int column = 0; column < cells; ++column) {
      const QTextTableCellFormat format = CellFormatOf(row, column, LineHeight(text, first));
      QTextTableCell cell = table->cellAt(0, column);
      cell.setFormat(format);
      const bool isColored = format.background().style() != Qt::NoBrush;
      const QColor background =
          isColored ? format.background().color() : view->palette().color(QPalette::Base);
      QTextCursor inside = cell.firstCursorPosition();
      bool isFirst = true;
      for (size_t i = first; i < end; ++i) {
        if (text.paragraphs[i].cell != column) continue;
        if (!isFirst) inside.insertBlock();
        isFirst = false;
        ShowParagraph(inside, text, text.paragraphs[i], background);
      }
    }
    cursor = table->lastCursorPosition();
    cursor.movePosition(QTextCursor::NextBlock);
    return end;
  }

  // Rows that don't fit any more become as wide as the view; others get their own width back.
  void FitTables() {
    for (const ShownRow& shown : tables) {
      const QTextTableFormat fitting =
          TableFormatOf(shown.row, shown.cells, view->viewport()->width());
      if (shown.table->format().width().type() != fitting.width().type())
        shown.table->setFormat(fitting);
    }
  }

  // The height of a line of a row's first letters.
  double LineHeight(const RtfText& text, size_t paragraph) const {
    QFont font = view->font();
    const std::vector<RtfRun>& runs = text.paragraphs[paragraph].runs;
    if (!runs.empty() && runs[0].style.halfPoints != cPlainHalfPoints)
      font.setPointSizeF(runs[0].style.halfPoints / 2.0);
    return QFontMetricsF(font).height();
  }

  static constexpr qsizetype cFirstLetters = 6000;  // more than a large window shows
  static constexpr qsizetype cLaterLetters = 6000;
  static constexpr int cUntilPainted = 20;  // milliseconds

  struct ShownRow {
    QTextTable* table;  // owned by the document
    RtfRow row;
    int cells;
  };

  RichBrowser* const view;
  std::vector<ShownRow> tables;
  std::optional<Rest> rest;
  QTimer later;
  QObject context;  // ends the connections with this window
};

}  // namespace

NativeWindow* MakeRichView(const CreateInfo& info) {
  return new RichWindow(info, new RichBrowser(ParentWidget(info)));
}

}  // namespace mavro
