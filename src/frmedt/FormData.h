#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Object.h"

namespace mavro {
class Control;
}

namespace zendry {

class CtrlClass;
struct PropDef;

// The value of a property. Without a row it is a raw entry: a statement that no row fits, whole
// but for the control's name before it.
struct PropValue {
  const PropDef* pd = nullptr;
  std::string value;

  friend bool operator==(const PropValue&, const PropValue&) = default;
};

// An event and the method that handles it; without one it is not bound.
struct EventBinding {
  std::string event;
  std::string handler;

  friend bool operator==(const EventBinding&, const EventBinding&) = default;
};

// A control of a form.
struct CtrlRec : mavro::object {
  // Sets the class and appends an empty value for each of its rows. Once for each record.
  void SetClass(const CtrlClass& newClass);
  // Gives the row of that name what the text of its statement tells. Without such a row the
  // statement becomes a raw entry.
  void SetProperty(std::string_view property, const std::string& text);
  // The value of a row; null without such a row. Raw entries are not found.
  PropValue* FindValue(std::string_view property);
  const PropValue* FindValue(std::string_view property) const;
  // The text of a row's value: its default if it is empty, empty without such a row.
  std::string ValueText(std::string_view property) const;
  // Sets the text of a row's value. False without such a row.
  bool SetValueText(std::string_view property, std::string text);
  // Gives each empty value the default of its row, except geometry, up to the first raw entry.
  void FillDefaults();
  // The handler that is bound last to an event; empty without one.
  std::string HandlerOf(std::string_view event) const;

  unsigned index = 0;              // place in `controls` when it was made
  mavro::Control* ctrl = nullptr;  // on the surface, which owns it; null without a window
  CtrlRec* parent = nullptr;       // null if no statement adds it to anything
  std::string className;           // the registered class
  std::string declClass;           // the class in the declaration
  // Null as long as neither class is known. Such a control can't be shown; its statements are
  // in `kept`, and the writer writes them as they are.
  const CtrlClass* classDef = nullptr;
  std::string name;
  bool hasAdd = false;
  bool createFailed = false;     // its children can't be made either
  std::vector<PropValue> props;  // one for each row of the class, then raw entries
  std::vector<EventBinding> events;
  std::vector<std::string> kept;  // statements of a control whose class isn't known
};

// A method of the form's class that may handle events.
struct FormHandler {
  std::string name;
  std::string argType;  // class of its argument

  friend bool operator==(const FormHandler&, const FormHandler&) = default;
};

// A message about what was read; the command shows it.
struct FormReport {
  std::string text;
  int line = -1;     // in the lines that were read, from 0; -1 if it belongs to none
  std::string path;  // of the file, where that is known

  friend bool operator==(const FormReport&, const FormReport&) = default;
};

// The model of a form. It is read from the two regions of a class and written back by FormWriter.
class FormData {
 public:
  // Name of the form itself: "this->" loses its last character when a line is cut into tokens.
  static constexpr std::string_view cRootName = "this-";

  FormData();
  FormData(const FormData&) = delete;
  FormData& operator=(const FormData&) = delete;

  // Read a region: its lines from the one with the opening marker up to, but not including, the one
  // with the closing marker, each with its line end. The declarations go first.
  void ReadDecl(const std::vector<std::string>& lines);
  void ReadInit(const std::vector<std::string>& lines);
  // False, with a report, if a control is in no parent or in itself: such a form isn't opened.
  bool CheckParents();

  // A record by its name, from the first control on; null without one. Find(cRootName) is null.
  CtrlRec* Find(std::string_view name) const;
  // The record of that name, the form's included; else a new one of that class.
  CtrlRec& FindOrAdd(std::string_view name, std::string_view className);
  // A new control of a registered class in a container, with a name of its own, at the end.
  CtrlRec& AddControl(const CtrlClass& newClass, CtrlRec& parent, std::string_view name);
  // The class's name with a small first letter and the number after the largest in use.
  std::string UniqueName(std::string_view className) const;
  // Words that say why a control can't have that name; empty if it can. `rec`: the control itself.
  std::string NameProblem(std::string_view name, const CtrlRec* rec) const;
  // Removes a record and all that are in it, and destroys them.
  void DeleteRecord(CtrlRec& rec);
  // The records whose parent it is, in order.
  std::vector<CtrlRec*> ChildrenOf(const CtrlRec& rec) const;

  int declIndent = 0;  // tab characters before the lines of the declaration region
  int initIndent = 0;
  CtrlRec root;  // the form itself
  std::vector<FormHandler> handlers;
  // All records in the order of the source; the first is the form. Whoever reorders them keeps it
  // first.
  std::vector<CtrlRec*> controls;
  std::vector<FormReport> reports;  // what reading had to tell

 private:
  friend class FormReader;

  CtrlRec& Append(std::string_view name, std::string_view className);

  std::vector<std::unique_ptr<CtrlRec>> owned;
};

// True if two models hold the same: what the writer's text depends on.
bool SameForm(const FormData& left, const FormData& right);

}  // namespace zendry
