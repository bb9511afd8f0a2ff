#include <QKeySequence>
#include <QMouseEvent>
#include <QShortcut>
#include <QSignalBlocker>
#include <QTabBar>
#include <QWidget>
#include <functional>
#include <string>
#include <vector>

#include "MoveElement.h"
#include "NativeTabs.h"
#include "QtFactories.h"
#include "QtStrips.h"
#include "QtText.h"
#include "QtToolTip.h"

namespace mavro {

namespace {

// Wider captions are cut in the middle, since names of files differ at both ends.
constexpr int cMaxTabWidth = 220;

class TabRow final : public QTabBar {
 public:
  explicit TabRow(QWidget* parent) : QTabBar(parent) {
    setExpanding(false);
    setElideMode(Qt::ElideMiddle);
    setUsesScrollButtons(true);
    setSelectionBehaviorOnRemove(SelectRightTab);
  }

  // Ends a drag as if the button were released: while a tab is dragged, no other can be selected.
  void EndDrag() {
    QMouseEvent release(QEvent::MouseButtonRelease, QPointF(-1, -1), QPointF(-1, -1),
                        Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    QTabBar::mouseReleaseEvent(&release);
  }

  std::function<void(int)> middleClicked;
  std::function<void()> dragged;  // tabs have been moved

 protected:
  QSize tabSizeHint(int index) const override {
    const QSize size = QTabBar::tabSizeHint(index);
    return {std::min(size.width(), cMaxTabWidth), size.height()};
  }
  // Tabs that don't fit are scrolled to, not squeezed.
  QSize minimumTabSizeHint(int index) const override { return tabSizeHint(index); }

  void mousePressEvent(QMouseEvent* event) override {
    if (event->button() == Qt::MiddleButton) pressed = tabAt(event->position().toPoint());
    QTabBar::mousePressEvent(event);
  }
  // While the base class moves tabs, none may be added or removed.
  void mouseMoveEvent(QMouseEvent* event) override {
    bool moved = false;
    const auto watch = connect(this, &QTabBar::tabMoved, this, [&moved] { moved = true; });
    QTabBar::mouseMoveEvent(event);
    disconnect(watch);
    if (moved && dragged) dragged();
  }
  void mouseReleaseEvent(QMouseEvent* event) override {
    QTabBar::mouseReleaseEvent(event);
    if (event->button() != Qt::MiddleButton) return;
    const int released = tabAt(event->position().toPoint());
    if (released >= 0 && released == pressed && middleClicked) middleClicked(released);
  }

 private:
  int pressed = -1;
};

// The tabs above the area of the pages.
class TabsWidget final : public QWidget {
 public:
  explicit TabsWidget(QWidget* parent)
      : QWidget(parent), row(new TabRow(this)), area(new QWidget(this)) {}

  void Arrange() {
    const int top = row->count() > 0 ? row->sizeHint().height() : 0;
    row->setVisible(top > 0);
    row->setGeometry(0, 0, width(), top);
    area->setGeometry(0, top, width(), std::max(0, height() - top));
  }

  TabRow* const row;
  QWidget* const area;

 protected:
  void resizeEvent(QResizeEvent*) override { Arrange(); }
};

// A caption as a tab shows it. Tabs that can be closed are named after files, which may hold an
// ampersand.
QString Shown(const std::string& caption, bool closable) {
  const QString shown = ToScreen(caption);
  return closable ? QString(shown).replace('&', "&&") : shown;
}

class TabsWindow final : public NativeTabs {
 public:
  TabsWindow(const CreateInfo& info, TabsWidget* its) : NativeTabs(info, its), tabs(its) {
    tabs->area->installEventFilter(
        tabs->findChild<QObject*>("mavroEvents", Qt::FindDirectChildrenOnly));
    QObject::connect(tabs->row, &QTabBar::currentChanged, &guard,
                     [this](int index) { Report(TCN_SELCHANGE, index); });
    QObject::connect(tabs->row, &QTabBar::tabCloseRequested, &guard,
                     [this](int index) { Report(TCN_CLOSE, index); });
    QObject::connect(tabs->row, &QTabBar::tabMoved, &guard, [this](int from, int to) {
      MoveElement(captions, from, to);
      Report(TCN_MOVED, to, from);
    });
    tabs->row->dragged = [this] { Report(TCN_DRAGGED, tabs->row->currentIndex()); };
    tabs->row->middleClicked = [this](int index) {
      if (tabs->row->tabsClosable()) Report(TCN_CLOSE, index);
    };
    AddKey(QKeySequence(Qt::CTRL | Qt::Key_PageUp), -1);
    AddKey(QKeySequence(Qt::CTRL | Qt::Key_PageDown), 1);
  }
  ~TabsWindow() override {
    tabs->row->middleClicked = nullptr;
    tabs->row->dragged = nullptr;
  }

