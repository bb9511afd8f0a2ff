#include "frmedt/FormWriter.h"

#include <algorithm>
#include <array>

#include "base/ParseInt.h"
#include "frmedt/CtrlReg.h"
#include "frmedt/FormData.h"
#include "frmedt/FormGeometry.h"
#include "frmedt/PropClass.h"

namespace zendry {

namespace {

enum DockPosition { cNoDock, cTopDock, cBottomDock, cLeftDock, cRightDock, cFillDock };

// The statements of a docked control: the dock, and the size that it keeps.
struct DockRow {
  std::string_view option;
  std::string_view sizeName = {};
};
constexpr std::array<DockRow, 6> cDocks = {{{""},
                                            {"cTop", "height"},
                                            {"cBootom", "height"},
                                            {"cLeft", "width"},
                                            {"cRight", "width"},
                                            {"cFill"}}};

bool IsRoot(const CtrlRec& rec) {
  return rec.name == FormData::cRootName;
}

// A bound as the number that its control gets from it; empty if it isn't known.
std::string Bound(const CtrlRec& rec, std::string_view row) {
  const PropValue* prop = rec.FindValue(row);
  return !prop || prop->value.empty() ? std::string() : std::to_string(ParseInt(prop->value));
}

}  // namespace

FormGeometry WrittenGeometry(const CtrlRec& rec) {
  FormGeometry shown;
  if (!rec.classDef || rec.classDef->noBounds) return shown;
  shown.dock = ValueNumber(thePropDock, rec.ValueText("dock"));
  const std::string_view size = cDocks[shown.dock].sizeName;
  const bool isFree = shown.dock == cNoDock;
  if (isFree) {
    shown.left = Bound(rec, "left");
    shown.top = Bound(rec, "top");
  }
  if (isFree || size == "width") shown.width = Bound(rec, "width");
  if (isFree || size == "height") shown.height = Bound(rec, "height");
  // A form's place on the surface means nothing.
  const bool hasSize = !shown.width.empty() && !shown.height.empty();
  if (IsRoot(rec) && isFree && hasSize) shown.left = shown.top = "0";
  return shown;
}

void FormWriter::Begin(std::vector<std::string>& lines, size_t index, int indent) {
  out = &lines;
  next = std::min(index, lines.size());
  tabs.assign(std::clamp(indent, 0, cMostTabs), '\t');
}

void FormWriter::Emit(std::string_view text) {
  std::string line = tabs;
  line += text;
  line += "\r\n";
  out->insert(out->begin() + next++, std::move(line));
}

void FormWriter::WriteDecl(std::vector<std::string>& lines, size_t index) {
  Begin(lines, index, frm.declIndent);
  Emit("//!decl");
  std::string statement;
  std::string running;
  int count = 0;
  const auto close = [&] {
    if (!statement.empty()) Emit(statement + ';');
    statement.clear();
  };
  for (size_t i = 1; i < frm.controls.size(); ++i) {
    const CtrlRec& rec = *frm.controls[i];
    // What only statements name is declared elsewhere, or nowhere.
    if (rec.declClass.empty()) continue;
    if (!statement.empty() && rec.declClass == running && count < cNamesInStatement) {
      statement += ", " + rec.name;
      ++count;
      continue;
    }
    close();
    statement = rec.declClass + ' ' + rec.name;
    running = rec.declClass;
    count = 1;
  }
  close();
  Emit("//!end");
}

void FormWriter::WriteInit(std::vector<std::string>& lines, size_t index) {
  Begin(lines, index, frm.initIndent);
  Emit("//!init");
  for (const CtrlRec* rec : frm.controls) WriteControl(*rec);
  Emit("//!end");
}

std::vector<std::string> FormWriter::StatementsOf(const CtrlRec& rec) {
  std::vector<std::string> lines;
  Begin(lines, 0, frm.initIndent);
  WriteControl(rec);
  return lines;
}

void FormWriter::WriteControl(const CtrlRec& rec) {
  prefix = rec.name + (IsRoot(rec) ? '>' : '.');
  if (!IsRoot(rec)) Emit("//!<" + rec.className + '>');
  WriteRecord(rec);
  WriteEvents(rec);
  if (!rec.parent) return;
  if (IsRoot(*rec.parent))
    Emit("this->Add(&" + rec.name + ");");
  else
    Emit(rec.parent->name + ".Add(&" + rec.name + ");");
}

void FormWriter::WriteRecord(const CtrlRec& rec) {
  WriteBounds(rec);
  for (const PropValue& prop : rec.props) WriteValue(rec, prop);
  for (const std::string& statement : rec.kept) Emit(statement);
}

// Without a window a bound may not be known. Then it isn't written, so that the control keeps what
// it is made with.
void FormWriter::WriteBounds(const CtrlRec& rec) {
  const FormGeometry shown = WrittenGeometry(rec);
  const auto emitOne = [this](std::string_view row, const std::string& number) {
    if (!number.empty()) Emit(prefix + std::string(row) + " = " + number + ';');
  };
  if (shown.dock != cNoDock) {
    Emit(prefix + "dock = Dock::" + std::string(cDocks[shown.dock].option) + ';');
    emitOne("width", shown.width);
    emitOne("height", shown.height);
    return;
  }
  const bool hasPlace = !shown.left.empty() && !shown.top.empty();
  const bool hasSize = !shown.width.empty() && !shown.height.empty();
  const std::string place = shown.left + ", " + shown.top;
  const std::string size = shown.width + ", " + shown.height;
  if (hasPlace && hasSize) return Emit(prefix + "SetBounds(" + place + ", " + size + ");");
  if (hasPlace) {
    Emit(prefix + "SetLocation(" + place + ");");
  } else {
    emitOne("left", shown.left);
    emitOne("top", shown.top);
  }
  if (hasSize) {
    Emit(prefix + "SetSize(" + size + ");");
  } else {
    emitOne("width", shown.width);
    emitOne("height", shown.height);
  }
}

void FormWriter::WriteValue(const CtrlRec& rec, const PropValue& prop) {
  if (!prop.pd) {
    Emit(rec.name + '.' + prop.value + ';');
    return;
  }
  const std::string_view standard = prop.pd->defaultValue ? prop.pd->defaultValue : "";
  // An empty value means the default, too.
  const bool isSet = !prop.value.empty() && prop.value != standard;
  if (prop.pd->kind <= cHeightKind || !prop.pd->emit || !isSet) return;
  PropValue copy = prop;
  PropContext context{nullptr, &copy, 0, {}};
  prop.pd->cvt->ToSource(context);
  const std::string left = prefix + prop.pd->name;
  if (prop.pd->cvt->type < cItemsType) {
    Emit(left + " = " + context.text + ';');
    return;
  }
  for (size_t at = 0; at < context.text.size();) {
    const size_t end = context.text.find('\0', at);
    Emit(left + context.text.substr(at, end - at) + ';');
    at = end + 1;
  }
}

void FormWriter::WriteEvents(const CtrlRec& rec) {
  for (const EventBinding& bound : rec.events)
    if (!bound.handler.empty())
      Emit(prefix + bound.event + ".Add_H(this, &This::" + bound.handler + ");");
}

}  // namespace zendry
