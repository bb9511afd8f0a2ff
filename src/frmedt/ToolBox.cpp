#include "frmedt/ToolBox.h"

#include "Application.h"

namespace zendry {

namespace {

constexpr int cPictureSize = 22;

void RegisterStrip(int id) {
  if (!mavro::theApplication.FindImageList(id))
    mavro::theApplication.RegisterImageList(id, cPictureSize, cPictureSize, 0);
}

}  // namespace

ToolBox::ToolBox() {
  text = "Toolbox";
  RegisterStrip(cToolBoxStrip);
  RegisterStrip(cDesignStrip);
  icons.dock = mavro::Dock::cFill;
  icons.imageList = cToolBoxStrip;
  icons.accessibleName = "Toolbox";
  entries.push_back({0, &WindowRegClass});
  icons.Add("Select", 0);
  for (const CtrlClass& each : Registry()) {
    if (each.noBounds) continue;
    const int position = static_cast<int>(entries.size());
    entries.push_back({position, &each});
    icons.Add(each.name, position);
  }
  icons.selectedIndex = 0;
  Add(&icons);
}

const ToolEntry& ToolBox::Selected() {
  const int row = icons.selectedIndex;
  if (row < 0 || row >= static_cast<int>(entries.size())) Reset();
  return entries[static_cast<size_t>(icons.selectedIndex.Get())];
}

void ToolBox::Reset() {
  icons.selectedIndex = 0;
}

}  // namespace zendry
