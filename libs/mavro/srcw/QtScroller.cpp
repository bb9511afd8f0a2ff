#include <QAbstractScrollArea>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>

#include "NativeScroller.h"
#include "QtFactories.h"

namespace mavro {

namespace {

// Indexed by QAbstractSlider::SliderAction, starting with SliderSingleStepAdd.
constexpr int cCodes[] = {SB_LINEDOWN, SB_LINEUP, SB_PAGEDOWN,  SB_PAGEUP,
                          SB_TOP,      SB_BOTTOM, SB_THUMBTRACK};

class ScrollerWidget final : public QAbstractScrollArea {
 public:
  explicit ScrollerWidget(QWidget* parent) : QAbstractScrollArea(parent) {
    setFrameShape(NoFrame);
    setFocusPolicy(Qt::NoFocus);
    viewport()->setBackgroundRole(QPalette::Window);
    viewport()->setAutoFillBackground(false);
  }

 protected:
  // The toolkit turns a notch into three single steps. The bar's own buttons step by one unit.
  void wheelEvent(QWheelEvent* event) override {
    for (QScrollBar* bar : {horizontalScrollBar(), verticalScrollBar()})
      bar->setSingleStep(fontMetrics().lineSpacing());
    QAbstractScrollArea::wheelEvent(event);
  }
};

class ScrollerWindow final : public NativeScroller {
 public:
  ScrollerWindow(const CreateInfo& info, ScrollerWidget* itsArea)
      : NativeScroller(info, itsArea), area(itsArea) {
    Watch(cHorizontal, WM_HSCROLL);
    Watch(cVertical, WM_VSCROLL);
  }

  QWidget* ClientWidget() const override { return area->viewport(); }
  // Children are in the scrolled area.
  Rect ClientArea() const override {
    const QWidget* view = area->viewport();
    return {-Bar(cHorizontal)->value(), -Bar(cVertical)->value(), view->width(), view->height()};
  }

  void SetScroll(Orientation direction, const ScrollInfo& info) override {
    const int64_t hidden = static_cast<int64_t>(info.max) - std::max(info.page - 1, 0);
    const auto last = static_cast<int>(std::max<int64_t>(hidden, info.min));
    QScrollBar* bar = Bar(direction);
    bar->setRange(info.min, last);
    bar->setPageStep(std::max(info.page, 0));
    bar->setValue(info.position);
    shown[direction] = info;
  }
  void SetScrollPosition(Orientation direction, int position) override {
    Bar(direction)->setValue(position);
  }
  ScrollInfo ReadScroll(Orientation direction) const override {
    ScrollInfo info = shown[direction];
    info.position = Bar(direction)->value();
    info.track = Bar(direction)->sliderPosition();
    return info;
  }

 private:
  QScrollBar* Bar(Orientation direction) const {
    return direction == cHorizontal ? area->horizontalScrollBar() : area->verticalScrollBar();
  }

  // The toolkit continues from the position that the receiver has set.
  void Watch(Orientation direction, unsigned message) {
    QScrollBar* bar = Bar(direction);
    QObject::connect(bar, &QScrollBar::actionTriggered, &context, [this, bar, message](int action) {
      if (action < QAbstractSlider::SliderSingleStepAdd || action > QAbstractSlider::SliderMove)
        return;
      SendMessage(this, message, cCodes[action - QAbstractSlider::SliderSingleStepAdd], 0);
      bar->setSliderPosition(bar->value());
    });
  }

  ScrollerWidget* const area;
  ScrollInfo shown[2];
  QObject context;  // ends the connections with this window
};

}  // namespace

NativeWindow* MakeScroller(const CreateInfo& info) {
  return new ScrollerWindow(info, new ScrollerWidget(ParentWidget(info)));
}

}  // namespace mavro
