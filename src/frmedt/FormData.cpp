#include "frmedt/FormData.h"

#include <algorithm>
#include <cctype>
#include <sstream>

#include "base/ParseInt.h"
#include "code/CppKeywords.h"
#include "frmedt/CtrlReg.h"
#include "frmedt/FormGeometry.h"
#include "frmedt/FormReader.h"
#include "frmedt/FormTokens.h"
#include "frmedt/PropClass.h"

namespace zendry {

namespace {

// What follows the beginning of a name counts as its number up to here.
constexpr size_t cLongestNumber = 64;

template <class Props>
auto FindIn(Props& props, std::string_view property) -> decltype(&props.front()) {
  for (auto& prop : props) {
    if (!prop.pd) break;
    if (prop.pd->name == property) return &prop;
  }
  return nullptr;
}

std::string_view DefaultOf(const PropValue& prop) {
  return prop.pd->defaultValue ? std::string_view(prop.pd->defaultValue) : std::string_view();
}

bool IsKeyword(std::string_view name) {
  std::istringstream words{std::string(KeywordsOfCpp())};
  for (std::string word; words >> word;)
    if (word == name) return true;
  return false;
}

bool IsWordChar(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) || c == '_';
}

// The text that the writer's depends on: that of a value which isn't written is empty.
std::string WrittenText(const PropValue& prop) {
  if (!prop.pd) return prop.value;
  const bool isWritten = prop.pd->kind > cHeightKind && prop.pd->emit;
  return isWritten && prop.value != DefaultOf(prop) ? prop.value : std::string();
}

bool SameProps(const CtrlRec& left, const CtrlRec& right) {
  return std::equal(left.props.begin(), left.props.end(), right.props.begin(), right.props.end(),
                    [](const PropValue& one, const PropValue& other) {
                      return one.pd == other.pd && WrittenText(one) == WrittenText(other);
                    });
}

bool SameRecord(const CtrlRec& left, const CtrlRec& right) {
  const auto parentName = [](const CtrlRec& rec) {
    return rec.parent ? std::string_view(rec.parent->name) : std::string_view();
  };
  return left.name == right.name && left.className == right.className &&
         left.declClass == right.declClass && left.classDef == right.classDef &&
         left.hasAdd == right.hasAdd && parentName(left) == parentName(right) &&
         left.events == right.events && left.kept == right.kept &&
         WrittenGeometry(left) == WrittenGeometry(right) && SameProps(left, right);
}

}  // namespace

void CtrlRec::SetClass(const CtrlClass& newClass) {
  classDef = &newClass;
  props.reserve(newClass.props.size());
  for (const PropDef& row : newClass.props) props.push_back({&row, {}});
}

void CtrlRec::SetProperty(std::string_view property, const std::string& text) {
  if (PropValue* prop = FindValue(property)) {
    PropContext context{this, prop, 0, text};
    prop->pd->cvt->ToValue(context);
  } else {
    props.push_back({nullptr, std::string(property) + " = " + text});
  }
}

PropValue* CtrlRec::FindValue(std::string_view property) {
  return FindIn(props, property);
}

const PropValue* CtrlRec::FindValue(std::string_view property) const {
  return FindIn(props, property);
}

std::string CtrlRec::ValueText(std::string_view property) const {
  const PropValue* prop = FindValue(property);
  if (!prop) return {};
  return prop->value.empty() ? std::string(DefaultOf(*prop)) : prop->value;
}

bool CtrlRec::SetValueText(std::string_view property, std::string text) {
  PropValue* prop = FindValue(property);
  if (prop) prop->value = std::move(text);
  return prop;
}

void CtrlRec::FillDefaults() {
  for (PropValue& prop : props) {
    if (!prop.pd) return;
    const bool isPlace = prop.pd->kind >= cLeftKind && prop.pd->kind <= cHeightKind;
    if (!isPlace && prop.value.empty()) prop.value = DefaultOf(prop);
  }
}

std::string CtrlRec::HandlerOf(std::string_view event) const {
  const auto at = std::find_if(events.rbegin(), events.rend(),
                               [&](const EventBinding& one) { return one.event == event; });
  return at == events.rend() ? std::string() : at->handler;
}

FormData::FormData() {
  InitRegistry();
  root.name = cRootName;
  root.className = "Window";
  root.SetClass(WindowRegClass);
  controls.push_back(&root);
}