  QWidget* ClientWidget() const override { return tabs->area; }
  QWidget* FocusWidget() const override { return tabs->row; }

  void InsertTab(int index, const std::string& caption) override {
    const QSignalBlocker quiet(tabs->row);
    tabs->row->insertTab(index, QString());
    captions.emplace(captions.begin() + index);
    SetCaption(index, caption);
    tabs->Arrange();
  }
  void RemoveTab(int index) override {
    const QSignalBlocker quiet(tabs->row);
    tabs->row->removeTab(index);
    captions.erase(captions.begin() + index);
    tabs->Arrange();
  }
  void SetCaption(int index, const std::string& caption) override {
    captions[static_cast<size_t>(index)] = caption;
    tabs->row->setTabText(index, Shown(caption, tabs->row->tabsClosable()));
    tabs->row->setTabToolTip(index, PlainToolTip(ToScreen(caption)));
  }
  void SelectTab(int index) override {
    const QSignalBlocker quiet(tabs->row);
    tabs->row->setCurrentIndex(index);
    if (tabs->row->currentIndex() == index) return;
    tabs->row->EndDrag();
    tabs->row->setCurrentIndex(index);
  }
  void SetClosable(bool on) override {
    tabs->row->setTabsClosable(on);
    for (size_t i = 0; i < captions.size(); ++i)
      tabs->row->setTabText(static_cast<int>(i), Shown(captions[i], on));
    tabs->Arrange();
  }
  void SetMovable(bool on) override { tabs->row->setMovable(on); }
  void SetStrip(int stripId) override {
    strip = stripId;
    const QSize picture = StripPictureSize(strip);
    if (!picture.isEmpty()) tabs->row->setIconSize(picture);
  }
  void SetImage(int index, int image) override {
    tabs->row->setTabIcon(index, StripIcon(strip, image));
    tabs->Arrange();
  }
  void Arrange() override { tabs->Arrange(); }
  int TabAt(int x, int y) const override {
    const QPoint inRow = tabs->row->mapFrom(tabs, QPoint(x, y));
    return tabs->row->rect().contains(inRow) ? tabs->row->tabAt(inRow) : -1;
  }
  void SetFont(const Font& font) override {
    NativeTabs::SetFont(font);
    tabs->Arrange();
  }

 private:
  // Adds a key that selects the next or previous tab from anywhere in the pages, around the ends.
  void AddKey(const QKeySequence& key, int step) {
    auto* shortcut = new QShortcut(key, tabs);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    QObject::connect(shortcut, &QShortcut::activated, &guard, [this, step] {
      const int count = tabs->row->count();
      if (count > 1) tabs->row->setCurrentIndex((tabs->row->currentIndex() + step + count) % count);
    });
  }

  void Report(int code, int index, int oldIndex = -1) {
    TabHeader header;
    header.from = this;
    header.id = id;
    header.code = code;
    header.index = index;
    header.oldIndex = oldIndex;
    SendMessage(this, WM_NOTIFY, id, reinterpret_cast<Param>(static_cast<NotifyHeader*>(&header)));
  }

  TabsWidget* tabs;
  std::vector<std::string> captions;
  int strip = 0;
  QObject guard;  // ends the connections with this window
};

}  // namespace

NativeWindow* MakeTabs(const CreateInfo& info) {
  return new TabsWindow(info, new TabsWidget(ParentWidget(info)));
}

}  // namespace mavro
