#pragma once

#include <mavro>
#include <string>
#include <vector>

#include "help/HelpIndex.h"

namespace zendry {

// Where the indexes are.
struct HelpFolders {
  std::string installed;
  std::string users;
};

// Shows what the help indexes say about a word. The indexes are read when it is first shown.
class HelpWindow : public mavro::Form {
 public:
  explicit HelpWindow(HelpFolders theFolders);

  // Shows the window. A word is searched for in all modules; entries of `firstClass` go first.
  // Null: the window shows what it showed before.
  void showHelp(const char* word, const std::string& firstClass = {});
  // Shows the page for the word of the search field in the chosen module.
  void Search() { SearchFor(ChosenModule(), findEdit.text, ""); }

  mavro::Panel left;
  mavro::Label findLabel;
  mavro::Edit findEdit;
  mavro::Button searchButton;
  mavro::Label moduleLabel;
  mavro::ListBox modules;
  mavro::RichView view;
  mavro::Panel bottom;
  mavro::Button closeButton;

 private:
  void PlaceOnScreen();
  void EnsureIndex();
  std::string ChosenModule() const;
  void SearchFor(const std::string& module, const std::string& word, const std::string& firstClass);
  std::string Greeting() const;

  void OnSearch(mavro::NotifyArgs& args);
  void OnModuleChosen(mavro::NotifyArgs& args);
  void OnLink(mavro::ItemArgs& args);
  void OnLeftResized(mavro::NotifyArgs& args);
  void OnBottomResized(mavro::NotifyArgs& args);

  const HelpFolders folders;
  HelpIndex index;
  bool isRead = false;
  bool isPlaced = false;
  std::vector<std::string> offered;  // the names behind the links of the page
};

}  // namespace zendry
