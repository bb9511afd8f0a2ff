// SPDX-License-Identifier: MIT-0
#pragma once

#include <mavro>
#include <vector>

#include "person.h"

// A list of people; another form asks for each.
class MainForm : public Form {
 public:
  typedef MainForm This;
  MainForm();

 private:
  void Initialize();
  void ClickNew(NotifyArgs& args);
  void ClickEdit(NotifyArgs& args);
  void ClickRemove(NotifyArgs& args);
  void ShowPerson(int row);

  std::vector<Person> people = {{"Ada", "London", true}, {"Konrad", "Berlin", false}};
  ListView list;
  Panel buttons;
  Button add, edit, remove;
};
