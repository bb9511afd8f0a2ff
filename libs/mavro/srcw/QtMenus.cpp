#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>

#include "NativeControls.h"
#include "QtForm.h"
#include "QtText.h"

namespace mavro {

namespace {

constexpr char cMarked[] = "marked";

// A popup. Its commands go to the window it was shown for, or to the form whose bar it is in.
class QtMenu final : public NativeMenu {
 public:
  void AddItem(int id, const std::string& text) override {
    QAction* item = menu.addAction(ToScreen(text));
    item->setData(id);
    QObject::connect(item, &QAction::triggered, &menu, [this, id] {
      if (IsWindow(receiver)) SendMessage(receiver, WM_COMMAND, id, 0);
    });
  }

  void AddSeparator() override { menu.addSeparator(); }

  void AddSubmenu(NativeMenu& submenu, const std::string& title) override {
    auto& child = static_cast<QtMenu&>(submenu);
    child.menu.setTitle(ToScreen(title));
    menu.addMenu(&child.menu);
    children.push_back(&child);
    child.SetReceiver(receiver);
  }

  void EnableItem(int id, bool on) override {
    if (QAction* item = Find(id)) item->setEnabled(on);
  }

  // A row that can have a mark keeps room for it. A click must not toggle the mark: only the
  // program sets it.
  void CheckItem(int id, bool on) override {
    QAction* item = Find(id);
    if (!item) return;
    item->setProperty(cMarked, on);
    if (!item->isCheckable()) {
      item->setCheckable(true);
      QObject::connect(item, &QAction::triggered, &menu, [item] { ShowMark(item); });
    }
    ShowMark(item);
  }

  void SetItemText(int id, const std::string& text) override {
    if (QAction* item = Find(id)) item->setText(ToScreen(text));
  }

  void RemoveAt(int position) override {
    const QList<QAction*> items = menu.actions();
    if (position >= items.size()) return;
    std::erase_if(children, [gone = items[position]->menu()](const QtMenu* child) {
      return &child->menu == gone;
    });
    menu.removeAction(items[position]);
  }

  void SetTitle(const std::string& title) override { menu.setTitle(ToScreen(title)); }

  void Popup(NativeWindow* window, int x, int y) override {
    SetReceiver(window);
    menu.exec(window->ClientWidget()->mapToGlobal(QPoint(x, y)));
  }

  void SetReceiver(NativeWindow* window) override {
    receiver = window;
    for (QtMenu* child : children) child->SetReceiver(window);
  }

  QMenu menu;

 private:
  QAction* Find(int id) const {
    for (QAction* item : menu.actions())
      if (!item->isSeparator() && !item->menu() && item->data().toInt() == id) return item;
    return nullptr;
  }

  static void ShowMark(QAction* item) { item->setChecked(item->property(cMarked).toBool()); }

  NativeWindow* receiver = nullptr;
  std::vector<QtMenu*> children;
};

class QtMenuBar final : public NativeMenuBar {
 public:
  explicit QtMenuBar(NativeWindow* itsForm)
      : form(itsForm), frame(static_cast<FormWidget*>(itsForm->widget)), bar(new QMenuBar(frame)) {
    bar->setNativeMenuBar(false);
    frame->SetMenuBar(bar);
  }

  ~QtMenuBar() override {
    if (frame) frame->SetMenuBar(nullptr);
    if (bar) {
      bar->hide();
      bar->deleteLater();
    }
  }

  void AddMenu(NativeMenu& menu, const std::string& title) override {
    auto& native = static_cast<QtMenu&>(menu);
    native.menu.setTitle(ToScreen(title));
    native.SetReceiver(form);
    bar->addMenu(&native.menu);
    frame->SetMenuBar(bar);
  }

 private:
  NativeWindow* form;
  QPointer<FormWidget> frame;
  QPointer<QMenuBar> bar;
};

}  // namespace

std::unique_ptr<NativeMenu> MakeNativeMenu() {
  return std::make_unique<QtMenu>();
}

std::unique_ptr<NativeMenuBar> MakeNativeMenuBar(NativeWindow* form) {
  return std::make_unique<QtMenuBar>(form);
}

}  // namespace mavro
