// SPDX-License-Identifier: MIT-0
#include "inputpage.h"

InputPage::InputPage(Log log) : GalleryPage("Input", std::move(log)) {
  PlaceEdits();
  PlaceButtons();
  PlaceGroups();
  PlaceNumbers();
}

void InputPage::PlaceEdits() {
  Label* labels[] = {&nameLabel, &numberLabel, &secretLabel, &upperLabel};
  const char* captions[] = {"&Text", "&Number", "&Password", "&Upper case"};
  Edit* edits[] = {&name, &number, &secret, &upper};
  const Edit::DataType types[] = {Edit::cNormal, Edit::cFloat, Edit::cPassword, Edit::cUpperCase};
  for (int i = 0; i < 4; ++i) {
    labels[i]->text = captions[i];
    Place(*labels[i], 12, 16 + i * 32, 84, 18);
    edits[i]->dataType = types[i];
    edits[i]->tag = i;
    edits[i]->onChange.Add_H(this, &This::Changed);
    Place(*edits[i], 100, 12 + i * 32, 150, 26);
  }
  name.text = "Gr\303\274\303\237e, \344\270\226\347\225\214";
  number.text = "-12.5e3";
  secret.text = "secret";
  memo.text = "A memo\r\nof two lines";
  Place(memo, 12, 146, 238, 84);
}

void InputPage::PlaceButtons() {
  save.icon = Icons::icoSave;
  save.kind = Button::cSave;
  run.icon = Icons::icoRun;
  run.text = "Run";
  hot.text = "Hot";
  hot.hot = true;
  disabled.text = "Disabled";
  disabled.enabled = false;
  Button* buttons[] = {&save, &run, &hot, &disabled};
  for (int i = 0; i < 4; ++i) {
    buttons[i]->onClick.Add_H(this, &This::Clicked);
    Place(*buttons[i], 270 + i % 2 * 104, 12 + i / 2 * 42, 96, 34);
  }
  check.text = "&Check";
  check.checked = true;
  check.onClick.Add_H(this, &This::Clicked);
  Place(check, 270, 100, 120, 22);
}

void InputPage::PlaceGroups() {
  radio.text = "One of them";
  checks.text = "Some of them";
  for (const char* item : {"First", "Second", "Third"}) {
    radio.items.Add(item);
    checks.items.Add(item);
  }
  radio.itemIndex = 1;
  checks.itemFlags = 5;
  radio.onChange.Add_H(this, &This::Grouped);
  checks.onChange.Add_H(this, &This::Grouped);
  Place(radio, 270, 130, 96, 100);
  Place(checks, 374, 130, 96, 100);
}

void InputPage::PlaceNumbers() {
  box.text = "Numbers";
  Place(box, 12, 240, 458, 96);
  spin.SetBounds(12, 28, 80, 26);
  spin.max = 100;
  spin.value = 40;
  spin.onChange.Add_H(this, &This::Numbered);
  track.SetBounds(106, 26, 200, 30);
  track.value = 40;
  track.onChange.Add_H(this, &This::Numbered);
  progress.SetBounds(12, 64, 294, 18);
  progress.value = 40;
  for (const char* item : {"Release", "Debug", "Profile"}) {
    choose.items.Add(item);
    type.items.Add(item);
  }
  choose.chooseOnly = true;
  choose.selectedIndex = 0;
  choose.SetBounds(320, 26, 124, 26);
  type.SetBounds(320, 58, 124, 26);
  type.text = "typed";
  for (Control* control :
       {(Control*)&spin, (Control*)&track, (Control*)&progress, (Control*)&choose, (Control*)&type})
    box.Add(control);
}

void InputPage::Changed(NotifyArgs& args) {
  auto* edit = static_cast<Edit*>(args.sender);
  Say("edit " + std::to_string(edit->tag) + ": " + std::string(edit->text));
}

void InputPage::Clicked(NotifyArgs& args) {
  Say("click: " + std::string(static_cast<Control*>(args.sender)->text));
}

void InputPage::Grouped(NotifyArgs& args) {
  Say("group: " + std::to_string(args.value));
}

void InputPage::Numbered(NotifyArgs& args) {
  spin.value = track.value = progress.value = args.value;
  Say("number: " + std::to_string(args.value));
}
