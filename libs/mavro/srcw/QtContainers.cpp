#include <QFrame>
#include <QGuiApplication>
#include <QMenuBar>
#include <QPainter>
#include <QResizeEvent>
#include <QScreen>
#include <QWidget>
#include <QWindow>

#include "Form.h"
#include "NativeForm.h"
#include "QtEvents.h"
#include "QtFactories.h"
#include "QtFileDrops.h"
#include "QtForm.h"
#include "QtPainted.h"
#include "QtRoles.h"
#include "QtStrips.h"
#include "QtText.h"

namespace mavro {

namespace {

// The bar between two panes: a line of grip dots in the palette's colours.
class SplitBarWidget final : public QWidget {
 public:
  explicit SplitBarWidget(QWidget* parent) : QWidget(parent) { setMouseTracking(true); }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Window));
    painter.setPen(palette().color(QPalette::Mid));
    constexpr int cDots = 5;
    constexpr int cGap = 4;
    const bool upright = height() > width();
    const QPoint middle = rect().center();
    for (int i = -cDots / 2; i <= cDots / 2; ++i)
      painter.drawPoint(upright ? middle + QPoint(0, i * cGap) : middle + QPoint(i * cGap, 0));
  }
};

class FormWindow final : public NativeForm {
 public:
  FormWindow(const CreateInfo& info, FormWidget* form) : NativeForm(info, form), frame(form) {
    form->client->installEventFilter(
        form->findChild<QObject*>("mavroEvents", Qt::FindDirectChildrenOnly));
    Move(info.bounds);
  }

  QWidget* ClientWidget() const override { return frame->client; }
  std::string Text() const override { return FromScreen(frame->windowTitle()); }
  void SetText(const std::string& newText) override { frame->setWindowTitle(ToScreen(newText)); }

  void SetFrame(bool fixedSize, int windowType, NativeWindow* above) override {
    Qt::WindowFlags flags = above ? Qt::Dialog : Qt::Window;
    if (windowType == Form::cToolWindow) flags = Qt::Tool;
    if (windowType == Form::cNoTitleBar) flags |= Qt::FramelessWindowHint;
    frame->setWindowFlags(flags);
    const bool answers = above || static_cast<const Form*>(creationData)->modal;
    SetAccessibleRole(*frame, answers ? QAccessible::Dialog : QAccessible::Window);
    if (fixedSize) frame->setFixedSize(frame->size());
    if (!above) return;
    frame->winId();
    above->widget->winId();
    frame->windowHandle()->setTransientParent(above->widget->windowHandle());
  }

  void CenterOver(NativeWindow* above) override {
    const QRect area = above ? above->widget->frameGeometry()
                             : QGuiApplication::primaryScreen()->availableGeometry();
    frame->move(area.center() - frame->rect().center());
  }

  void SetIcon(int resourceId) override { frame->setWindowIcon(ResourceIcon(resourceId)); }

  void AcceptFiles() override { new QtFileDrops(*this); }

  void Maximize(bool on) override {
    const Qt::WindowStates others = frame->windowState() & ~Qt::WindowMaximized;
    frame->setWindowState(on ? others | Qt::WindowMaximized : others);
  }
  bool IsMaximized() const override { return frame->isMaximized(); }
  Rect NormalBounds() const override {
    if (!frame->isMaximized()) return Bounds();
    const QRect inside = frame->normalGeometry();
    const QPoint at = inside.topLeft() - frame->border;
    return {at.x(), at.y(), inside.width(), inside.height()};
  }

  bool IsOnScreen() const override {
    const QWindow* window = frame->windowHandle();
    return window && window->isExposed();
  }

 private:
  FormWidget* frame;
};

class SplitBarWindow final : public NativeWindow {
 public:
  using NativeWindow::NativeWindow;
};

class ContainerWindow final : public NativeWindow {
 public:
  ContainerWindow(const CreateInfo& info, PaintedFrame* its) : NativeWindow(info, its), frame(its) {
    frame->Attach(this);
  }
  ~ContainerWindow() override { frame->Attach(nullptr); }
  Rect ClientArea() const override {
    const QRect inside = widget->contentsRect();
    return {inside.left(), inside.top(), inside.width(), inside.height()};
  }
  void SetText(const std::string& newText) override {
    NativeWindow::SetText(newText);
    SendMessage(this, WM_SETTEXT, 0, 0);
  }

 private:
  PaintedFrame* const frame;
};

}  // namespace

// A click on a part that doesn't take the focus, such as a tool bar, leaves the focus where it is.
FormWidget::FormWidget() : client(new QWidget(this)) {}

void FormWidget::SetMenuBar(QMenuBar* bar) {
  menuBar = bar;
  Arrange();
}

void FormWidget::Arrange() {
  int top = 0;
  if (menuBar) {
    top = menuBar->heightForWidth(width());
    if (top < 0) top = menuBar->sizeHint().height();
    menuBar->setGeometry(0, 0, width(), top);
  }
  client->setGeometry(0, top, width(), std::max(0, height() - top));
}

// A maximized window may have a smaller border than a restored one.
void FormWidget::moveEvent(QMoveEvent*) {
  if (!isMaximized()) border = geometry().topLeft() - frameGeometry().topLeft();
}

void FormWidget::resizeEvent(QResizeEvent*) {
  Arrange();
}

NativeWindow* MakeContainer(const CreateInfo& info) {
  return new ContainerWindow(info, new PaintedFrame(ParentWidget(info)));
}

NativeWindow* MakeForm(const CreateInfo& info) {
  return new FormWindow(info, new FormWidget);
}

NativeWindow* MakeSplitBar(const CreateInfo& info) {
  return new SplitBarWindow(info, new SplitBarWidget(ParentWidget(info)));
}

}  // namespace mavro
