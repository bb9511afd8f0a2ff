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
constexpr int cTabTwips = 720;         // between tab stops where none are told
constexpr int cPlainHalfPoints = 24;   // what RTF has where no size is told

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

// Black is what RTF calls the colour of plain letters: it follows the palette.
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

class RichWindow final : public NativeRichView {
 public:
  RichWindow(const CreateInfo& info, QTextBrowser* itsView)
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
      view->setPlainText(ToScreen(newText));
  }

  void SelectAll() override { view->selectAll(); }
  std::string SelectedText() const override {
    return FromScreen(view->textCursor().selection().toPlainText());
  }
  std::string PlainText() const override { return FromScreen(view->toPlainText()); }

  // Enter follows the link that the keyboard stands on.
  bool WantsKey(int virtualKey) const override {
    return virtualKey == VK_RETURN && view->textCursor().charFormat().isAnchor() &&
           view->textCursor().hasSelection();
  }

 private:
  void ShowRich(const RtfText& text) {
    view->clear();
    QTextCursor cursor(view->document());
    cursor.beginEditBlock();
    bool first = true;
    for (const RtfParagraph& paragraph : text.paragraphs) {
      if (!first) cursor.insertBlock();
      first = false;
      cursor.setBlockFormat(FormatOf(paragraph));
      for (const RtfRun& run : paragraph.runs) {
        QString shown = ToScreen(run.text);
        shown.replace('\n', QChar::LineSeparator);
        cursor.insertText(shown, FormatOf(run.style, text, view->palette()));
      }
    }
    cursor.endEditBlock();
    view->moveCursor(QTextCursor::Start);
  }

  QTextBrowser* const view;
  QObject context;  // ends the connections with this window
};

}  // namespace

NativeWindow* MakeRichView(const CreateInfo& info) {
  return new RichWindow(info, new QTextBrowser(ParentWidget(info)));
}

}  // namespace mavro
