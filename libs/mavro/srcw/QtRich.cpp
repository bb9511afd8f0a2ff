#include <QMimeData>
#include <QTextBlock>
#include <QTextBlockFormat>
#include <QTextBrowser>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <algorithm>

#include "NativeRich.h"
#include "QtFactories.h"
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

// Black is the colour of plain letters in RTF: it follows the palette.
QTextCharFormat FormatOf(const RtfStyle& style, const RtfText& text, const QPalette& palette) {
  QTextCharFormat format;
  if (style.bold) format.setFontWeight(QFont::Bold);
  format.setFontItalic(style.italic);
  format.setFontUnderline(style.underline);
  format.setFontStrikeOut(style.strike);
  if (style.halfPoints != cPlainHalfPoints) format.setFontPointSize(style.halfPoints / 2.0);
  if (style.face >= 0)
    format.setFontFamilies({ToScreen(text.faces[static_cast<size_t>(style.face)])});
  if (style.color > 0) format.setForeground(QColor::fromRgb(static_cast<QRgb>(style.color)));
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
 public:
  RichWindow(const CreateInfo& info, RichBrowser* itsView)
      : NativeRichView(info, itsView), view(itsView) {
    view->setOpenLinks(false);
    view->setTabStopDistance(Pixels(cTabTwips));
    view->setUndoRedoEnabled(false);
    view->setTextInteractionFlags(Qt::TextBrowserInteraction | Qt::TextSelectableByKeyboard);
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

  void SelectAll() override { view->selectAll(); }
  std::string SelectedText() const override {
    return FromScreen(view->Selected(view->textCursor()));
  }
  std::string PlainText() const override { return FromScreen(view->All()); }

  // Enter follows the link that the keyboard has selected.
  bool WantsKey(int virtualKey) const override {
    return virtualKey == VK_RETURN && view->textCursor().charFormat().isAnchor() &&
           view->textCursor().hasSelection();
  }

 private:
  void ShowPlain(const QString& text) {
    view->Begin();
    if (!HasLongWord(text)) return view->setPlainText(text);
    QTextCursor cursor(view->document());
    cursor.beginEditBlock();
    view->Insert(cursor, text, QTextCharFormat());
    cursor.endEditBlock();
    view->moveCursor(QTextCursor::Start);
  }

  void ShowRich(const RtfText& text) {
    view->Begin();
    QTextCursor cursor(view->document());
    cursor.beginEditBlock();
    bool first = true;
    for (const RtfParagraph& paragraph : text.paragraphs) {
      if (!first) cursor.insertBlock();
      first = false;
      cursor.setBlockFormat(FormatOf(paragraph));
      view->BeginParagraph();
      for (const RtfRun& run : paragraph.runs) {
        QString shown = ToScreen(run.text);
        shown.replace('\n', QChar::LineSeparator);
        view->Insert(cursor, shown, FormatOf(run.style, text, view->palette()));
      }
    }
    cursor.endEditBlock();
    view->moveCursor(QTextCursor::Start);
  }

  RichBrowser* const view;
  QObject context;  // ends the connections with this window
};

}  // namespace

NativeWindow* MakeRichView(const CreateInfo& info) {
  return new RichWindow(info, new RichBrowser(ParentWidget(info)));
}

}  // namespace mavro
