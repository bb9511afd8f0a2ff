#include "frame/RecentDialog.h"

#include <mavro>

#include "frame/FileActs.h"

namespace zendry {

namespace {

constexpr int cMargin = 10;
constexpr int cButtonWidth = 84;
constexpr int cButtonHeight = 30;

// A list to choose a row from.
class SelectBox : public mavro::Form {
  typedef SelectBox This;

 public:
  SelectBox(const std::string& title, const std::vector<std::string>& texts);

  // The chosen text; empty for none.
  std::string Choose();

 private:
  // clang-format off
	//!decl
	mavro::ListBox list;
	mavro::Panel buttons;
	mavro::Button open, cancel;
	//!end
  // clang-format on

  void Initialize();
  void OnChooseRow(mavro::NotifyArgs& args);
  void OnSizeChanged(mavro::NotifyArgs& args);
};

SelectBox::SelectBox(const std::string& title, const std::vector<std::string>& texts) {
  Initialize();
  text = title;
  list.accessibleName = title;
  for (const std::string& item : texts) list.items.Add(item);
  if (!texts.empty()) list.selectedIndex = 0;
  focusControl = &list;
}

void SelectBox::Initialize() {
  using mavro::Button, mavro::Dock;
  // clang-format off
	//!init
	this->SetBounds(0, 0, 560, 320);
	//!<ListBox>
	list.dock = Dock::cFill;
	list.onDblClick.Add_H(this, &This::OnChooseRow);
	this->Add(&list);
	//!<Panel>
	buttons.dock = Dock::cBootom;
	buttons.height = 50;
	buttons.onResize.Add_H(this, &This::OnSizeChanged);
	this->Add(&buttons);
	//!<Button>
	open.SetBounds(372, 10, 84, 30);
	open.text = "Open";
	open.kind = Button::cOk;
	buttons.Add(&open);
	//!<Button>
	cancel.SetBounds(466, 10, 84, 30);
	cancel.kind = Button::cCancel;
	buttons.Add(&cancel);
	//!end
  // clang-format on
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
