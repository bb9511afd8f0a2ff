#include <QChildEvent>
#include <QPointer>
#include <QWidget>

#include "NativeGlass.h"

namespace mavro {

namespace {

// A widget that paints nothing and leaves every mouse event to its parent.
class GlassWidget final : public QWidget {
 public:
  explicit GlassWidget(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::NoFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_NoSystemBackground);
    parent->setMouseTracking(true);
    parent->installEventFilter(this);
    show();
    raise();
  }

  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() != QEvent::ChildAdded) return false;
    if (static_cast<QChildEvent*>(event)->child() != this) raise();
    return false;
  }
};

class QtGlass final : public GlassLayer {
 public:
  explicit QtGlass(NativeWindow& window) : glass(new GlassWidget(window.ClientWidget())) {
    QtGlass::Fit();
  }
  ~QtGlass() override { delete glass; }

  void Fit() override {
    if (glass) glass->setGeometry(glass->parentWidget()->rect());
  }

 private:
  QPointer<GlassWidget> glass;
};

}  // namespace

std::unique_ptr<GlassLayer> MakeGlassLayer(NativeWindow& window) {
  return std::make_unique<QtGlass>(window);
}

}  // namespace mavro
