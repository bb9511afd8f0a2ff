#pragma once

#include <mavro>

#include <string>

// Appends a line to the log that the test reads.
void Log(const std::string& line);

// A form of an edit, a memo and the buttons OK and, if wanted, Cancel. It logs what happens to it.
// Keys: F2 opens another one over it, F8 keeps Tab from moving the focus, F9 logs its result.
class Dialog : public Form {
 public:
  typedef Dialog This;
  Dialog(const std::string& title, bool withCancel);

 private:
  void PreviewKey(NotifyArgs& args);
  void EditKey(KeyArgs& args);
  void EditChanged(NotifyArgs& args);
  void MemoChanged(NotifyArgs& args);
  void PressOk(NotifyArgs& args);
  void Destroyed(NotifyArgs& args);

  Edit edit;
  Memo memo;
  Button ok, cancel;
  bool keepsTab = false;
};
