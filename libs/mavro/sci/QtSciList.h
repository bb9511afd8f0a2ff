#pragma once

#include <QFont>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <array>
#include <functional>
#include <string>
#include <utility>

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

  // For the list that is opened next. Without `theNoteOf` its rows show only the names.
  void SetNotes(std::function<ListNote(const std::string&)> theNoteOf) {
    noteOf = std::move(theNoteOf);
  }
  // True for the second press of a double click whose first one has taken a row: it hits the text
  // below the list. HasClicked is true until the text is pressed again after such a first one.
  bool IsRestOfClick(const QPoint& globalPlace, unsigned long time) const;
  bool HasClicked() const { return hasClicked; }
  void ForgetClick() { hasClicked = false; }

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  class Rows;
  class Frame;

  // The widths of texts in one font.
  class Widths {
   public:
    void Use(const QFont& newFont);
    int Of(const QString& text) const;

   private:
    QFont font;
    bool isKnown = false;
    std::array<qreal, 128> of = {};
  };

  void Dress(QListWidget& opened);
  void HideWindows();
  void WatchWindow(const QObject* watched, const QEvent& event);
  void ShowLongNote();
  bool TakeAt(const QPoint& place);

  QWidget& editor;
  const std::function<void()> take;
  std::function<ListNote(const std::string&)> noteOf;
  QPointer<Frame> frame;  // the native window of the lists; made for the first one
  QPointer<QListWidget> list;
  const void* window = nullptr;  // the same; only compared, also while it is being destroyed
  bool hasPainted = false;       // the list
  Widths widths;
  QPointer<QLabel> beside;
  const void* pressed = nullptr;  // the row; only compared
  QPoint clickPlace;
  unsigned long clickTime = 0;
  bool hasClicked = false;
};

}  // namespace mavro
