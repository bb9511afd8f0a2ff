#include "QtSciList.h"

#include <QApplication>
#include <QChildEvent>
#include <QLabel>
#include <QListWidget>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <QtMath>
#include <algorithm>

namespace mavro {

namespace {

constexpr int cGap = 16;          // between the columns
constexpr int cWidestNote = 260;  // pixels
constexpr int cWidestDetail = 600;
constexpr int cMostMeasured = 300;  // notes
constexpr int cMargin = 6;

}  // namespace

// Draws the note at the right end of its row, in a weaker ink, and tells the component how much
// place the rows need before it sizes the list.
class SciList::Rows final : public QStyledItemDelegate {
 public:
  Rows(SciList& itsList, QObject* parent) : QStyledItemDelegate(parent), list(itsList) {}

  // All rows have one size, so that the toolkit lays out the text of only one of them.
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    if (size.isEmpty()) size = Measure(option, index);
    return size;
  }

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override {
    QStyledItemDelegate::paint(painter, option, index);
    const QString note = NoteOf(index);
    if (note.isEmpty()) return;
    const int used = QStyledItemDelegate::sizeHint(option, index).width() + cGap;
    const QRect place = option.rect.adjusted(used, 0, -cMargin, 0);
    const bool isSelected = option.state & QStyle::State_Selected;
    QColor ink = option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text);
    ink.setAlphaF(0.65f);
    painter->save();
    painter->setFont(option.font);
    painter->setPen(ink);
    painter->drawText(place, Qt::AlignRight | Qt::AlignVCenter,
                      option.fontMetrics.elidedText(note, Qt::ElideRight, place.width()));
    painter->restore();
  }

  QString NoteOf(const QModelIndex& index) const {
    if (!list.noteOf) return {};
    const std::string name = index.data(Qt::DisplayRole).toString().toStdString();
    return QString::fromStdString(list.noteOf(name).type);
  }

 private:
  // The widest name and the widest note fit into one row. A long list has its notes measured by its
  // first rows.
  QSize Measure(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    QSize result = QStyledItemDelegate::sizeHint(option, index);
    list.widths.Use(option.font);
    const QAbstractItemModel& model = *index.model();
    int name = 0, note = 0;
    for (int row = 0; row < model.rowCount(); ++row) {
      const QModelIndex at = model.index(row, 0);
      name = std::max(name, list.widths.Of(at.data(Qt::DisplayRole).toString()));
      if (row < cMostMeasured && list.noteOf) note = std::max(note, list.widths.Of(NoteOf(at)));
    }
    const int first = list.widths.Of(index.data(Qt::DisplayRole).toString());
    result.rwidth() += name - first;
    if (note > 0) result.rwidth() += cGap + std::min(note, cWidestNote) + cMargin;
    return result;
  }

  SciList& list;
  mutable QSize size;
};

// A hidden native window costs nothing, while making one for each list takes longer than filling
// and painting the list. So the lists of an editor are shown one after the other in this one.
class SciList::Frame final : public QWidget {
 public:
  explicit Frame(QWidget& itsEditor) : QWidget(&itsEditor, Qt::ToolTip | Qt::FramelessWindowHint) {
    setAttribute(Qt::WA_ShowWithoutActivating);
  }

  // The component has given the list its place on the screen.
  void Open(QWidget& list) {
    QRect place = list.geometry();
    const QScreen* on = QGuiApplication::screenAt(place.topLeft());
    const QRect all = (on ? on : screen())->availableGeometry();
    if (place.right() > all.right()) place.moveRight(all.right());
    if (place.left() < all.left()) place.moveLeft(all.left());
    setGeometry(place);
    list.move(0, 0);
    show();
  }
};

// The layout of a text is far slower than the sum of its letters.
void SciList::Widths::Use(const QFont& newFont) {
  if (isKnown && newFont == font) return;
  font = newFont;
  isKnown = true;
  const QFontMetricsF metrics(font);
  for (size_t letter = 0; letter < of.size(); ++letter)
    of[letter] = metrics.horizontalAdvance(QChar(static_cast<char16_t>(letter)));
}

int SciList::Widths::Of(const QString& text) const {
  qreal width = 0;
  for (const QChar letter : text) {
    if (letter.unicode() >= of.size()) return QFontMetrics(font).horizontalAdvance(text);
    width += of[letter.unicode()];
  }
  return qCeil(width);
}

SciList::SciList(QWidget& theEditor, std::function<void()> theTake)
    : editor(theEditor), take(std::move(theTake)) {
  editor.installEventFilter(this);
}

// The open list belongs to the component, which asks it for its rows once more. Its new parent
// polishes it again, and that is no new list.
SciList::~SciList() {
  editor.removeEventFilter(this);
  if (list) list->setParent(&editor);
  delete frame;
  delete beside;
}

