#include "DataLink.h"

#include "Button.h"
#include "SysImpl.h"

namespace mavro {

DataLink::DataLink(Control* linked) : control(linked) {
  control->impl->dataLink = this;
}

void DataLink::Load() {
  if (!source) return;
  std::string value;
  source->Get(value);
  control->text = value;
}

void DataLink::Save() {
  if (source) source->Set(control->text.Get());
}

CheckDataLink::CheckDataLink(CheckBox* box) : DataLink(box) {}

void CheckDataLink::Load() {
  if (!source) return;
  std::string value;
  source->Get(value);
  static_cast<CheckBox*>(control)->checked = value == "1";
}

void CheckDataLink::Save() {
  if (source) source->Set(static_cast<CheckBox*>(control)->checked ? "1" : "0");
}

void SaveDataLinks(Control* control) {
  for (Control* child : control->children) SaveDataLinks(child);
  if (control->impl->dataLink) control->impl->dataLink->Save();
}

}  // namespace mavro
