#include "StatusBar.h"

#include <algorithm>

#include "Assert.h"
#include "NativeStatusBar.h"
#include "SysImpl.h"

namespace mavro {

class StatusBar::Impl : public SysImpl {
 public:
  // A font too large for the height makes the bar higher.
  void Create() override {
    CreateNative("msctls_statusbar32", cWantsKeys);
    PanesChanged();
    const Rect bounds = owner->Bounds();
    owner->SetSize(bounds.width, std::max(bounds.height, Window()->TextHeight()));
  }

  void PanesChanged() {
    if (hwnd) Window()->SetPanes(static_cast<StatusBar*>(owner)->panes);
  }

  NativeStatusBar* Window() const { return static_cast<NativeStatusBar*>(hwnd); }
};

StatusBar::StatusBar() : Control(new Impl) {
  SetSize(200, 24);
}

void StatusBar::AddPane(int width, const std::string& paneText) {
  panes.push_back({width, paneText, 0});
  static_cast<Impl*>(impl)->PanesChanged();
}

void StatusBar::SetPane(int idx, const std::string& paneText, int style) {
  MAVRO_ASSERT_AS(idx >= 0 && static_cast<size_t>(idx) < panes.size(), "idx < panes.size()");
  Pane& pane = panes[static_cast<size_t>(idx)];
  if (pane.text == paneText && pane.style == style) return;
  pane.text = paneText;
  pane.style = style;
  if (impl->hwnd) static_cast<Impl*>(impl)->Window()->SetPaneText(idx, paneText);
}

void StatusBar::SetPaneBar(int idx, int percent) {
  MAVRO_ASSERT_AS(idx >= 0 && static_cast<size_t>(idx) < panes.size(), "idx < panes.size()");
  Pane& pane = panes[static_cast<size_t>(idx)];
  percent = std::clamp(percent, -1, 100);
  if (pane.percent == percent) return;
  pane.percent = percent;
  if (impl->hwnd) static_cast<Impl*>(impl)->Window()->SetPaneBar(idx, percent);
}

const std::string& StatusBar::PaneText(int idx) const {
  MAVRO_ASSERT_AS(idx >= 0 && static_cast<size_t>(idx) < panes.size(), "idx < panes.size()");
  return panes[static_cast<size_t>(idx)].text;
}

}  // namespace mavro
