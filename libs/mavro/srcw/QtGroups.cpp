#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QKeyEvent>
#include <QRadioButton>
#include <QStyle>
#include <QStyleOptionGroupBox>
#include <algorithm>
#include <vector>

#include "NativeButtons.h"
#include "NativeGroups.h"
#include "QtFactories.h"
#include "QtSeenBox.h"
#include "QtText.h"
#include "Virtual.h"

namespace mavro {

namespace {

constexpr int cMargin = 8;  // between the frame and its contents

// The part of a group box inside its frame and below its title.
class GroupBoxWidget : public QGroupBox {
 public:
  using QGroupBox::QGroupBox;

  QRect Inside() const {
    QStyleOptionGroupBox option;
    initStyleOption(&option);
    return style()->subControlRect(QStyle::CC_GroupBox, &option, QStyle::SC_GroupBoxContents, this);
  }
};

class GroupBoxWindow final : public NativeWindow {
 public:
  GroupBoxWindow(const CreateInfo& info, GroupBoxWidget* itsBox)
      : NativeWindow(info, itsBox), box(itsBox) {}

  void SetText(const std::string& newText) override {
    NativeWindow::SetText(newText);
    box->setTitle(ToScreen(newText));
  }
  Rect DockArea() const override {
    const QRect inside = box->Inside();
    return {inside.left(), inside.top(), inside.width(), inside.height()};
  }

 private:
  GroupBoxWidget* const box;
};

// The buttons of a group, one below the other; if they don't fit, in as many columns as needed.
class ButtonGroupWidget final : public GroupBoxWidget {
 public:
  ButtonGroupWidget(QWidget* parent, bool radio) : GroupBoxWidget(parent), isRadio(radio) {}

  QAbstractButton* Insert(int index, const QString& caption) {
    QAbstractButton* button = isRadio
                                  ? static_cast<QAbstractButton*>(new SeenBox<QRadioButton>(this))
                                  : static_cast<QAbstractButton*>(new SeenBox<QCheckBox>(this));
    button->setAutoExclusive(false);
    button->setText(caption);
    button->installEventFilter(this);
    buttons.insert(buttons.begin() + index, button);
    button->show();
    Arrange();
    return button;
  }

  void Remove(int index) {
    QAbstractButton* button = buttons[static_cast<size_t>(index)];
    buttons.erase(buttons.begin() + index);
    button->removeEventFilter(this);
    button->hide();
    button->deleteLater();
    Arrange();
  }

  // The button that gets the keyboard: the chosen radio button, else the one with the focus, else
  // the first.
  QWidget* Target() {
    const auto first = [this](auto test) {
      const auto found = std::find_if(buttons.begin(), buttons.end(), test);
      return found == buttons.end() ? nullptr : *found;
    };
    if (QWidget* chosen = first([this](const auto* one) { return isRadio && one->isChecked(); }))
      return chosen;
    if (QWidget* focused = first([](const QWidget* one) { return one->hasFocus(); }))
      return focused;
    return buttons.empty() ? nullptr : buttons.front();
  }

  const bool isRadio;
  std::vector<QAbstractButton*> buttons;

 protected:
  void resizeEvent(QResizeEvent* event) override {
    QGroupBox::resizeEvent(event);
    Arrange();
  }
  void changeEvent(QEvent* event) override {
    QGroupBox::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) Arrange();
  }

