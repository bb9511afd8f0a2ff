#pragma once

#include <QAbstractTableModel>

#include "NativeLists.h"

namespace mavro {

// The rows of a ListSource for a view. Rows are published in bursts: a view hears of them when they
// are to be shown.
class ListModel final : public QAbstractTableModel {
 public:
  using QAbstractTableModel::QAbstractTableModel;

  // Not owned; null when it goes.
  void SetSource(const ListSource* itsSource);
  void PublishColumn();
  void PublishRows();
  void PublishCleared();
  void RowChanged(int row);
  // Without it only the first column of a row can be selected.
  void SetFullRowSelect(bool on) { fullRowSelect = on; }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  const ListSource* source = nullptr;
  int rows = 0;  // published
  int columns = 0;
  bool fullRowSelect = true;
};

}  // namespace mavro
