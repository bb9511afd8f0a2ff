#pragma once

#include <QPointer>
#include <QStyledItemDelegate>

class QAbstractItemView;
class QHelpEvent;

namespace mavro {

// The colour of the lines between cells: `percent` of the text's colour on the ground.
QColor GridColor(const QPalette& palette, int percent = 15);

// The cells of a ListModel, in rows of one height, that of the font or of the pictures. The
// selection shows without the focus only if that is wanted.
class RowDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  // The editor takes a text of any length.
  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const override;
  // What the user has typed stays when the program changes the row meanwhile.
  void setEditorData(QWidget* cellEditor, const QModelIndex& index) const override;
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

  // True if the column is too narrow for the cell's text.
  bool IsCut(QStyleOptionViewItem option, const QModelIndex& index) const;
  // Takes the text that is being typed and closes the editor.
  void Finish();

  bool showSelection = false;
  int pictureHeight = 0;  // 0: the rows have no pictures

 protected:
  mutable QPointer<QWidget> editor;  // of the cell that was edited last
};

// Shows a cell's tip if the cell doesn't show all of its text. `option` is that of the view.
void ShowCellTip(QAbstractItemView& view, const RowDelegate& delegate, QStyleOptionViewItem option,
                 const QHelpEvent& help);

}  // namespace mavro
