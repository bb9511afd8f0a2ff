#pragma once

#include <string>

namespace mavro {

class ButtonGroup;
class CheckBox;
class Control;

// A value of the program that a control shows and changes, as text.
class DataSource {
 public:
  // Get copies the value into `out`; Set stores the content of the control.
  virtual void Get(std::string& out) = 0;
  virtual void Set(const std::string& value) = 0;

 protected:
  ~DataSource() = default;
};

// Links one control to one value. The value is copied into the control just before its window is
// made, and back when the form closes with OK. A control has at most one link; a later one replaces
// it.
class DataLink {
 public:
  explicit DataLink(Control* linked);
  DataLink(const DataLink&) = delete;
  DataLink& operator=(const DataLink&) = delete;

  // From the value to the control, and back.
  virtual void Load();
  virtual void Save();

  DataSource* source = nullptr;  // not owned; without one the link does nothing
  Control* control;
};

// The link of a check box: "1" means checked, any other text means not checked; saved as "1" or
// "0".
class CheckDataLink : public DataLink {
 public:
  explicit CheckDataLink(CheckBox* box);
  void Load() override;
  void Save() override;
};

// The link of a radio or check group: the selection as a decimal number.
class GroupDataLink : public DataLink {
 public:
  explicit GroupDataLink(ButtonGroup* group);
  void Load() override;
  void Save() override;

  const int* selected;  // the group's own value
};

// Saves the links of a tree of controls, children before their parent.
void SaveDataLinks(Control* control);

}  // namespace mavro
