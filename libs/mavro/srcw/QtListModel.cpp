#include "QtListModel.h"

#include <algorithm>
#include <utility>

#include "QtStrips.h"
#include "QtText.h"

namespace mavro {

namespace {

// No screen shows more of a cell, and painting a longer text costs its whole length.
constexpr size_t cShownBytes = 2000;
// The most that a tip shows.
constexpr int cTipColumns = 120;
constexpr int cTipRows = 30;
constexpr size_t cTipBytes = 4 * cTipColumns * cTipRows;

// A cell is shown in one line, whatever its text.
QString OneLine(std::string_view bytes) {
  QString shown = ToScreen(bytes.substr(0, cShownBytes));
  for (QChar& c : shown)
    if (c == '\n' || c == '\r' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator)
      c = ' ';
  return shown;
}

// Cuts a text so that it fits a screen.
QString Bounded(const QString& text) {
  QString shown;
  int rows = 1;
  int columns = 0;
  for (const QChar c : text) {
    if (c == '\n' || columns == cTipColumns) {
      if (rows++ == cTipRows) return shown + QStringLiteral("\n...");
      shown += '\n';
      columns = 0;
    }
    if (c == '\n' || c == '\r') continue;
    shown += c;
    ++columns;
  }
  return shown;
}

}  // namespace

QString ListModel::TipOf(int row, int column) const {
  const std::string_view tip = source->CellTip(row, column);
  return Bounded(ToScreen((tip.empty() ? source->Cell(row, column) : tip).substr(0, cTipBytes)));
}

bool ListModel::HoldsWhole(int row, int column) const {
  return source && row < source->RowCount() && source->CellTip(row, column).empty();
}

void ListModel::SetSource(const ListSource* itsSource) {
  beginResetModel();
  source = itsSource;
  rows = 0;
  columns = 0;
  endResetModel();
}

void ListModel::PublishColumn() {
  beginInsertColumns({}, columns, columns);
  ++columns;
  endInsertColumns();
}

void ListModel::PublishRows() {
  const int count = source ? source->RowCount() : 0;
  if (count <= rows) return;
  beginInsertRows({}, rows, count - 1);
  rows = count;
  endInsertRows();
}

void ListModel::PublishCleared() {
  if (rows == 0) return;
  beginRemoveRows({}, 0, rows - 1);
  rows = 0;
  endRemoveRows();
}

void ListModel::RowChanged(int row) {
  if (row < rows && columns > 0) emit dataChanged(index(row, 0), index(row, columns - 1));
}

// The removal of rows that are not published yet is not reported to views.
void ListModel::BeginRemoveRows(int first, int count) {
  removing = std::clamp(rows - first, 0, count);
  if (removing > 0) beginRemoveRows({}, first, first + removing - 1);
}

void ListModel::EndRemoveRows() {
  if (removing == 0) return;
  rows -= std::exchange(removing, 0);
  endRemoveRows();
}

void ListModel::BeginRemoveColumn() {
  beginRemoveColumns({}, columns - 1, columns - 1);
}

void ListModel::EndRemoveColumn() {
  --columns;
  endRemoveColumns();
}

void ListModel::AllChanged() {
  if (rows > 0 && columns > 0) emit dataChanged(index(0, 0), index(rows - 1, columns - 1));
}

void ListModel::SetStrip(int stripId) {
  if (strip == stripId) return;
  strip = stripId;
  AllChanged();
}

int ListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows;
}

int ListModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : columns;
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
  if (!source || index.row() >= source->RowCount()) return {};
  if (role == Qt::EditRole) return ToScreen(source->Cell(index.row(), index.column()));
  if (role == Qt::DecorationRole && strip != 0 && index.column() == 0 &&
      source->RowImage(index.row()) >= 0)
    return StripIcon(strip, source->RowImage(index.row()));
  if (role == Qt::ToolTipRole) return TipOf(index.row(), index.column());
  if (role == cMarkedRole) return source->IsMarked(index.row(), index.column());
  if (role != Qt::DisplayRole) return {};
  return OneLine(source->Cell(index.row(), index.column()));
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || !source || section >= source->ColumnCount()) return {};
  if (role == Qt::TextAlignmentRole) return static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter);
  if (role != Qt::DisplayRole) return {};
  return OneLine(source->ColumnTitle(section));
}

bool ListModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::EditRole || !edited || !source) return false;
  const std::string typed = FromScreen(value.toString());
  if (typed == source->Cell(index.row(), index.column())) return false;
  edited(index.row(), index.column(), typed);
  return true;
}

Qt::ItemFlags ListModel::flags(const QModelIndex& index) const {
  const bool selectable = fullRowSelect || index.column() == 0;
  return Qt::ItemIsEnabled | Qt::ItemNeverHasChildren |
         (selectable ? Qt::ItemIsSelectable : Qt::NoItemFlags) |
         (source && source->IsEditable(index.column()) ? Qt::ItemIsEditable : Qt::NoItemFlags);
}

}  // namespace mavro
