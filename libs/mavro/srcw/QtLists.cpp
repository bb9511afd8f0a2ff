#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QWheelEvent>

#include "NativeLists.h"
#include "QtFactories.h"
#include "QtText.h"
#include "Virtual.h"

namespace mavro {

namespace {

class ListBoxWindow final : public NativeItems {
 public:
  ListBoxWindow(const CreateInfo& info, QListWidget* itsList)
      : NativeItems(info, itsList), list(itsList) {
    list->setUniformItemSizes(true);
    QObject::connect(list, &QListWidget::itemSelectionChanged, &context, [this] {
      if (!quiet) NotifyCommand(this, LBN_SELCHANGE);
    });
  }

  void InsertItem(int index, const std::string& item) override {
    quiet = true;
    list->insertItem(index, ToScreen(item));
    quiet = false;
  }

  void RemoveItem(int index) override {
    quiet = true;
    delete list->takeItem(index);
    quiet = false;
  }

  void ClearItems() override {
    quiet = true;
    list->clear();
    quiet = false;
  }

  void SelectItem(int index) override {
    quiet = true;
    list->setCurrentRow(index, QItemSelectionModel::ClearAndSelect);
    if (index == -1) list->clearSelection();
    quiet = false;
  }

  int SelectedItem() const override {
    const auto selected = list->selectionModel()->selectedIndexes();
    return selected.isEmpty() ? -1 : selected.first().row();
  }

 private:
  QListWidget* const list;
  bool quiet = false;  // the program is changing the list
  QObject context;     // ends the connections with this window
};

// Without the focus the wheel changes nothing: the user may only be scrolling the form. The text
// is selected when it gets the focus, until somebody types: in a new form typing replaces it.
class ComboWidget final : public QComboBox {
 public:
  using QComboBox::QComboBox;

 protected:
  void wheelEvent(QWheelEvent* event) override {
    if (hasFocus())
      QComboBox::wheelEvent(event);
    else
      event->ignore();
  }
  void focusInEvent(QFocusEvent* event) override {
    QComboBox::focusInEvent(event);
    if (event->reason() == Qt::MouseFocusReason) isNew = false;
    if (lineEdit() && isNew) lineEdit()->selectAll();
  }
  void keyPressEvent(QKeyEvent* event) override {
    isNew = false;
    QComboBox::keyPressEvent(event);
  }

 private:
  bool isNew = true;  // nobody has typed or clicked into it
};

class ComboBoxWindow final : public NativeComboBox {
 public:
  ComboBoxWindow(const CreateInfo& info, ComboWidget* itsBox)
      : NativeComboBox(info, itsBox), box(itsBox) {
    box->setInsertPolicy(QComboBox::NoInsert);
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    SetChooseOnly((info.style & CBS_DROPDOWNLIST) == CBS_DROPDOWNLIST);
    QObject::connect(box, &QComboBox::currentIndexChanged, &context, [this] {
      if (!quiet) NotifyCommand(this, LBN_SELCHANGE);
    });
  }

  std::string Text() const override { return FromScreen(box->currentText()); }

  // A box without an editable text shows only the texts of its items.
  void SetText(const std::string& newText) override {
    quiet = true;
    if (box->isEditable())
      box->setEditText(ToScreen(newText));
    else
      box->setCurrentIndex(
          box->findText(ToScreen(newText), Qt::MatchExactly | Qt::MatchCaseSensitive));
    quiet = false;
  }

  // The toolkit would select the first item by itself.
  void InsertItem(int index, const std::string& item) override {
    quiet = true;
    const QString shown = box->currentText();
    const bool first = box->count() == 0;
    box->insertItem(index, ToScreen(item));
    if (first) box->setCurrentIndex(-1);
    if (first && box->isEditable()) box->setEditText(shown);
    quiet = false;
  }

  void RemoveItem(int index) override {
    quiet = true;
    box->removeItem(index);
    quiet = false;
  }

  void ClearItems() override {
    quiet = true;
    box->clear();
    quiet = false;
  }

  void SelectItem(int index) override {
    quiet = true;
    box->setCurrentIndex(index);
    quiet = false;
  }

  int SelectedItem() const override { return box->currentIndex(); }

  void SetChooseOnly(bool on) override {
    quiet = true;
    box->setEditable(!on);
    if (!on) {
      box->setCompleter(nullptr);
      QObject::connect(box->lineEdit(), &QLineEdit::textEdited, &context,
                       [this] { NotifyCommand(this, CBN_EDITCHANGE); });
    }
    quiet = false;
  }

 private:
  ComboWidget* const box;
  bool quiet = false;
  QObject context;
};

}  // namespace

NativeWindow* MakeListBox(const CreateInfo& info) {
  return new ListBoxWindow(info, new QListWidget(ParentWidget(info)));
}

NativeWindow* MakeComboBox(const CreateInfo& info) {
  return new ComboBoxWindow(info, new ComboWidget(ParentWidget(info)));
}

}  // namespace mavro
