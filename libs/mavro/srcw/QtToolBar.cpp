#include <QMenu>
#include <QPaintEvent>
#include <QPainter>
#include <QToolButton>
#include <QWidget>

#include "NativeToolBar.h"
#include "QtFactories.h"
#include "QtRoles.h"
#include "QtStrips.h"
#include "QtText.h"
#include "QtToolTip.h"

namespace mavro {

namespace {

constexpr int cSeparatorInset = 3;

// Draws the lines between groups of buttons.
class ToolBarWidget final : public QWidget {
 public:
  using QWidget::QWidget;
  std::vector<QRect> separators;

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    QColor line = palette().color(QPalette::WindowText);
    line.setAlphaF(0.25F);
    painter.setPen(line);
    for (const QRect& place : separators)
      painter.drawLine(place.center().x(), place.top() + cSeparatorInset, place.center().x(),
                       place.bottom() - cSeparatorInset);
  }
};

class ToolBarWindow final : public NativeToolBar {
 public:
  ToolBarWindow(const CreateInfo& info, ToolBarWidget* its)
      : NativeToolBar(info, its), bar(its), more(new QToolButton(bar)), rest(new QMenu(more)) {
    SetAccessibleRole(*bar, QAccessible::ToolBar);
    Flatten(more);
    more->setText(QString::fromUtf8("»"));
    more->setToolTip("More commands");
    more->setAccessibleName("More commands");
    more->setMenu(rest);
    more->setPopupMode(QToolButton::InstantPopup);
    more->setStyleSheet("QToolButton::menu-indicator { image: none; }");
    QObject::connect(rest, &QMenu::aboutToShow, &guard, [this] { FillRest(); });
  }

  void SetStrip(int stripId) override {
    strip = stripId;
    pictureSize = StripPictureSize(stripId);
  }

  void SetRows(const std::vector<ToolRowLook>& rows) override {
    for (QToolButton* button : buttons)
      if (button) {
        button->hide();
        button->deleteLater();
      }
    buttons.assign(rows.size(), nullptr);
    looks.assign(rows.size(), ToolRowLook());
    places.assign(rows.size(), Rect());
    for (size_t i = 0; i < rows.size(); ++i) {
      if (rows[i].kind == ToolRowWish::cButton) buttons[i] = NewButton(static_cast<int>(i));
      SetRow(static_cast<int>(i), rows[i]);
    }
  }

  void SetRow(int row, const ToolRowLook& look) override {
    const auto at = static_cast<size_t>(row);
    const ToolRowLook before = std::exchange(looks[at], look);
    QToolButton* button = buttons[at];
    if (!button) return;
    if (before.image != look.image) button->setIcon(StripIcon(strip, look.image));
    button->setToolTip(PlainToolTip(ToScreen(look.label)));
    button->setAccessibleName(ToScreen(look.label));
    button->setEnabled(look.enabled);
  }

  void Place(const ToolRowPlan& plan) override {
    places = plan.places;
    bar->separators.clear();
    for (size_t i = 0; i < places.size(); ++i) {
      const QRect place = ToRect(places[i]);
      // A line before the first button separates nothing.
      if (looks[i].kind == ToolRowWish::cSeparator && i > 0 && !place.isEmpty())
        bar->separators.push_back(place);
      if (!buttons[i]) continue;
      buttons[i]->setGeometry(place);
      buttons[i]->setVisible(!place.isEmpty());
    }
    more->setGeometry(ToRect(plan.more));
    more->setVisible(plan.more.width > 0);
    bar->update();
  }

 private:
  static QRect ToRect(const Rect& rect) { return {rect.left, rect.top, rect.width, rect.height}; }
  static void Flatten(QToolButton* button) {
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::NoFocus);
  }

  QToolButton* NewButton(int row) {
    auto* button = new QToolButton(bar);
    Flatten(button);
    if (!pictureSize.isEmpty()) button->setIconSize(pictureSize);
    QObject::connect(button, &QToolButton::clicked, &guard, [this, row] { Click(row); });
    return button;
  }

  void Click(int row) {
    if (parent)
      SendMessage(parent, WM_COMMAND, cRowRoute | row,
                  reinterpret_cast<Param>(static_cast<NativeWindow*>(this)));
  }

  // Fills a menu with the buttons that have no room. Separators between them become lines.
  void FillRest() {
    rest->clear();
    for (size_t i = 0; i < looks.size(); ++i) {
      if (places[i].width > 0 || looks[i].kind == ToolRowWish::cControl) continue;
      if (looks[i].kind == ToolRowWish::cSeparator) {
        rest->addSeparator();
        continue;
      }
      const QString label = ToScreen(looks[i].label).replace('&', "&&");
      QAction* item = rest->addAction(StripIcon(strip, looks[i].image), label);
      item->setEnabled(looks[i].enabled);
      QObject::connect(item, &QAction::triggered, &guard,
                       [this, row = static_cast<int>(i)] { Click(row); });
    }
  }

  ToolBarWidget* bar;
  QToolButton* more;
  QMenu* rest;
  int strip = 0;
  QSize pictureSize;
  std::vector<QToolButton*> buttons;  // null for rows that are not buttons
  std::vector<ToolRowLook> looks;
  std::vector<Rect> places;
  QObject guard;  // ends the connections with this window
};

}  // namespace

NativeWindow* MakeToolBar(const CreateInfo& info) {
  return new ToolBarWindow(info, new ToolBarWidget(ParentWidget(info)));
}

}  // namespace mavro
