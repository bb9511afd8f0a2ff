#include "frame/RecentDialog.h"

#include <mavro>

#include "frame/FileActs.h"

namespace zendry {

namespace {

constexpr int cWidth = 560;
constexpr int cHeight = 320;
constexpr int cMargin = 10;
constexpr int cButtonWidth = 84;
constexpr int cButtonHeight = 30;

// A list to choose a row from.
class SelectBox : public mavro::Form {
 public:
  SelectBox(const std::string& title, const std::vector<std::string>& texts);

  // The chosen text; empty for none.
  std::string Choose();

 private:
  void OnChooseRow(mavro::NotifyArgs& args);
  void OnSizeChanged(mavro::NotifyArgs& args);

  mavro::ListBox list;
  mavro::Panel buttons;
  mavro::Button open;
  mavro::Button cancel;
};

SelectBox::SelectBox(const std::string& title, const std::vector<std::string>& texts) {
  text = title;
  list.accessibleName = title;
  SetSize(cWidth, cHeight);
  for (const std::string& item : texts) list.items.Add(item);
  if (!texts.empty()) list.selectedIndex = 0;
  list.dock = mavro::Dock::cFill;
  list.onDblClick.Add_H(this, &SelectBox::OnChooseRow);
  buttons.dock = mavro::Dock::cBootom;
  buttons.height = cButtonHeight + 2 * cMargin;
  open.kind = mavro::Button::cOk;
  open.text = "Open";
  cancel.kind = mavro::Button::cCancel;
  buttons.Add(&open);
  buttons.Add(&cancel);
  buttons.onResize.Add_H(this, &SelectBox::OnSizeChanged);
  Add(&list);
  Add(&buttons);
  focusControl = &list;
}

std::string SelectBox::Choose() {
  const bool accepted = Run(true) == cOk;
  const int row = list.selectedIndex;
  return accepted && row >= 0 ? list.items[row] : "";
}

void SelectBox::OnChooseRow(mavro::NotifyArgs&) {
  result = cOk;
  Close();
}

void SelectBox::OnSizeChanged(mavro::NotifyArgs&) {
  const int right = buttons.width - cMargin;
  cancel.SetBounds(right - cButtonWidth, cMargin, cButtonWidth, cButtonHeight);
  open.SetBounds(right - 2 * cButtonWidth - cMargin, cMargin, cButtonWidth, cButtonHeight);
}

}  // namespace

std::string ChooseRecent(const RecentList& recent, int id) {
  SelectBox box(id == cRecentFilesCommand ? "Recent files" : "Recent projects", recent.items);
  return box.Choose();
}

}  // namespace zendry
