#include <QKeyEvent>
#include <QListWidget>
#include <functional>

#include "IconView.h"
#include "NativeIcons.h"
#include "QtFactories.h"
#include "QtStrips.h"
#include "QtText.h"
#include "Virtual.h"

namespace mavro {

namespace {

constexpr int cPadding = 12;      // between items
constexpr int cTextLetters = 12;  // the width for a text, in letters

class IconWidget final : public QListWidget {
 public:
  explicit IconWidget(QWidget* parent) : QListWidget(parent) {
    setViewMode(IconMode);
    setMovement(Static);
    setResizeMode(Adjust);
    setUniformItemSizes(true);
    setTextElideMode(Qt::ElideRight);
    Arrange();
  }

  // All items have the same room: a picture and a line of text.
  void Arrange() {
    const QSize picture = iconSize();
    setGridSize(
        QSize(std::max(picture.width(), fontMetrics().averageCharWidth() * cTextLetters) + cPadding,
              std::max(picture.height(), 0) + fontMetrics().height() + cPadding));
    for (int i = 0; i < count(); ++i) item(i)->setSizeHint(gridSize());
  }

  std::function<void()> chosen;

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && !selectedItems().isEmpty())
      chosen();
    else
      QListWidget::keyPressEvent(event);
  }
  void mouseDoubleClickEvent(QMouseEvent* event) override {
    const bool onItem = event->button() == Qt::LeftButton && itemAt(event->position().toPoint());
    QListWidget::mouseDoubleClickEvent(event);
    if (onItem) chosen();
  }
  void changeEvent(QEvent* event) override {
    QListWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) Arrange();
  }
};

class IconWindow final : public NativeIconView {
 public:
  IconWindow(const CreateInfo& info, IconWidget* itsList)
      : NativeIconView(info, itsList), list(itsList) {
    list->chosen = [this] { NotifyCommand(this, IVN_CHOSEN); };
    QObject::connect(list, &QListWidget::itemSelectionChanged, &context, [this] {
      if (!quiet) NotifyCommand(this, IVN_SELCHANGE);
    });
  }
  ~IconWindow() override {
    list->chosen = [] {};
  }

  bool WantsKey(int virtualKey) const override {
    const auto* view = dynamic_cast<const IconView*>(creationData);
    return virtualKey == VK_RETURN && view && view->onChoose.HasHandlers() && SelectedItem() != -1;
  }

  void SetStrip(int stripId) override {
    strip = stripId;
    const QSize picture = StripPictureSize(strip);
    list->setIconSize(picture.isEmpty() ? QSize(0, 0) : picture);
    for (int i = 0; i < list->count(); ++i)
      list->item(i)->setIcon(StripIcon(strip, list->item(i)->data(Qt::UserRole).toInt()));
    list->Arrange();
  }

  void AddItem(const std::string& item, int image) override {
    const QString shown = ToScreen(item);
    auto* added = new QListWidgetItem(StripIcon(strip, image), shown);
    added->setData(Qt::UserRole, image);
    added->setToolTip(shown.toHtmlEscaped());
    // Else all items would be as narrow as the first one's text.
    added->setSizeHint(list->gridSize());
    const Quiet now(*this);
    list->addItem(added);
  }
  void RemoveItem(int index) override {
    const Quiet now(*this);
    delete list->takeItem(index);
  }
  void ClearItems() override {
    const Quiet now(*this);
    list->clear();
  }
  void SelectItem(int index) override {
    const Quiet now(*this);
    list->setCurrentRow(index, QItemSelectionModel::ClearAndSelect);
    if (index == -1) list->clearSelection();
  }
  int SelectedItem() const override {
    const auto selected = list->selectionModel()->selectedIndexes();
    return selected.isEmpty() ? -1 : selected.first().row();
  }

 private:
  // While an object exists, the program makes the changes, and no notifications are sent.
  class Quiet {
   public:
    explicit Quiet(IconWindow& its) : window(its) { window.quiet = true; }
    ~Quiet() { window.quiet = false; }

   private:
    IconWindow& window;
  };

  IconWidget* const list;
  int strip = 0;
  bool quiet = false;
  QObject context;  // ends the connections with this window
};

}  // namespace

NativeWindow* MakeIconView(const CreateInfo& info) {
  return new IconWindow(info, new IconWidget(ParentWidget(info)));
}

}  // namespace mavro
