// SPDX-License-Identifier: MIT-0
#include "personform.h"

PersonForm::PersonForm(Person& shown)
    : nameSource(shown.name), townSource(shown.town), memberSource(shown.isMember) {
  Initialize();
}

void PersonForm::Initialize() {
  text = "Person";
  resizable = false;
  SetSize(320, 190);
  nameLabel.text = "&Name:";
  nameLabel.SetBounds(12, 12, 80, 20);
  name.SetBounds(100, 10, 208, 24);
  townLabel.text = "&Town:";
  townLabel.SetBounds(12, 46, 80, 20);
  town.SetBounds(100, 44, 208, 24);
  member.text = "&Member";
  member.SetBounds(100, 80, 208, 22);
  ok.kind = Button::cOk;
  ok.SetBounds(128, 146, 84, 30);
  cancel.kind = Button::cCancel;
  cancel.SetBounds(224, 146, 84, 30);
  nameLink.source = &nameSource;
  townLink.source = &townSource;
  memberLink.source = &memberSource;
  Add(&nameLabel);
  Add(&name);
  Add(&townLabel);
  Add(&town);
  Add(&member);
  Add(&ok);
  Add(&cancel);
  focusControl = &name;
}