// The component polishes a new list when it asks for the size of the filled rows, before it decides
// about size and place.
void SciList::Dress(QListWidget& opened) {
  HideWindows();
  if (list) list->hide();  // the component destroys it later
  list = &opened;
  window = static_cast<QObject*>(list);
  hasPainted = false;
  if (!frame) frame = new Frame(editor);
  list->setParent(frame, Qt::Widget);
  list->setUniformItemSizes(true);
  list->setItemDelegate(new Rows(*this, list));
  list->installEventFilter(this);
  QObject::connect(list, &QListWidget::currentRowChanged, this, [this] {
    if (hasPainted) ShowLongNote();
  });
  QObject::connect(list, &QObject::destroyed, this, [this](const QObject* gone) {
    if (gone != window) return;
    list.clear();  // it is no list any more
    HideWindows();
  });
  list->viewport()->installEventFilter(this);
}

void SciList::HideWindows() {
  if (frame) frame->hide();
  if (beside) beside->hide();
}

void SciList::ShowLongNote() {
  if (beside) beside->hide();
  const QListWidgetItem* item = list ? list->currentItem() : nullptr;
  if (!item || !noteOf || !list->isVisible()) return;
  const std::string detail = noteOf(item->text().toStdString()).detail;
  if (detail.empty()) return;
  if (!beside) {
    beside = new QLabel(&editor, Qt::ToolTip | Qt::FramelessWindowHint);
    beside->setAttribute(Qt::WA_ShowWithoutActivating);
    beside->setTextFormat(Qt::PlainText);
    beside->setMargin(cMargin);
    beside->setFrameShape(QFrame::Box);
    beside->setWordWrap(true);
  }
  beside->setPalette(QToolTip::palette());
  const QFontMetrics metrics(beside->font());
  const QString text = QString::fromStdString(detail);
  beside->setText(text);
  const int width = std::min(metrics.horizontalAdvance(text) + 3 * cMargin, cWidestDetail);
  beside->resize(width, beside->heightForWidth(width));
  const QRect screen = list->screen()->availableGeometry();
  const QRect shown = frame->geometry();
  QPoint place(shown.right() + 2, list->mapToGlobal(list->visualItemRect(item).topLeft()).y());
  if (place.x() + width > screen.right()) place.setX(shown.left() - width - 2);
  if (place.x() < screen.left()) place = QPoint(shown.left(), shown.bottom() + 2);
  beside->move(place);
  beside->show();
}

// False if the mouse was pressed elsewhere.
bool SciList::TakeAt(const QPoint& place) {
  QListWidgetItem* item = list->itemAt(place);
  if (!item || item != pressed) return false;
  pressed = nullptr;
  hasClicked = true;
  list->setCurrentItem(item);
  take();
  return true;
}

bool SciList::IsRestOfClick(const QPoint& globalPlace, unsigned long time) const {
  const auto interval = static_cast<unsigned long>(QApplication::doubleClickInterval());
  return hasClicked && time - clickTime < interval &&
         (globalPlace - clickPlace).manhattanLength() <= QApplication::startDragDistance();
}

// The long note has a window of its own, which waits until the list is on the screen.
void SciList::WatchWindow(const QObject* watched, const QEvent& event) {
  if (watched == window && event.type() == QEvent::ShowToParent && list && !frame->isVisible())
    frame->Open(*list);
  if (watched == window && event.type() == QEvent::Hide) HideWindows();
  if (event.type() != QEvent::Paint || hasPainted || !list || watched != list->viewport()) return;
  hasPainted = true;
  QMetaObject::invokeMethod(
      this, [this] { ShowLongNote(); }, Qt::QueuedConnection);
}

bool SciList::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &editor) {
    if (event->type() != QEvent::ChildPolished) return false;
    auto* opened = qobject_cast<QListWidget*>(static_cast<QChildEvent*>(event)->child());
    if (opened) Dress(*opened);
    return false;
  }
  WatchWindow(watched, *event);
  if (event->type() == QEvent::MouseButtonPress) {
    const auto* press = static_cast<QMouseEvent*>(event);
    clickPlace = press->globalPosition().toPoint();
    clickTime = static_cast<unsigned long>(press->timestamp());
    hasClicked = false;
    pressed =
        list && watched == list->viewport() ? list->itemAt(press->position().toPoint()) : nullptr;
  }
  if (event->type() == QEvent::MouseButtonRelease && list && watched == list->viewport())
    if (TakeAt(static_cast<QMouseEvent*>(event)->position().toPoint())) return true;
  return QObject::eventFilter(watched, event);
}

}  // namespace mavro
