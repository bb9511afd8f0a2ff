#include "frmedt/PropClass.h"

#include <algorithm>

#include "base/ParseInt.h"
#include "frmedt/FormData.h"

namespace zendry {

const PropClass thePropString(cStringType);
const PropClass thePropInteger(cIntegerType);
const PropClass thePropFloat(cFloatType);
const PropClass thePropExpression(cExpressionType);
const PropSel thePropBoolean("true|false");
const PropSel thePropDock("cNone|cTop|cBootom|cLeft|cRight|cFill", "Dock::");
const PropSel thePropBorder("cNone|cFixed3d|cStatic|cFrame|cRised", "BorderStyle::");
const PropSel thePropColor(
    "<default>|cBlack|cBlue|cCyan|cDarkGray|cGray|cGreen|cLightGray|cMagenta|cOrange|cPink|cRed|"
    "cWhite|cYellow|cWindow|cWindowText|cControl|cControlText|cControlShadow",
    "Color::");
const PropSel thePropIcon(
    "cNone|icoNew|icoOpen|icoOpenPrj|icoSave|icoSaveAll|icoCut|icoCopy|icoPaste|icoRedBall|icoGo|"
    "icoDesign|icoClear|icoBuild|icoNo|icoRun|icoPoint|icoIndex|icoCloseAll|icoStar|icoOk|"
    "icoCancel|icoColor|icoConvert|icoHome|icoEdit|icoFind|icoSetup|icoPrint|icoRetry|icoAdd|"
    "icoRemove|icoPicker|icoReplace|icoInfo|icoForward|icoBack|icoGreenBall|icoRedo|icoUndo|"
    "icoNet|icoQuit|icoUp|icoDown",
    "Icons::");
const PropSel thePropAlign("cLeft|cCenter|cRight", "Align::");
const PropSel thePropDataType("cNormal|cInteger|cFloat|cUpperCase|cPassword", "Edit::");
const PropSel thePropButtonKind(
    "cNone|cOk|cCancel|cNo|cOpen|cSave|cPrint|cRun|cGo|cEdit|cSetup|cClose", "Button::");
const PropSel thePropOrientation("cHorizontal|cVertical", "");
const PropSel thePropDialLabels("cNone|cMinMax|cView", "DialCtrl::");
const PropSel thePropWindowType("cNormal|cToolWindow|cNoTitleBar", "Form::");
const PropCmd thePropPages;
const PropFont thePropFont;
const PropStrItems thePropStrItems;
const PropTbItems thePropTbItems;

namespace {

constexpr std::string_view cAdd = "Add(";
constexpr std::string_view cItemEnd = "\r\n";

bool IsBlank(char c) {
  return c == ' ' || c == '\t';
}

void TrimLeft(std::string_view& text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
}

// Removes the text up to the first of these characters, and the character. False without one.
bool CutThrough(std::string_view& text, char c) {
  const size_t place = text.find(c);
  if (place == std::string_view::npos) return false;
  text.remove_prefix(place + 1);
  TrimLeft(text);
  return true;
}

}  // namespace

void PropClass::ToValue(PropContext& context) const {
  std::string& value = context.prop->value;
  const std::string& text = context.text;
  if (type != cStringType)
    value = text;
  else if (text.starts_with('"'))
    value = text.size() < 2 ? std::string() : text.substr(1, text.size() - 2);
}

bool PropClass::ToSource(PropContext& context) const {
  const std::string& value = context.prop->value;
  context.text = type == cStringType ? '"' + value + '"' : value;
  return true;
}

void PropSel::ToValue(PropContext& context) const {
  const bool hasPrefix = prefix && context.text.starts_with(prefix);
  context.prop->value =
      hasPrefix ? context.text.substr(std::string_view(prefix).size()) : context.text;
}

bool PropSel::ToSource(PropContext& context) const {
  context.text = (prefix ? prefix : "") + context.prop->value;
  return true;
}

void PropItems::ToValue(PropContext& context) const {
  std::string_view text = context.text;
  if (!text.starts_with(cAdd)) return;
  text.remove_prefix(cAdd.size());
  TrimLeft(text);
  if (!quote.empty() && text.starts_with(quote)) text.remove_prefix(quote.size());
  while (!text.empty() && (IsBlank(text.back()) || text.back() == ')')) text.remove_suffix(1);
  if (!quote.empty() && text.ends_with(quote)) text.remove_suffix(quote.size());
  std::string item(text);
  std::erase(item, '\0');  // it ends the pieces of a list's source
  context.prop->value += item;
  context.prop->value += cItemEnd;
}

bool PropItems::ToSource(PropContext& context) const {
  context.text.clear();
  for (const std::string& item : SplitItems(context.prop->value)) {
    context.text += '.';
    context.text += cAdd;
    context.text += quote;
    context.text += item;
    context.text += quote;
    context.text += ')';
    context.text += '\0';
  }
  return true;
}

std::vector<std::string> SplitOptions(std::string_view options) {
  std::vector<std::string> result;
  while (true) {
    const size_t end = options.find('|');
    result.emplace_back(options.substr(0, end));
    if (end == std::string_view::npos) return result;
    options.remove_prefix(end + 1);
  }
}

int OptionPosition(std::string_view options, std::string_view value) {
  const size_t place = options.find(value);
  if (place == std::string_view::npos) return 0;
  return static_cast<int>(std::count(options.begin(), options.begin() + place, '|'));
}

std::vector<std::string> SplitItems(std::string_view value) {
  std::vector<std::string> items;
  while (!value.empty()) {
    const size_t end = value.find(cItemEnd);
    items.emplace_back(value.substr(0, end));
    if (end == std::string_view::npos) break;
    value.remove_prefix(end + cItemEnd.size());
  }
  return items;
}

int ValueNumber(const PropClass& type, std::string_view value) {
  if (type.type == cIntegerType) return ParseInt(value);
  if (type.type == cSelectionType) return OptionPosition(type.ref, value);
  return 0;
}

FontText FontText::Parse(std::string_view text) {
  FontText font;
  if (text.starts_with('(')) return font;
  CutThrough(text, '(');
  TrimLeft(text);
  if (text.starts_with('"')) {
    const size_t end = text.find('"', 1);
    if (end == std::string_view::npos) return font;
    if (end > 2) font.name = text.substr(1, end - 2);
    if (!CutThrough(text, ',')) return font;
  }
  size_t end = text.find(',');
  if (end == std::string_view::npos) end = text.find(')');
  if (end == std::string_view::npos) return font;
  font.size = ParseInt(text.substr(0, end));
  const std::string_view rest = text.substr(end);
  font.isBold = rest.find("cBold") != std::string_view::npos;
  font.isItalic = rest.find("cItalic") != std::string_view::npos;
  return font;
}

}  // namespace zendry
