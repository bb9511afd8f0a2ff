#include "frmedt/PropEditors.h"

#include <string>

#include "frmedt/CtrlReg.h"
#include "frmedt/FontPropDlg.h"
#include "frmedt/FormData.h"
#include "frmedt/ItemsDlg.h"
#include "frmedt/PropClass.h"
#include "frmedt/SourceNames.h"
#include "frmedt/ToolBarEditor.h"

namespace zendry {

namespace {

bool EditFont(std::string& value) {
  FontPropDlg dialog(value);
  return dialog.Ask(value);
}

// The items stand between quotes in the source.
bool EditStrings(std::string& value) {
  ItemsDlg dialog;
  std::string lines = value;
  if (!dialog.Ask(lines)) return false;
  value.clear();
  for (const std::string& item : SplitItems(lines)) value += BetweenQuotes(item) + "\r\n";
  return true;
}

bool EditToolBar(std::string& value) {
  ToolBarEditor dialog;
  return dialog.Ask(value);
}

struct EditorRow {
  const PropClass* type;
  bool (*edit)(std::string& value);
};

constexpr EditorRow cEditors[] = {
    {&thePropFont, EditFont}, {&thePropStrItems, EditStrings}, {&thePropTbItems, EditToolBar}};

}  // namespace

bool EditValue(PropContext& context) {
  for (const EditorRow& row : cEditors)
    if (row.type == context.prop->pd->cvt) return row.edit(context.prop->value);
  context.prop->value = context.text;
  return true;
}

}  // namespace zendry
