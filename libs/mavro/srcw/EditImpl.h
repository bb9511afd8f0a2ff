#pragma once

#include "Edit.h"
#include "NativeEdits.h"
#include "SysImpl.h"

namespace mavro {

// The platform half of edits of one line and of many.
class Edit::Impl : public SysImpl {
 public:
  Impl();

  void Create() override;
  void Destroy() override;
  void PrepareStyle() override;
  void OnCommand(int code, Param handle) override;
  // Enter commits a single line and is passed on.
  Param OnNotify(NotifyHeader* header) override;
  Param WndProc(unsigned message, Param wParam, Param lParam) override;

  void DataTypeChanged();
  void ReadOnlyChanged();
  void SelectAll();
  // Fires onValidate with true if the text suits. Returns the value that the handlers leave; false
  // if the control is gone.
  bool Valid();

  int dataType = cNormal;
  bool readOnly = false;

 protected:
  // Handles a notification code of the edit's window.
  virtual void OnEditCommand(int code);

 private:
  NativeEdit* Window() const { return static_cast<NativeEdit*>(hwnd); }
  // Validates the text that the user has typed since the last time; false if the control is gone.
  bool Commit();
  bool FireValidate(ItemArgs& args);

  bool edited = false;
  bool destroying = false;
};

class Memo::Impl : public Edit::Impl {
 public:
  void Create() override;
  void PrepareStyle() override;
  Param OnNotify(NotifyHeader* header) override;

  void Append(std::string_view added);
  void GoToLine(int line);
  void MarkLine(int line);
  int CaretLine() const;
  int CaretColumn() const;
  int LineCount() const;

 protected:
  void OnEditCommand(int code) override;

 private:
  NativeMemo* Window() const { return static_cast<NativeMemo*>(hwnd); }
  Memo& TheMemo() const { return *static_cast<Memo*>(owner); }

  int wantedLine = 1;  // where the caret goes once the window exists
  int markedLine = 0;
};

}  // namespace mavro
