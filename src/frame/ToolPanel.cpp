#include "frame/ToolPanel.h"

#include "base/CommandTable.h"
#include "browser/BrowserActs.h"
#include "frame/MainForm.h"
#include "frame/PictureStrips.h"
#include "frame/PrjActs.h"

namespace zendry {

namespace {

constexpr int cBarHeight = 0x16;
constexpr int cClassesPage = 1;

// The commands of the rows before the last one, for each page.
constexpr int cProjectIds[] = {cProjectOptionsCommand, cAddFileCommand, cRemoveFileCommand};
constexpr int cBrowserIds[] = {cOpenBrowserCommand, cAddMemberCommand, cDeleteMemberCommand};

}  // namespace

ToolPanel::ToolPanel(mavro::TabCtrl& newTabs) : tabs(newTabs) {
  height = cBarHeight;
  bar.height = cBarHeight;
  bar.dock = mavro::Dock::cFill;
  bar.images = cSmallStrip;
  bar.AddButton(cPropertiesPicture, "Options", cMainRow);
  bar.AddButton(cAddPicture, "Add", cAddRow);
  bar.AddButton(cRemovePicture, "Remove", cRemoveRow);
  bar.AddButton(cClosePicture, "Close", cCloseRow);
  bar.onClick.Add_H(this, &ToolPanel::OnButton);
  Add(&bar);
  tabs.onChange.Add_H(this, &ToolPanel::OnPage);
  UpdateButtons();
}

mavro::Action* ToolPanel::ActionOf(int row) const {
  if (row < cMainRow || row >= cCloseRow) return nullptr;
  if (tabs.selectedIndex != cClassesPage) return thePrjActs.Find(cProjectIds[row]);
  const int id = cBrowserIds[row];
  return id == cDeleteMemberCommand ? &theBrowserActs.deleteMember : theBrowserActs.Find(id);
}

// The window decides which commands can act, once it exists.
bool ToolPanel::IsOffered(const mavro::Action* action) const {
  return theMainForm ? theMainForm->CanAct(action) : IsHandled(action);
}

void ToolPanel::UpdateButtons() {
  for (int row = cMainRow; row < cCloseRow; ++row) bar.Enable(row, IsOffered(ActionOf(row)));
}

void ToolPanel::OnButton(mavro::NotifyArgs& args) {
  if (args.value == cCloseRow) {
    mavro::NotifyArgs closing{this, 0};
    onClosePanel.Fire(closing);
  } else if (const mavro::Action* action = ActionOf(args.value)) {
    action->Execute();
  }
}

void ToolPanel::OnPage(mavro::NotifyArgs&) {
  UpdateButtons();
}

}  // namespace zendry
