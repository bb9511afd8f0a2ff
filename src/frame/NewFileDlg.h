#pragma once

#include <mavro>
#include <string>

namespace zendry {

// What is to be made of a new name.
enum class NewFileKind { cModule = 0, cHeaderOnly = 1, cSourceOnly = 2 };

// What the user has asked for.
struct NewFileWish {
  std::string folder;
  std::string name;  // without an extension
  NewFileKind kind = NewFileKind::cModule;
  bool append = true;  // to the project
};

// Asks for folder, name and kind of a file that is to be made.
class NewFileDlg : public mavro::Form {
 public:
  // `newWish` is what is shown first; it takes the answer when the dialog closes with OK.
  NewFileDlg(const std::string& title, NewFileWish& newWish);

 private:
  // A text of the wish as a dialog field's source.
  class TextSource final : public mavro::DataSource {
   public:
    explicit TextSource(std::string& itsText) : shown(itsText) {}
    void Get(std::string& out) override { out = shown; }
    void Set(const std::string& value) override { shown = value; }

   private:
    std::string& shown;
  };

  void OnBrowse(mavro::NotifyArgs& args);
  void OnDestroyed(mavro::NotifyArgs& args);

  NewFileWish& wish;
  TextSource folderSource, nameSource;
  mavro::Label pathLabel, nameLabel;
  mavro::Edit pathEdit;
  mavro::Button browse;
  mavro::Edit nameEdit;
  mavro::CheckBox append;
  mavro::RadioGroup action;
  mavro::Button ok, cancel;
  mavro::DataLink pathLink, nameLink;
};

// Asks for a new file of the project, makes it, opens it and adds it, as the user wants.
void AskForNewFile();

}  // namespace zendry
