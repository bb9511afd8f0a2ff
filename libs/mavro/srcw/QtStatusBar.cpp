#include <QFontMetrics>
#include <QLabel>
#include <QPainter>
#include <QStatusBar>

#include "NativeStatusBar.h"
#include "QtFactories.h"
#include "QtText.h"

namespace mavro {

namespace {

constexpr int cMargin = 6;  // between a pane's edge and its text
constexpr int cBarWidth = 120;
constexpr int cBarHeight = 8;

// One pane: its text, cut with dots if it doesn't fit, and a line at its left edge.
class PaneLabel final : public QLabel {
 public:
  explicit PaneLabel(QWidget* parent) : QLabel(parent) { setTextFormat(Qt::PlainText); }

  bool isFirst = false;

  // The width that shows the whole text; 0 without a text.
  int NeededWidth() const {
    return text().isEmpty() ? 0 : fontMetrics().horizontalAdvance(text()) + 2 * cMargin + 1;
  }

  void SetPercent(int wanted) {
    percent = wanted;
    setAccessibleDescription(percent < 0 ? QString() : QString("%1 %").arg(percent));
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    QRect place = rect().adjusted(cMargin, 0, -cMargin, 0);
    if (percent >= 0 && place.width() > 2 * cBarWidth) {
      DrawBar(painter, place);
      place.setRight(place.right() - cBarWidth - cMargin);
    }
    painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(text(), Qt::ElideRight, place.width()));
    if (isFirst) return;
    QColor line = palette().color(QPalette::WindowText);
    line.setAlphaF(0.25F);
    painter.setPen(line);
    painter.drawLine(0, 4, 0, height() - 5);
  }

 private:
  // At the right end of the place.
  void DrawBar(QPainter& painter, const QRect& place) const {
    const QRect bar(place.right() - cBarWidth, (height() - cBarHeight) / 2, cBarWidth, cBarHeight);
    QRect done = bar;
    done.setWidth(cBarWidth * percent / 100);
    painter.fillRect(done, palette().color(QPalette::Highlight));
    QColor frame = palette().color(QPalette::WindowText);
    frame.setAlphaF(0.5F);
    painter.save();
    painter.setPen(frame);
    painter.drawRect(bar);
    painter.restore();
  }

  int percent = -1;
};

// Panes that have a width keep it; those of width 0 share the remaining width. If that is too
// narrow for their texts, the others are no wider than theirs.
class PaneBar final : public QStatusBar {
 public:
  explicit PaneBar(QWidget* parent) : QStatusBar(parent) { setSizeGripEnabled(false); }

  void SetPanes(const std::vector<StatusBar::Pane>& panes) {
    while (labels.size() > panes.size()) {
      delete labels.back();
      labels.pop_back();
    }
    while (labels.size() < panes.size()) {
      labels.push_back(new PaneLabel(this));
      labels.back()->isFirst = labels.size() == 1;
      labels.back()->show();
    }
    widths.clear();
    for (size_t i = 0; i < panes.size(); ++i) {
      widths.push_back(panes[i].width);
      SetText(i, panes[i].text);
      SetPercent(i, panes[i].percent);
    }
    Arrange();
  }

  void SetText(size_t index, const std::string& text) {
    labels[index]->setText(ToScreen(text));
    Arrange();
  }
  void SetPercent(size_t index, int percent) { labels[index]->SetPercent(percent); }

 protected:
  void resizeEvent(QResizeEvent* event) override {
    QStatusBar::resizeEvent(event);
    Arrange();
  }

  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    QColor line = palette().color(QPalette::WindowText);
    line.setAlphaF(0.25F);
    painter.setPen(line);
    painter.drawLine(0, 0, width(), 0);
  }

 private:
  // The width that is left for each of the panes without a width of their own.
  int Share(const std::vector<int>& wide) const {
    int fixed = 0;
    int stretching = 0;
    for (const int paneWidth : wide) {
      fixed += std::max(paneWidth, 0);
      stretching += paneWidth < 0;
    }
    return stretching > 0 ? std::max(width() - fixed, 0) / stretching : 0;
  }

  // The widths of the panes, -1 for those that share the rest.
  std::vector<int> FittedWidths() const {
    std::vector<int> wide;
    for (const int paneWidth : widths) wide.push_back(paneWidth == 0 ? -1 : paneWidth);
    const int share = Share(wide);
    bool isNarrow = false;
    for (size_t i = 0; i < wide.size(); ++i)
      isNarrow = isNarrow || (wide[i] < 0 && labels[i]->NeededWidth() > share);
    for (size_t i = 0; i < wide.size() && isNarrow; ++i)
      if (wide[i] > 0) wide[i] = std::min(wide[i], labels[i]->NeededWidth());
    return wide;
  }

  void Arrange() {
    if (widths.size() != labels.size()) return;  // while the panes are being made
    const std::vector<int> wide = FittedWidths();
    const int share = Share(wide);
    int left = 0;
    for (size_t i = 0; i < wide.size(); ++i) {
      const int paneWidth = wide[i] < 0 ? share : wide[i];
      labels[i]->setGeometry(left, 1, paneWidth, height() - 1);
      left += paneWidth;
    }
  }

  std::vector<PaneLabel*> labels;  // owned as child widgets
  std::vector<int> widths;
};

class StatusBarWindow final : public NativeStatusBar {
 public:
  StatusBarWindow(const CreateInfo& info, PaneBar* itsBar)
      : NativeStatusBar(info, itsBar), bar(itsBar) {}

  void SetPanes(const std::vector<StatusBar::Pane>& panes) override { bar->SetPanes(panes); }
  void SetPaneText(int index, const std::string& newText) override {
    bar->SetText(static_cast<size_t>(index), newText);
  }
  void SetPaneBar(int index, int percent) override {
    bar->SetPercent(static_cast<size_t>(index), percent);
  }
  int TextHeight() const override { return bar->fontMetrics().height() + cMargin; }

 private:
  PaneBar* const bar;
};

}  // namespace

NativeWindow* MakeStatusBar(const CreateInfo& info) {
  return new StatusBarWindow(info, new PaneBar(ParentWidget(info)));
}

}  // namespace mavro
