#pragma once

#include <QAbstractTableModel>
#include <functional>
#include <string>

#include "NativeLists.h"

namespace mavro {

// The rows of a ListSource for a view. Rows are published in bursts: a view is notified of them
// when they are to be shown.
class ListModel final : public QAbstractTableModel {
 public:
  using QAbstractTableModel::QAbstractTableModel;

  // The source is not owned; set null before it is destroyed.
  void SetSource(const ListSource* itsSource);
  void PublishColumn();
  void PublishRows();
  void PublishCleared();
  void RowChanged(int row);
  void ColumnChanged(int column) { emit headerDataChanged(Qt::Horizontal, column, column); }
  // Called before and after the removal of rows, or of the last column, from the source.
  void BeginRemoveRows(int first, int count);
  void EndRemoveRows();
  void BeginRemoveColumn();
  void EndRemoveColumn();
  // Called when the source's rows have another order.
  void AllChanged();
  void SetStrip(int stripId);
  // Gets the text that the user has typed into a cell; the model stores nothing.
  std::function<void(int row, int column, const std::string& text)> edited;
  // The role of a cell's mark, a bool.
  static constexpr int cMarkedRole = Qt::UserRole;
  // True if a cell holds all of its text: then a tip says nothing more unless the cell is cut.
  bool HoldsWhole(int row, int column) const;
  // Without it only the first column of a row can be selected.
  void SetFullRowSelect(bool on) { fullRowSelect = on; }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  QString TipOf(int row, int column) const;

  const ListSource* source = nullptr;
  int rows = 0;  // published
  int columns = 0;
  int removing = 0;  // how many published rows are about to go
  int strip = 0;
  bool fullRowSelect = true;
};

}  // namespace mavro