CtrlRec* FormData::Find(std::string_view name) const {
  const auto at = std::find_if(controls.begin() + 1, controls.end(),
                               [&](const CtrlRec* rec) { return rec->name == name; });
  return at == controls.end() ? nullptr : *at;
}

CtrlRec& FormData::FindOrAdd(std::string_view name, std::string_view className) {
  if (name == cRootName) return root;
  if (CtrlRec* found = Find(name)) return *found;
  return Append(name, className);
}

CtrlRec& FormData::Append(std::string_view name, std::string_view className) {
  CtrlRec& made = *owned.emplace_back(std::make_unique<CtrlRec>());
  made.index = static_cast<unsigned>(controls.size());
  made.name = name;
  made.className = className;
  controls.push_back(&made);
  return made;
}

CtrlRec& FormData::AddControl(const CtrlClass& newClass, CtrlRec& parent, std::string_view name) {
  CtrlRec& made = Append(name, newClass.name);
  made.declClass = newClass.name;
  made.SetClass(newClass);
  made.parent = &parent;
  made.hasAdd = true;
  return made;
}

std::string FormData::UniqueName(std::string_view className) const {
  std::string base(className);
  if (!base.empty()) base[0] = static_cast<char>(base[0] + ('a' - 'A'));
  int most = 0;
  for (size_t i = 1; i < controls.size(); ++i) {
    const std::string_view name = controls[i]->name;
    if (name.starts_with(base))
      most = std::max(most, ParseInt(name.substr(base.size(), cLongestNumber)));
  }
  // As a wider number: a control may have the largest one in its name.
  return base + std::to_string(most + 1LL);
}

std::string FormData::NameProblem(std::string_view name, const CtrlRec* rec) const {
  if (name.empty()) return "A control needs a name";
  const bool isWord = std::all_of(name.begin(), name.end(), IsWordChar) &&
                      !std::isdigit(static_cast<unsigned char>(name[0]));
  if (!isWord) return "A name has letters, digits and \"_\" only, and begins with no digit";
  if (IsKeyword(name)) return "The name is a word of the language";
  if (name.size() < cShortestName)
    return "The designer doesn't read names of one or two characters";
  const CtrlRec* other = Find(name);
  return other && other != rec ? "The name is not unique" : "";
}

void FormData::DeleteRecord(CtrlRec& rec) {
  // The parents of hand-written statements may be in a circle, so the record leaves the list first.
  std::erase(controls, &rec);
  for (CtrlRec* child : ChildrenOf(rec)) {
    const bool isStillThere = std::find(controls.begin(), controls.end(), child) != controls.end();
    if (isStillThere) DeleteRecord(*child);
  }
  std::erase_if(owned, [&](const std::unique_ptr<CtrlRec>& one) { return one.get() == &rec; });
}

std::vector<CtrlRec*> FormData::ChildrenOf(const CtrlRec& rec) const {
  std::vector<CtrlRec*> children;
  std::copy_if(controls.begin() + 1, controls.end(), std::back_inserter(children),
               [&](const CtrlRec* one) { return one->parent == &rec; });
  return children;
}

void FormData::ReadDecl(const std::vector<std::string>& lines) {
  FormReader(*this).ReadDecl(lines);
}

void FormData::ReadInit(const std::vector<std::string>& lines) {
  FormReader(*this).ReadInit(lines);
}

bool FormData::CheckParents() {
  for (size_t i = 1; i < controls.size(); ++i) {
    if (controls[i]->hasAdd) continue;
    reports.push_back({controls[i]->name + " hasn't Add statment!", -1, {}});
    return false;
  }
  for (size_t i = 1; i < controls.size(); ++i) {
    const CtrlRec* above = controls[i];
    for (size_t depth = 0; above && depth < controls.size(); ++depth) above = above->parent;
    if (!above) continue;
    reports.push_back({controls[i]->name + " is in itself!", -1, {}});
    return false;
  }
  return true;
}

bool SameForm(const FormData& left, const FormData& right) {
  return left.declIndent == right.declIndent && left.initIndent == right.initIndent &&
         std::equal(left.controls.begin(), left.controls.end(), right.controls.begin(),
                    right.controls.end(), [](const CtrlRec* one, const CtrlRec* other) {
                      return SameRecord(*one, *other);
                    });
}

}  // namespace zendry
