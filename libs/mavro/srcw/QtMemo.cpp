#include "QtMemo.h"

#include <QApplication>
#include <QFontDatabase>
#include <QMimeData>
#include <QPainter>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextBlock>
#include <algorithm>

#include "NativeEdits.h"
#include "QtFactories.h"
#include "QtMemoText.h"
#include "QtPacer.h"
#include "QtPalette.h"
#include "QtText.h"
#include "Virtual.h"

namespace mavro {

namespace {

constexpr int cTabColumns = 8;

// `share` of `over`, the rest of `under`: readable ground on light and dark palettes alike.
QColor Mixed(QColor under, QColor over, double share) {
  const auto mix = [share](int a, int b) { return static_cast<int>(a + (b - a) * share); };
  return QColor(mix(under.red(), over.red()), mix(under.green(), over.green()),
                mix(under.blue(), over.blue()));
}

// The editing widget: text goes in and out through MemoText. The view follows the end of appended
// text as long as it shows that end.
class MemoEdit final : public QPlainTextEdit {
 public:
  explicit MemoEdit(QWidget* parent) : QPlainTextEdit(parent), lines(*document()) {
    setLineWrapMode(NoWrap);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this](int value) {
      if (value < verticalScrollBar()->maximum()) following = false;
    });
  }

  void Assign(std::string_view bytes) {
    const bool undo = isUndoRedoEnabled();
    setUndoRedoEnabled(false);
    lines.Assign(bytes);
    moveCursor(QTextCursor::Start);
    verticalScrollBar()->setValue(0);
    horizontalScrollBar()->setValue(0);
    following = false;
    setUndoRedoEnabled(undo);
    ShowMark();
  }

  void Append(std::string_view bytes, int maxLines) {
    QScrollBar* bar = verticalScrollBar();
    following = following || bar->value() >= bar->maximum();
    const bool follow = following;
    const int top = bar->value();
    const int caret = textCursor().position();
    const int anchor = textCursor().anchor();
    lines.Append(bytes);
    RestoreCaret(caret, anchor);
    const int removed = maxLines > 0 ? lines.KeepLast(maxLines) : 0;
    if (follow)
      bar->setValue(bar->maximum());
    else if (removed > 0)
      bar->setValue(top - removed);
    following = follow;
  }

  void GoToLine(int line) {
    setTextCursor(QTextCursor(lines.BlockOfLine(line)));
    centerCursor();
    following = false;
    centerWhenShown = !isVisible();
  }

  void MarkLine(int line) {
    markedLine = line;
    ShowMark();
  }

  MemoText lines;

 protected:
  QMimeData* createMimeDataFromSelection() const override {
    auto* data = new QMimeData;
    data->setText(lines.Selected(textCursor()));
    return data;
  }

  void insertFromMimeData(const QMimeData* source) override {
    if (!isReadOnly() && source->hasText()) Type(source->text());
  }

  void keyPressEvent(QKeyEvent* event) override {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && !isReadOnly())
      Type("\n");
    else
      QPlainTextEdit::keyPressEvent(event);
  }

  void changeEvent(QEvent* event) override {
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) ShowMark();
    if (event->type() == QEvent::FontChange)
      setTabStopDistance(cTabColumns * fontMetrics().horizontalAdvance(' '));
  }

  void resizeEvent(QResizeEvent* event) override {
    const bool follow = following;
    QPlainTextEdit::resizeEvent(event);
    if (follow) verticalScrollBar()->setValue(verticalScrollBar()->maximum());
    following = follow;
  }

  void showEvent(QShowEvent* event) override {
    QPlainTextEdit::showEvent(event);
    if (centerWhenShown) centerCursor();
    centerWhenShown = false;
  }

  // Paints a bar in the margin beside the later parts of a line.
  void paintEvent(QPaintEvent* event) override {
    QPlainTextEdit::paintEvent(event);
    QPainter painter(viewport());
    for (QTextBlock block = firstVisibleBlock(); block.isValid(); block = block.next()) {
      const QRectF place = blockBoundingGeometry(block).translated(contentOffset());
      if (place.top() > event->rect().bottom()) break;
      if (lines.IsLaterPart(block))
        painter.fillRect(QRectF(0, place.top(), 2, place.height()),
                         palette().color(QPalette::Highlight));
    }
  }

 private:
  void Type(const QString& typed) {
    lines.Insert(textCursor(), typed);
    ensureCursorVisible();
  }

  void RestoreCaret(int caret, int anchor) {
    QTextCursor cursor = textCursor();
    if (cursor.position() == caret && cursor.anchor() == anchor) return;
    const int across = horizontalScrollBar()->value();
    const int top = verticalScrollBar()->value();
    cursor.setPosition(anchor);
    cursor.setPosition(caret, QTextCursor::KeepAnchor);
    setTextCursor(cursor);
    verticalScrollBar()->setValue(top);
    horizontalScrollBar()->setValue(across);
  }

  void ShowMark() {
    QList<QTextEdit::ExtraSelection> marks;
    if (markedLine > 0 && markedLine <= lines.LineCount()) {
      QTextEdit::ExtraSelection mark;
      mark.cursor = QTextCursor(lines.BlockOfLine(markedLine));
      mark.format.setBackground(
          Mixed(palette().color(QPalette::Base), palette().color(QPalette::Highlight), 0.3));
      mark.format.setProperty(QTextFormat::FullWidthSelection, true);
      marks.append(mark);
    }
    setExtraSelections(marks);
  }

  int markedLine = 0;
  bool following = false;  // the end was in view when text was last appended
  bool centerWhenShown = false;
};