  // The arrow keys move among the buttons, around the ends, and choose in a radio group.
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::KeyPress) return false;
    const int key = static_cast<QKeyEvent*>(event)->key();
    const bool back = key == Qt::Key_Up || key == Qt::Key_Left;
    if (!back && key != Qt::Key_Down && key != Qt::Key_Right) return false;
    const auto at = std::find(buttons.begin(), buttons.end(), watched);
    const size_t count = buttons.size();
    const size_t index = static_cast<size_t>(at - buttons.begin());
    QAbstractButton* next = buttons[(index + (back ? count - 1 : 1)) % count];
    next->setFocus(back ? Qt::BacktabFocusReason : Qt::TabFocusReason);
    if (isRadio) next->click();
    return true;
  }

 private:
  void Arrange() {
    if (buttons.empty()) return;
    const QRect inside = Inside().adjusted(cMargin, 0, -cMargin / 2, 0);
    const int count = static_cast<int>(buttons.size());
    const int natural = buttons.front()->sizeHint().height();
    const int rows = std::clamp(inside.height() / std::max(natural, 1), 1, count);
    const int columns = (count + rows - 1) / rows;
    const int rowHeight = std::clamp(inside.height() / rows, 1, std::max(natural * 3 / 2, 1));
    const int columnWidth = std::max(inside.width() / columns, 1);
    for (int i = 0; i < count; ++i)
      buttons[static_cast<size_t>(i)]->setGeometry(inside.left() + i / rows * columnWidth,
                                                   inside.top() + i % rows * rowHeight, columnWidth,
                                                   rowHeight);
  }
};

class ButtonGroupWindow final : public NativeButtonGroup {
 public:
  ButtonGroupWindow(const CreateInfo& info, ButtonGroupWidget* itsBox)
      : NativeButtonGroup(info, itsBox), box(itsBox) {}

  void SetText(const std::string& newText) override {
    NativeButtonGroup::SetText(newText);
    box->setTitle(ToScreen(newText));
  }
  QWidget* FocusWidget() const override {
    QWidget* target = box->Target();
    return target ? target : box;
  }
  QWidget* StyledWidget() const override { return box; }
  Rect DockArea() const override {
    const QRect inside = box->Inside();
    return {inside.left(), inside.top(), inside.width(), inside.height()};
  }

  void InsertItem(int index, const std::string& item) override {
    QAbstractButton* button = box->Insert(index, ToScreen(item));
    QObject::connect(button, &QAbstractButton::clicked, &context, [this, button] {
      if (box->isRadio) CheckOnly(button);
      NotifyCommand(this, BN_CLICKED);
    });
  }
  void RemoveItem(int index) override { box->Remove(index); }
  void ClearItems() override {
    while (!box->buttons.empty()) box->Remove(static_cast<int>(box->buttons.size()) - 1);
  }

  // The focus of a radio group follows the chosen button.
  void SelectItems(int selected) override {
    const bool hadFocus = box->isAncestorOf(QApplication::focusWidget());
    for (size_t i = 0; i < box->buttons.size(); ++i)
      box->buttons[i]->setChecked(box->isRadio ? static_cast<int>(i) == selected
                                               : static_cast<unsigned>(selected) >> i & 1U);
    if (hadFocus) FocusWidget()->setFocus();
  }
  int SelectedItems() const override {
    unsigned flags = 0;
    for (size_t i = 0; i < box->buttons.size(); ++i) {
      if (!box->buttons[i]->isChecked()) continue;
      if (box->isRadio) return static_cast<int>(i);
      flags |= 1U << i;
    }
    return box->isRadio ? -1 : static_cast<int>(flags);
  }

 private:
  void CheckOnly(const QAbstractButton* chosen) {
    for (QAbstractButton* button : box->buttons) button->setChecked(button == chosen);
  }

  ButtonGroupWidget* const box;
  QObject context;  // ends the connections with this window
};

}  // namespace

NativeWindow* MakeGroupBox(const CreateInfo& info) {
  return new GroupBoxWindow(info, new GroupBoxWidget(ParentWidget(info)));
}

NativeWindow* MakeButtonGroup(const CreateInfo& info) {
  const bool radio = (info.style & BS_TYPEMASK) == BS_AUTORADIOBUTTON;
  return new ButtonGroupWindow(info, new ButtonGroupWidget(ParentWidget(info), radio));
}

}  // namespace mavro
