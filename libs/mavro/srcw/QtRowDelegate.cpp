#include "QtRowDelegate.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QLineEdit>
#include <QToolTip>
#include <algorithm>
#include <limits>

#include "QtListModel.h"
#include "QtToolTip.h"

namespace mavro {

namespace {

constexpr int cRowPadding = 4;
constexpr QRgb cMarkOnLight = 0xFFC00018;
constexpr QRgb cMarkOnDark = 0xFFFF8F86;

}  // namespace

// The colour is mixed here, not by painting with a translucent pen: the toolkit passes each
// translucent line to other threads and waits for them, which takes longer than the rest of a row.
QColor GridColor(const QPalette& palette, int percent) {
  const QColor text = palette.color(QPalette::Text);
  const QColor base = palette.color(QPalette::Base);
  const auto mix = [percent](int over, int below) {
    return (over * percent + below * (100 - percent)) / 100;
  };
  return QColor(mix(text.red(), base.red()), mix(text.green(), base.green()),
                mix(text.blue(), base.blue()));
}

QSize RowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
  return QSize(0, std::max(option.fontMetrics.height(), pictureHeight) + cRowPadding);
}

QWidget* RowDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                   const QModelIndex& index) const {
  editor = QStyledItemDelegate::createEditor(parent, option, index);
  if (auto* line = qobject_cast<QLineEdit*>(editor.data()))
    line->setMaxLength(std::numeric_limits<int>::max());
  return editor;
}

void RowDelegate::setEditorData(QWidget* cellEditor, const QModelIndex& index) const {
  const auto* line = qobject_cast<const QLineEdit*>(cellEditor);
  if (!line || !line->isModified()) QStyledItemDelegate::setEditorData(cellEditor, index);
}

void RowDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  option->state &= ~QStyle::State_HasFocus;
  if (index.data(ListModel::cMarkedRole).toBool()) {
    const bool isDark = option->palette.color(QPalette::Base).lightness() < 128;
    option->palette.setColor(QPalette::Text, isDark ? cMarkOnDark : cMarkOnLight);
    option->font.setBold(true);
    option->fontMetrics = QFontMetrics(option->font);
  }
  if (!showSelection && !(option->state & QStyle::State_Active && option->widget->hasFocus()))
    option->state &= ~QStyle::State_Selected;
}

bool RowDelegate::IsCut(QStyleOptionViewItem option, const QModelIndex& index) const {
  initStyleOption(&option, index);
  const QStyle* style = option.widget->style();
  const QRect room = style->subElementRect(QStyle::SE_ItemViewItemText, &option, option.widget);
  const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, option.widget) + 1;
  return option.fontMetrics.horizontalAdvance(option.text) > room.width() - 2 * margin;
}

void RowDelegate::Finish() {
  if (!editor) return;
  emit commitData(editor);
  if (editor) emit closeEditor(editor, NoHint);
}

// A cell that shows all of its text needs no tip.
void ShowCellTip(QAbstractItemView& view, const RowDelegate& delegate, QStyleOptionViewItem option,
                 const QHelpEvent& help) {
  const QModelIndex index = view.indexAt(help.pos());
  option.rect = view.visualRect(index);
  const auto* shown = dynamic_cast<const ListModel*>(view.model());
  const bool isWhole = !index.isValid() || (shown->HoldsWhole(index.row(), index.column()) &&
                                            !delegate.IsCut(option, index));
  const QString tip = isWhole ? QString() : index.data(Qt::ToolTipRole).toString();
  QToolTip::showText(help.globalPos(), PlainToolTip(tip), view.viewport(), option.rect);
}

}  // namespace mavro
