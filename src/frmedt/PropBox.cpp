#include "frmedt/PropBox.h"

#include <algorithm>
#include <utility>

#include "Assert.h"
#include "frmedt/PropClass.h"
#include "frmedt/PropEditors.h"
#include "frmedt/SourceNames.h"

namespace zendry {

namespace {

const PropDef cClassRow = {"class", cClassKind, nullptr, &thePropString};
const PropDef cNameRow = {"name", cNameKind, nullptr, &thePropString};

int DataTypeOf(int type) {
  if (type == cIntegerType) return mavro::Edit::cInteger;
  return type == cFloatType ? mavro::Edit::cFloat : mavro::Edit::cNormal;
}

}  // namespace

PropBox::PropBox(const FormData& itsForm)
    : form(itsForm), classValue{&cClassRow, {}}, nameValue{&cNameRow, {}} {
  text = "Property";
  box.dock = mavro::Dock::cFill;
  box.onChange.Add_H(this, &PropBox::OnChange);
  Add(&box);
}

std::string PropBox::Row::Common() const {
  const std::string& first = values.front()->value;
  const bool isSame = std::all_of(values.begin(), values.end(),
                                  [&](const PropValue* value) { return value->value == first; });
  return isSame ? first : std::string();
}

void PropBox::Show(std::vector<CtrlRec*> newRecs) {
  updating = true;
  recs = std::move(newRecs);
  rows.clear();
  if (!recs.empty()) AddRows();
  box.SetCount(static_cast<int>(rows.size()));
  for (int row = 0; row < static_cast<int>(rows.size()); ++row) ShowRow(row);
  box.FitTitles();
  updating = false;
}

// Raw entries follow the rows of the class; they have no row here.
void PropBox::AddRows() {
  const CtrlRec& first = *recs.front();
  const bool isOneClass = std::all_of(recs.begin(), recs.end(), [&](const CtrlRec* rec) {
    return rec->declClass == first.declClass;
  });
  classValue.value = isOneClass ? first.declClass : std::string();
  nameValue.value = first.name;
  rows.push_back({&cClassRow, {&classValue}});
  if (recs.size() == 1 && first.parent) rows.push_back({&cNameRow, {&nameValue}});
  for (const PropValue& value : first.props) {
    if (!value.pd) break;
    AddCommonRow(*value.pd);
  }
}

// A row that one of the controls lacks isn't shown.
void PropBox::AddCommonRow(const PropDef& pd) {
  Row row{&pd, {}};
  for (CtrlRec* rec : recs) {
    PropValue* value = rec->FindValue(pd.name);
    if (!value || value->pd->cvt != pd.cvt || value->pd->kind != pd.kind) return;
    row.values.push_back(value);
  }
  rows.push_back(std::move(row));
}

// A tab control has no text of its own: the row edits that of its page in front.
std::string PropBox::ShownText(const Row& row) const {
  const CtrlRec& rec = *recs.front();
  if (row.pd->kind == cTextKind && recs.size() == 1 && rec.classDef && rec.classDef->alwaysRefresh)
    if (const auto* tabs = dynamic_cast<const mavro::TabCtrl*>(rec.ctrl);
        tabs && tabs->selectedIndex >= 0)
      return tabs->GetPage(tabs->selectedIndex)->text;
  return row.Common();
}

void PropBox::ShowRow(int number) {
  const Row& row = rows[static_cast<size_t>(number)];
  mavro::PopertyItem& item = box.Item(number);
  const PropClass& type = *row.pd->cvt;
  item.SetTitle(row.pd->name);
  item.index = number;
  if (type.type < cSelectionType) {
    item.SetMode(mavro::PopertyItem::cEdit);
    item.edit.dataType = DataTypeOf(type.type);
    item.SetValue(ShownText(row));
  } else if (type.type == cSelectionType) {
    MAVRO_ASSERT_AS(type.ref, "props[i]->pd->cvt->ref");
    item.SetMode(mavro::PopertyItem::cCombo);
    if (item.Options() != type.ref) item.SetOptions(type.ref);
    item.SetValue(row.Common());
  } else {
    item.SetMode(mavro::PopertyItem::cButton);
    item.SetValue("...");
  }
}

void PropBox::SetValue(std::string_view property, const std::string& newText) {
  if (recs.size() != 1) return;
  for (size_t number = 0; number < rows.size(); ++number) {
    if (rows[number].pd->name != property) continue;
    rows[number].values.front()->value = newText;
    box.Item(static_cast<int>(number)).SetValue(newText);
    return;
  }
}

void PropBox::Renew() {
  updating = true;
  for (int row = 0; row < static_cast<int>(rows.size()); ++row) ShowRow(row);
  updating = false;
}

// What a commit leads to may fill the box anew, so the row is copied.
void PropBox::OnChange(mavro::ItemArgs& args) {
  if (updating || args.row < 0 || args.row >= static_cast<int>(rows.size())) return;
  const Row row = rows[static_cast<size_t>(args.row)];
  if (row.pd->kind == cClassKind || row.pd->kind == cNameKind)
    SetNameOrClass(row, args.text, args.row);
  else
    SetValues(row, args.text, args.row);
}

// A name that the source can't hold would lose the control.
void PropBox::SetNameOrClass(const Row& row, const std::string& newText, int number) {
  PropValue& value = *row.values.front();
  if (newText == value.value) return;
  std::string problem;
  if (row.pd->kind == cNameKind)
    problem = form.NameProblem(newText, recs.front());
  else if (!IsClassName(newText))
    problem = "\"" + newText + "\" can't be the name of a class";
  if (!problem.empty()) {
    box.Item(number).SetValue(value.value);
    if (onRefused) onRefused(problem);
    return;
  }
  value.value = newText;
  const std::vector<CtrlRec*> changed = recs;
  for (CtrlRec* rec : changed) {
    (row.pd->kind == cNameKind ? rec->name : rec->declClass) = newText;
    if (onCommit) onCommit(*rec, value);
  }
  if (onDone) onDone();
}

void PropBox::SetValues(const Row& row, const std::string& newText, int number) {
  PropValue edited{row.pd, row.Common()};
  PropContext context;
  context.rec = recs.front();
  context.prop = &edited;
  context.text = row.pd->cvt->type == cStringType ? BetweenQuotes(newText) : newText;
  if (!EditValue(context)) return;
  const bool isCommand = row.pd->cvt == &thePropPages;
  const bool isSame =
      std::all_of(row.values.begin(), row.values.end(),
                  [&](const PropValue* value) { return value->value == edited.value; });
  if (isSame && !isCommand && ShownText(row) == edited.value) return;
  if (edited.value != newText && row.pd->cvt->type == cStringType)
    box.Item(number).SetValue(edited.value);
  const std::vector<CtrlRec*> changed = recs;
  for (size_t i = 0; i < changed.size(); ++i) {
    row.values[i]->value = edited.value;
    if (onCommit) onCommit(*changed[i], *row.values[i]);
    if (isCommand) row.values[i]->value.clear();
  }
  if (onDone) onDone();
}

}  // namespace zendry
