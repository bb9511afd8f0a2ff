#pragma once

#include <QObject>
#include <QPoint>
#include <QPointer>
#include <functional>
#include <string>

#include "ListNote.h"

class QLabel;
class QListWidget;
class QWidget;

namespace mavro {

// Dresses the component's list of names: the note of each row in a second column, the long note of
// the selected one beside the list, and a click takes a row. Kept by the editor's widget.
class SciList final : public QObject {
 public:
  // `theEditor` outlives it. `theTake` takes the selected row.
  SciList(QWidget& theEditor, std::function<void()> theTake);
  ~SciList() override;

  // Called when a list has been opened. Without `theNoteOf` it keeps the component's look.
  void Dress(std::function<ListNote(const std::string&)> theNoteOf);
  // From now on rows have no notes: who gave them is gone.
  void ForgetNotes() { noteOf = nullptr; }
  // True for the second press of a double click whose first one has taken a row: it hits the text
  // below the list. HasClicked is true until the text is pressed again after such a first one.
  bool IsRestOfClick(const QPoint& globalPlace, unsigned long time) const;
  bool HasClicked() const { return hasClicked; }
  void ForgetClick() { hasClicked = false; }

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  class Rows;

  QListWidget* FindOpen() const;
  void FitToNotes();
  void ShowLongNote();
  bool TakeAt(const QPoint& place);

  QWidget& editor;
  const std::function<void()> take;
  std::function<ListNote(const std::string&)> noteOf;
  QPointer<QListWidget> list;
  const void* window = nullptr;  // the same; only compared, also while it is being destroyed
  QPointer<QLabel> beside;
  const void* pressed = nullptr;  // the row; only compared
  QPoint clickPlace;
  unsigned long clickTime = 0;
  bool hasClicked = false;
};

}  // namespace mavro
