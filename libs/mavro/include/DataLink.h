#pragma once

#include <string>

namespace mavro {

class ButtonGroup;
class CheckBox;
class Control;

// A value of the program that a control shows and changes, as text.
class DataSource {
 public:
  // Reads the value into `out`, and takes what the control holds.
  virtual void Get(std::string& out) = 0;
  virtual void Set(const std::string& value) = 0;

 protected:
  ~DataSource() = default;
};

// Ties one control to one value: copied into the control just before its window is made, and back
// when the form closes with OK. A control has one link at most; a later one replaces it.
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

// The link of a check box: checked is "1", anything else is not; saved as "1" or "0".
class CheckDataLink : public DataLink {
 public:
  explicit CheckDataLink(CheckBox* box);
  void Load() override;
  void Save() override;
};

// The link of a radio or check group: what is selected, as a decimal number.
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
