#include <QAbstractItemView>
#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <QPlainTextEdit>
#include <QTextDocument>

#include "Assert.h"
#include "NativeEmptyText.h"
#include "QtText.h"

namespace mavro {

namespace {

constexpr int cMargin = 12;
constexpr float cInk = 0.7F;  // share of the text's colour: fainter than text, and still readable

// The words, in a layer above the shown part of a view. The layer takes no input. It belongs to the
// view and not to its viewport, whose children move when it is scrolled.
class Words final : public QWidget {
 public:
  Words(QAbstractScrollArea& itsView, const QString& itsWords)
      : QWidget(&itsView),
        view(itsView),
        rows(qobject_cast<QAbstractItemView*>(&itsView)),
        memo(qobject_cast<QPlainTextEdit*>(&itsView)),
        words(itsWords) {
    MAVRO_ASSERT(rows || memo);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    view.viewport()->installEventFilter(this);
    view.setAccessibleDescription(words);
    Follow();
    Update();
  }

  // A viewport that is destroyed tells so too, when the view is no view any more.
  bool eventFilter(QObject* watched, QEvent* event) override {
    const bool isPlaced = event->type() == QEvent::Resize || event->type() == QEvent::Move;
    if (isPlaced && watched == view.viewport()) Update();
    return QWidget::eventFilter(watched, event);
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setFont(QApplication::font());
    QColor ink = view.palette().color(QPalette::Active, QPalette::Text);
    ink.setAlphaF(cInk);
    painter.setPen(ink);
    painter.drawText(rect().adjusted(cMargin, 0, -cMargin, 0), Qt::AlignCenter | Qt::TextWordWrap,
                     words);
  }

 private:
  void Follow() {
    const auto update = [this] { Update(); };
    if (memo) connect(memo->document(), &QTextDocument::contentsChanged, this, update);
    if (!rows) return;
    const QAbstractItemModel* model = rows->model();
    connect(model, &QAbstractItemModel::rowsInserted, this, update);
    connect(model, &QAbstractItemModel::rowsRemoved, this, update);
    connect(model, &QAbstractItemModel::modelReset, this, update);
    connect(model, &QAbstractItemModel::dataChanged, this, update);
  }

  // The number of rows, none of which has a text; -1 if one has. A row without a text is there for
  // typing.
  int BlankRows() const {
    if (memo) return memo->document()->isEmpty() ? 0 : -1;
    const QAbstractItemModel& model = *rows->model();
    const int count = model.rowCount();
    if (count > 1) return -1;
    for (int column = 0; count == 1 && column < model.columnCount(); ++column)
      if (!model.index(0, column).data().toString().isEmpty()) return -1;
    return count;
  }

  // The words are below a row for typing, so that they don't cover what is typed.
  void Update() {
    const int blank = BlankRows();
    if (blank < 0) return hide();
    QRect place = view.viewport()->geometry();
    if (blank == 1)
      place.setTop(place.top() + rows->visualRect(rows->model()->index(0, 0)).bottom() + 1);
    setGeometry(place);
    show();
    raise();
  }

  QAbstractScrollArea& view;
  QAbstractItemView* const rows;  // the view, if it has rows
  QPlainTextEdit* const memo;     // the view, if it is a memo
  const QString words;
};

}  // namespace

void ShowEmptyText(NativeWindow& window, const std::string& words) {
  auto* view = qobject_cast<QAbstractScrollArea*>(window.FocusWidget());
  MAVRO_ASSERT(view);
  new Words(*view, ToScreen(words));  // owned by the view
}

}  // namespace mavro