class MemoWindow final : public NativeMemo {
 public:
  MemoWindow(const CreateInfo& info, MemoEdit* itsEdit)
      : NativeMemo(info, itsEdit), edit(itsEdit), pacer([this] { Flush(); }) {
    QObject::connect(edit, &QPlainTextEdit::textChanged, &pacer, [this] { Report(EN_CHANGE); });
    QObject::connect(edit, &QPlainTextEdit::cursorPositionChanged, &pacer,
                     [this] { Report(EN_CARETMOVED); });
  }

  std::string Text() const override { return edit->lines.Bytes() + pending; }

  void SetText(const std::string& newText) override {
    pending.clear();
    const Quiet quiet(*this);
    edit->Assign(newText);
  }

  void SetFont(const Font& font) override {
    QFont base =
        monospaced ? QFontDatabase::systemFont(QFontDatabase::FixedFont) : QApplication::font(edit);
    if (monospaced) base.setStyleHint(QFont::Monospace);  // for a face that isn't installed
    itsFont = font;
    edit->setFont(ToScreenFont(font, base));
  }

  void SetMonospaced() override {
    monospaced = true;
    SetFont(itsFont);
  }

  bool WantsKey(int virtualKey) const override {
    return !edit->isReadOnly() && (virtualKey == VK_RETURN || virtualKey == VK_TAB);
  }
  bool LetsTabOut() const override { return !edit->isReadOnly(); }

  void SetReadOnly(bool on) override {
    edit->setReadOnly(on);
    if (on) edit->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    edit->setUndoRedoEnabled(!on);
    edit->setTabChangesFocus(on);
  }

  void SetDataType(int) override {}
  void SelectAll() override { edit->selectAll(); }

  // Much text isn't kept for later: showing it would take longer than a click may wait.
  void Append(std::string_view bytes) override {
    constexpr size_t cMostWaiting = 128 << 10;
    pending += bytes;
    if (pending.size() < cMostWaiting)
      pacer.Request();
    else
      pacer.RunNow();
  }

  void Update() override {
    pacer.RunNow();
    edit->viewport()->repaint();
  }

  void GoToLine(int line) override {
    pacer.RunNow();
    edit->GoToLine(line);
  }

  int CaretLine() const override { return edit->lines.LineOf(edit->textCursor().block()); }
  int CaretColumn() const override { return edit->lines.ColumnOf(edit->textCursor()); }

  int LineCount() const override {
    const auto waiting = std::count(pending.begin(), pending.end(), '\n');
    return edit->lines.LineCount() + static_cast<int>(waiting);
  }

  void MarkLine(int line) override {
    pacer.RunNow();
    edit->MarkLine(line);
  }

  void SetMaxLines(int count) override { maxLines = count; }

 private:
  // While an object exists, the program makes the changes, and no notifications are sent.
  class Quiet {
   public:
    explicit Quiet(MemoWindow& its) : window(its) { ++window.quiet; }
    ~Quiet() { --window.quiet; }

   private:
    MemoWindow& window;
  };

  void Report(int code) {
    if (quiet == 0) NotifyCommand(this, code);
  }

  // Shows the appended text, except a character or line end at its end that may be cut.
  void Flush() {
    const size_t length = ShowableLength(pending);
    if (length == 0) return;
    const Quiet quiet(*this);
    edit->Append(std::string_view(pending).substr(0, length), maxLines);
    pending.erase(0, length);
  }

  MemoEdit* const edit;
  Pacer pacer;
  std::string pending;  // appended and not yet shown
  Font itsFont;
  int maxLines = 0;
  int quiet = 0;
  bool monospaced = false;
};

}  // namespace

NativeWindow* MakeMemo(const CreateInfo& info) {
  return new MemoWindow(info, new MemoEdit(ParentWidget(info)));
}

}  // namespace mavro
