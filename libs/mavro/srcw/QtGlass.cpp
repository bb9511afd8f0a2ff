#include <QChildEvent>
#include <QCoreApplication>
#include <QPainter>
#include <QPointer>
#include <QWidget>

#include "NativeGlass.h"
#include "QtOverlay.h"
#include "QtText.h"

namespace mavro {

namespace {

constexpr int cTextMargin = 3;

// Paints marks and leaves every mouse event to its parent. The children get no mnemonics either: a
// button among them would close the form that the canvas is on.
class GlassWidget final : public QWidget {
 public:
  GlassWidget(QWidget* parent, const GlassLayer& itsLayer) : QWidget(parent), layer(itsLayer) {
    setFocusPolicy(Qt::NoFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_NoSystemBackground);
    parent->setMouseTracking(true);
    QCoreApplication::instance()->installEventFilter(this);
    show();
    raise();
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Shortcut) {
      const auto* widget = qobject_cast<QWidget*>(watched);
      return widget && parentWidget()->isAncestorOf(widget);
    }
    if (event->type() != QEvent::ChildAdded || watched != parent()) return false;
    if (static_cast<QChildEvent*>(event)->child() != this) raise();
    return false;
  }

  void SetMarks(const std::vector<LayoutForm::Mark>& newMarks) {
    UpdateMarks();
    marks = newMarks;
    UpdateMarks();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    PaintOutlines(painter);
    for (const LayoutForm::Mark& mark : marks) {
      painter.fillRect(Area(mark), palette().color(QPalette::Highlight));
      if (mark.text.empty()) continue;
      painter.setPen(palette().color(QPalette::HighlightedText));
      painter.drawText(Area(mark), Qt::AlignCenter, ToScreen(mark.text));
    }
  }

 private:
  void PaintOutlines(QPainter& painter) const {
    if (!layer.outlines) return;
    QPen pen(palette().color(QPalette::Disabled, QPalette::WindowText), 1);
    pen.setDashPattern({2, 2});
    painter.setPen(pen);
    for (const Rect& at : layer.outlines())
      painter.drawRect(at.left, at.top, at.width - 1, at.height - 1);
  }
  // A label is as large as its text.
  QRect Area(const LayoutForm::Mark& mark) const {
    const Rect& at = mark.at;
    QRect area(at.left, at.top, at.width, at.height);
    if (mark.text.empty()) return area;
    const QFontMetrics metrics = fontMetrics();
    area.setWidth(
        std::max(at.width, metrics.horizontalAdvance(ToScreen(mark.text)) + 2 * cTextMargin));
    area.setHeight(std::max(at.height, metrics.height()));
    return area;
  }
  void UpdateMarks() {
    for (const LayoutForm::Mark& mark : marks) update(Area(mark));
  }

  const GlassLayer& layer;
  std::vector<LayoutForm::Mark> marks;
};

class QtGlass final : public GlassLayer {
 public:
  explicit QtGlass(NativeWindow& window) : glass(new GlassWidget(window.ClientWidget(), *this)) {
    QtGlass::Fit();
  }
  ~QtGlass() override { delete glass; }

  void Fit() override {
    if (glass) glass->setGeometry(glass->parentWidget()->rect());
  }
  void ShowMarks(const std::vector<LayoutForm::Mark>& marks) override {
    if (glass) glass->SetMarks(marks);
  }

 private:
  QPointer<GlassWidget> glass;
};

// Covers its parent with eight grips: at the corners and in the middle of the edges.
class GripWidget final : public QWidget {
 public:
  GripWidget(QWidget* parent, Selector::Look itsLook) : QWidget(parent), look(itsLook) {
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    parent->installEventFilter(this);
    setGeometry(parent->rect());
    show();
    raise();
  }

  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Resize) setGeometry(parentWidget()->rect());
    if (event->type() == QEvent::ChildAdded && static_cast<QChildEvent*>(event)->child() != this)
      raise();
    return false;
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    constexpr int cSize = Selector::cGripSize;
    const int columns[] = {0, (width() - cSize) / 2, width() - cSize};
    const int rows[] = {0, (height() - cSize) / 2, height() - cSize};
    QPainter painter(this);
    for (int row = 0; row < 3; ++row)
      for (int column = 0; column < 3; ++column)
        if (row != 1 || column != 1)
          painter.fillRect(columns[column], rows[row], cSize, cSize, GripColor());
  }

 private:
  QColor GripColor() const {
    if (look == Selector::Look::cPrimary) return QColor(0xFA, 0, 0);
    const bool isDark = palette().color(QPalette::Window).lightness() < 128;
    return isDark ? Qt::white : Qt::black;
  }

  const Selector::Look look;
};

class QtGrips final : public GripLayer {
 public:
  QtGrips(NativeWindow& window, Selector::Look look) : grips(new GripWidget(window.widget, look)) {}
  ~QtGrips() override { delete grips; }

  void Show(bool on) override {
    if (grips) grips->setVisible(on);
  }

 private:
  QPointer<GripWidget> grips;
};

}  // namespace

std::unique_ptr<GlassLayer> MakeGlassLayer(NativeWindow& window) {
  return std::make_unique<QtGlass>(window);
}

double PixelRatioOf(const NativeWindow& window) {
  return window.widget->devicePixelRatioF();
}

bool PaintPixels(NativeWindow& window, const Bitmap& pixels) {
  QWidget* widget = window.ClientWidget();
  if (!widget->testAttribute(Qt::WA_WState_InPaintEvent)) return false;
  QPainter painter(widget);
  painter.drawImage(widget->contentsRect().topLeft(), ImageOf(pixels));
  return true;
}

std::unique_ptr<GripLayer> MakeGripLayer(NativeWindow& window, Selector::Look look) {
  return std::make_unique<QtGrips>(window, look);
}

}  // namespace mavro
