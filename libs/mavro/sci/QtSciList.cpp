#include "QtSciList.h"

#include <QApplication>
#include <QLabel>
#include <QListWidget>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <algorithm>

namespace mavro {

namespace {

constexpr int cGap = 16;          // between the columns
constexpr int cWidestNote = 260;  // pixels
constexpr int cWidestDetail = 600;
constexpr int cMostMeasured = 300;  // rows
constexpr int cMargin = 6;

}  // namespace

// Draws the note at the right end of its row, in a weaker ink.
class SciList::Rows final : public QStyledItemDelegate {
 public:
  Rows(SciList& itsList, QObject* parent) : QStyledItemDelegate(parent), list(itsList) {}

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
  SciList& list;
};

SciList::SciList(QWidget& theEditor, std::function<void()> theTake)
    : editor(theEditor), take(std::move(theTake)) {}

SciList::~SciList() {
  delete beside;
}

QListWidget* SciList::FindOpen() const {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    auto* found = qobject_cast<QListWidget*>(window);
    if (!found || !found->isVisible()) continue;
    for (QObject* parent = found->parent(); parent; parent = parent->parent())
      if (parent == &editor) return found;
  }
  return nullptr;
}

void SciList::Dress(std::function<ListNote(const std::string&)> theNoteOf) {
  noteOf = std::move(theNoteOf);
  QListWidget* open = FindOpen();
  if (!open) return;
  if (open != list) {
    list = open;
    window = static_cast<QObject*>(open);
    list->setItemDelegate(new Rows(*this, list));
    list->installEventFilter(this);
    QObject::connect(list, &QListWidget::currentRowChanged, this, [this] { ShowLongNote(); });
    list->viewport()->installEventFilter(this);
  }
  FitToNotes();
  ShowLongNote();
}

// A long list is measured by its first rows.
void SciList::FitToNotes() {
  if (!noteOf) return;
  auto* rows = static_cast<Rows*>(list->itemDelegate());
  const QFontMetrics metrics(list->font());
  int widest = 0;
  const int measured = std::min(list->count(), cMostMeasured);
  for (int row = 0; row < measured; ++row) {
    const QString note = rows->NoteOf(list->model()->index(row, 0));
    widest = std::max(widest, metrics.horizontalAdvance(note));
  }
  if (widest == 0) return;
  QRect place = list->geometry();
  place.setWidth(place.width() + cGap + std::min(widest, cWidestNote) + cMargin);
  const QRect screen = list->screen()->availableGeometry();
  if (place.right() > screen.right()) place.moveRight(screen.right());
  if (place.left() < screen.left()) place.moveLeft(screen.left());
  list->setGeometry(place);
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
  const QRect frame = list->frameGeometry();
  QPoint place(frame.right() + 2, list->mapToGlobal(list->visualItemRect(item).topLeft()).y());
  if (place.x() + width > screen.right()) place.setX(frame.left() - width - 2);
  if (place.x() < screen.left()) place = QPoint(frame.left(), frame.bottom() + 2);
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

bool SciList::eventFilter(QObject* watched, QEvent* event) {
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
  if (event->type() == QEvent::Hide && watched == window && beside) beside->hide();
  return QObject::eventFilter(watched, event);
}

}  // namespace mavro
