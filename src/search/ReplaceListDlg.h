#pragma once

#include <string>
#include <vector>

#include "Button.h"
#include "Form.h"
#include "Label.h"
#include "ListView.h"
#include "search/FileReplace.h"

namespace zendry {

// Shows the files with hits before any is changed: each has a tick that can be taken away.
class ReplaceListDlg : public mavro::Form {
  typedef ReplaceListDlg This;

 public:
  ReplaceListDlg(const std::vector<FileHits>& newFiles, const std::string& what,
                 const std::string& with);

  // Shows the dialog; the paths of the ticked files, none if the user calls it off.
  std::vector<std::string> Choose();

 private:
  // clang-format off
	//!decl
	mavro::Panel above;
	mavro::Label question;
	mavro::ListView list;
	mavro::Panel buttons;
	mavro::Button all, none, replace, cancel;
	mavro::Label sum;
	mavro::Panel gap;
	//!end
  // clang-format on

  void Initialize();
  void OnRow(mavro::NotifyArgs& args);
  void OnListKey(mavro::KeyArgs& args);
  void OnAll(mavro::NotifyArgs& args);
  void OnNone(mavro::NotifyArgs& args);
  void OnReplace(mavro::NotifyArgs& args);
  void OnSizeChanged(mavro::NotifyArgs& args);
  void Tick(size_t row, bool on);
  void TickAll(bool on);
  void ShowSum();

  const std::vector<FileHits> files;
  std::vector<bool> ticked;
};

}  // namespace zendry
