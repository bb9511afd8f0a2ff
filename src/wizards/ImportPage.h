#pragma once

#include <mavro>
#include <string>

#include "project/Import.h"

namespace zendry {

// The page of the new project dialog that makes a project of existing files: a folder's, or those
// of a compile_commands.json. Each file has a tick.
class ImportPage : public mavro::TabPage {
 public:
  ImportPage();

  // Lists the files of a folder or of a compile_commands.json.
  void List(const std::string& path);
  // Lists what was typed into the field. False if it is listed already, or there is nothing.
  bool ListTyped();
  // True if there is something to make a project of.
  bool HasFiles() const { return import.error.empty() && !import.files.empty(); }
  const Import& Result() const { return import; }

  // Fired when other files have been listed.
  mavro::NotifyEvent onListed;

  mavro::Label sourceLabel;
  mavro::Edit source;
  mavro::Button folder, file;
  mavro::ListView files;
  mavro::Label mainLabel;
  mavro::ComboBox mains;
  mavro::Button details;
  mavro::Label sum;

 private:
  void OnFolder(mavro::NotifyArgs& args);
  void OnFile(mavro::NotifyArgs& args);
  void OnTyped(mavro::NotifyArgs& args);
  void OnRow(mavro::NotifyArgs& args);
  void OnKey(mavro::KeyArgs& args);
  void OnMain(mavro::ItemArgs& args);
  void OnDetails(mavro::NotifyArgs& args);
  void Toggle(int row);
  void Settle(const std::string& wantedMain);
  void ShowFiles();
  void ShowTicks();

  Import import;
  std::string listed;  // the path that was listed last
  bool isFolder = true;
};

}  // namespace zendry
