// SPDX-License-Identifier: MIT-0
#include "mainform.h"

MainForm::Commands::Commands(MainForm* form) {
  SetTarget(form, &MainForm::Command);
  Add(cAdd, "&Add a line", cControlKey | 'N', Icons::icoAdd);
  Add(cRemove, "&Remove the line", cControlKey | 'D', Icons::icoRemove);
  AddSeparator();
  Add(cQuit, "&Quit", cControlKey | 'Q', Icons::icoQuit);
}

MainForm::MainForm() {
  Initialize();
}

void MainForm::Initialize() {
  text = "Lines";
  SetBounds(100, 100, 480, 360);
  menu.SetTitle("&Lines");
  menu.Fill(commands);
  bar.Add(&menu);
  menuBar = &bar;
  tools.dock = Dock::cTop;
  tools.images = Icons::cStrip;
  for (const auto& action : commands.Actions()) tools.Add(action.get(), -1);
  Add(&tools);
  status.dock = Dock::cBootom;
  status.AddPane(0, "");
  Add(&status);
  list.dock = Dock::cFill;
  Add(&list);
  ShowCount();
}

// Every command of menu, tool bar and keyboard arrives here.
void MainForm::Command(int id) {
  if (id == cAdd) {
    list.items.Add("Line " + std::to_string(++added));
    list.selectedIndex = list.items.GetCount() - 1;
  }
  if (id == cRemove && list.selectedIndex >= 0) list.items.Remove(list.selectedIndex);
  if (id == cQuit) return Close();
  ShowCount();
}

void MainForm::ShowCount() {
  status.SetPane(0, "Lines: " + std::to_string(list.items.GetCount()));
}
