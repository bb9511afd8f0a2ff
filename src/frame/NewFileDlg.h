#pragma once

#include <mavro>
#include <string>

namespace zendry {

// The files to create for a new name.
enum class NewFileKind { cModule = 0, cHeaderOnly = 1, cSourceOnly = 2 };

// The choices of the user.
struct NewFileWish {
  std::string folder;
  std::string name;  // without an extension
  NewFileKind kind = NewFileKind::cModule;
  bool append = true;  // to the project
};

// Asks for folder, name and kind of a new file.
class NewFileDlg : public mavro::Form {
  typedef NewFileDlg This;

 public:
  // clang-format off
	//!decl
	mavro::Label pathLabel;
	mavro::Edit pathEdit;
	mavro::Button browse;
	mavro::Label nameLabel;
	mavro::Edit nameEdit;
	mavro::CheckBox append;
	mavro::RadioGroup action;
	mavro::Button okButton, cancel;
	//!end
  // clang-format on

  // `newWish` has the initial values; it gets the user's choices when the dialog closes with OK.
  NewFileDlg(const std::string& title, NewFileWish& newWish);

 private:
  // A text of the wish as the data source of a dialog field.
  class TextSource final : public mavro::DataSource {
   public:
    explicit TextSource(std::string& itsText) : shown(itsText) {}
    void Get(std::string& out) override { out = shown; }
    void Set(const std::string& value) override { shown = value; }

   private:
    std::string& shown;
  };

  void Initialize();
  void OnBrowse(mavro::NotifyArgs& args);
  void OnDestroyed(mavro::NotifyArgs& args);

  NewFileWish& wish;
  TextSource folderSource, nameSource;
  mavro::DataLink pathLink, nameLink;
};

// Asks for a new file of the project, creates and opens it, and adds it to the project if the user
// wants that.
void AskForNewFile();

}  // namespace zendry
