// SPDX-License-Identifier: MIT-0
#include "galleryform.h"

GalleryForm::Commands::Commands(GalleryForm* form) {
  SetTarget(form, &GalleryForm::Command);
  Add(cNextPage, "&Next page", cControlKey | 'N', Icons::icoForward);
  Add(cClear, "&Clear log", cControlKey | 'L', Icons::icoClear);
  AddSeparator();
  Add(cQuit, "&Quit", cControlKey | 'Q', Icons::icoQuit);
}

GalleryForm::GalleryForm() {
  Initialize();
}

void GalleryForm::Initialize() {
  text = "Gallery";
  SetBounds(80, 80, 760, 620);
  InitializeBars();
  InitializeSwitches();
  for (TabPage* page : {(TabPage*)&input, (TabPage*)&lists, (TabPage*)&drawing, (TabPage*)&dialogs,
                        (TabPage*)&plots, (TabPage*)&grid})
    tabs.Add(page);
  tabs.onChange.Add_H(this, &This::PageChanged);
  upper.pan1 = &tabs;
  upper.pan2 = &side;
  upper.SetPosition(540);
  whole.orientation = 0;
  whole.pan1 = &upper;
  whole.pan2 = &events;
  whole.dock = Dock::cFill;
  whole.SetPosition(410);
  Add(&whole);
}

void GalleryForm::InitializeBars() {
  menu.SetTitle("&Gallery");
  menu.Fill(commands);
  bar.Add(&menu);
  menuBar = &bar;
  logMenu.root.Fill(commands);
  events.menu = &logMenu;
  tools.dock = Dock::cTop;
  tools.images = Icons::cStrip;
  for (const auto& action : commands.Actions()) tools.Add(action.get(), -1);
  Add(&tools);
  status.dock = Dock::cBootom;
  status.AddPane(0, "Right click in the log for its menu");
  status.AddPane(160, "Input");
  Add(&status);
}

void GalleryForm::InitializeSwitches() {
  switches.SetBounds(8, 8, 190, 170);
  switches.text = "Controls of the page";
  for (const char* item : {"Enabled", "Visible", "Framed", "Yellow", "Large font"})
    switches.items.Add(item);
  switches.itemFlags = cEnabled | cVisible;
  switches.onChange.Add_H(this, &This::Switched);
  side.Add(&switches);
}

void GalleryForm::Command(int id) {
  if (id == cClear) events.items.Clear();
  if (id == cNextPage) tabs.selectedIndex = (tabs.selectedIndex + 1) % tabs.TabCount();
  if (id == cQuit) Close();
}

void GalleryForm::Switched(NotifyArgs& args) {
  const int flags = args.value;
  for (Control* control : tabs.GetPage(tabs.selectedIndex)->children) {
    control->enabled = (flags & cEnabled) != 0;
    control->visible = (flags & cVisible) != 0;
    control->borderStyle = flags & cFramed ? BorderStyle::cFrame : BorderStyle::cNone;
    control->backColor = flags & cYellow ? Color(Color::cYellow) : Color();
    control->font = flags & cLarge ? Font(14, Font::cItalic) : Font();
  }
  Write("switches: " + std::to_string(flags));
}

void GalleryForm::PageChanged(NotifyArgs&) {
  const std::string title = tabs.GetPage(tabs.selectedIndex)->text;
  status.SetPane(1, title);
  Write("page: " + title);
}

void GalleryForm::Write(const std::string& line) {
  events.items.Add(line);
  events.selectedIndex = events.items.GetCount() - 1;
}
