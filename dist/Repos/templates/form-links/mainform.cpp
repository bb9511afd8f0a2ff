// SPDX-License-Identifier: MIT-0
#include "mainform.h"

#include "personform.h"

MainForm::MainForm() {
  Initialize();
}

void MainForm::Initialize() {
  text = "People";
  SetBounds(100, 100, 460, 320);
  list.AddColumn("Name", 160);
  list.AddColumn("Town", 160);
  list.AddColumn("Member", 80);
  list.showSelection = true;
  list.dock = Dock::cFill;
  list.onChoose.Add_H(this, &This::ClickEdit);
  buttons.dock = Dock::cBootom;
  buttons.height = 46;
  add.text = "&New...";
  add.SetBounds(8, 8, 90, 30);
  add.onClick.Add_H(this, &This::ClickNew);
  edit.text = "&Edit...";
  edit.SetBounds(106, 8, 90, 30);
  edit.onClick.Add_H(this, &This::ClickEdit);
  remove.text = "&Remove";
  remove.SetBounds(204, 8, 90, 30);
  remove.onClick.Add_H(this, &This::ClickRemove);
  buttons.Add(&add);
  buttons.Add(&edit);
  buttons.Add(&remove);
  Add(&list);
  Add(&buttons);
  for (int row = 0; row < static_cast<int>(people.size()); ++row) {
    list.AddRow("");
    ShowPerson(row);
  }
  list.selectedIndex = 0;
}

void MainForm::ShowPerson(int row) {
  const Person& person = people[static_cast<size_t>(row)];
  list.SetCell(row, 0, person.name);
  list.SetCell(row, 1, person.town);
  list.SetCell(row, 2, person.isMember ? "yes" : "no");
}

void MainForm::ClickNew(NotifyArgs&) {
  Person person;
  if (PersonForm(person).Run(true) != cOk) return;
  people.push_back(person);
  ShowPerson(list.AddRow(person.name));
  list.Select(list.rowCount - 1);
}

void MainForm::ClickEdit(NotifyArgs&) {
  const int row = list.selectedIndex;
  if (row < 0) return;
  if (PersonForm(people[static_cast<size_t>(row)]).Run(true) == cOk) ShowPerson(row);
}

void MainForm::ClickRemove(NotifyArgs&) {
  const int row = list.selectedIndex;
  if (row < 0) return;
  people.erase(people.begin() + row);
  list.RemoveRow(row);
}
