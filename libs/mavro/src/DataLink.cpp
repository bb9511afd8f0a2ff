#include "DataLink.h"

#include <algorithm>
#include <climits>
#include <cstdlib>

#include "Button.h"
#include "ButtonGroup.h"
#include "SysImpl.h"

namespace mavro {

namespace {

class TextLink final : public DataLink {
 public:
  using DataLink::DataLink;
};

std::shared_ptr<DataLink> MakeLink(Control& control) {
  if (auto* box = dynamic_cast<CheckBox*>(&control)) return std::make_shared<CheckDataLink>(box);
  if (auto* group = dynamic_cast<ButtonGroup*>(&control))
    return std::make_shared<GroupDataLink>(group);
  return std::make_shared<TextLink>(&control);
}

}  // namespace

DataLinkProperty& DataLinkProperty::operator=(DataSource* source) {
  if (!link) link = MakeLink(control);
  link->source = source;
  return *this;
}

DataSource* DataLinkProperty::Get() const {
  return link ? link->source : nullptr;
}

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

GroupDataLink::GroupDataLink(ButtonGroup* group) : DataLink(group), selected(&group->Selected()) {}

// A text that is not a number counts as zero, a number that is too large as the largest.
void GroupDataLink::Load() {
  if (!source) return;
  std::string value;
  source->Get(value);
  const long number = std::strtol(value.c_str(), nullptr, 10);
  static_cast<ButtonGroup*>(control)->Select(
      static_cast<int>(std::clamp<long>(number, INT_MIN, INT_MAX)));
}

void GroupDataLink::Save() {
  if (source) source->Set(std::to_string(*selected));
}

void SaveDataLinks(Control* control) {
  for (Control* child : control->children) SaveDataLinks(child);
  if (control->impl->dataLink) control->impl->dataLink->Save();
}

}  // namespace mavro
