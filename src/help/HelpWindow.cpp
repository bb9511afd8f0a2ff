#include "help/HelpWindow.h"

#include <algorithm>
#include <utility>

#include "help/HelpPage.h"

namespace zendry {

namespace {

constexpr int cWidth = 860;
constexpr int cHeight = 600;
constexpr int cLeftWidth = 230;
constexpr int cMargin = 10;
constexpr int cLabelHeight = 20;
constexpr int cEditHeight = 26;
constexpr int cButtonWidth = 90;
constexpr int cButtonHeight = 30;
constexpr int cTitleBar = 40;  // of the window manager, about
constexpr int cTwipsPerPixel = 15;
constexpr size_t cOffered = 3;
constexpr char cAllModules[] = "-- all --";

std::string PlainPage(const std::string& text) {
  return cHelpHeader + EscapedForRtf(text) + cHelpFooter;
}

}  // namespace

HelpWindow::HelpWindow(HelpFolders theFolders) : folders(std::move(theFolders)) {
  text = "Help";
  left.dock = mavro::Dock::cLeft;
  left.width = cLeftWidth;
  left.onResize.Add_H(this, &HelpWindow::OnLeftResized);
  findLabel.text = "find:";
  findEdit.accessibleName = "find:";
  searchButton.kind = mavro::Button::cOk;  // Enter presses it
  searchButton.text = "Search";
  searchButton.onClick.Add_H(this, &HelpWindow::OnSearch);
  moduleLabel.text = "Search in module:";
  modules.accessibleName = "Search in module:";
  modules.onDblClick.Add_H(this, &HelpWindow::OnModuleChosen);
  for (mavro::Control* control : std::initializer_list<mavro::Control*>{
           &findLabel, &findEdit, &searchButton, &moduleLabel, &modules})
    left.Add(control);
  view.dock = mavro::Dock::cFill;
  view.accessibleName = "Help";
  view.onLink.Add_H(this, &HelpWindow::OnLink);
  bottom.dock = mavro::Dock::cBootom;
  bottom.height = cButtonHeight + 2 * cMargin;
  bottom.onResize.Add_H(this, &HelpWindow::OnBottomResized);
  closeButton.kind = mavro::Button::cCancel;  // Escape presses it
  closeButton.text = "Close";
  bottom.Add(&closeButton);
  Add(&left);
  Add(&view);
  Add(&bottom);
  focusControl = &findEdit;
}

void HelpWindow::showHelp(const char* word, const std::string& firstClass) {
  EnsureIndex();
  if (!std::exchange(isPlaced, true)) PlaceOnScreen();
  Show();
  if (!word) {
    findEdit.Focus();
    return findEdit.SelectAll();
  }
  findEdit.text = word;
  modules.selectedIndex = 0;
  SearchFor("", word, firstClass);
}

// In the middle of the screen, and not beyond it. Later the window comes back where it was.
void HelpWindow::PlaceOnScreen() {
  const mavro::Rect screen = mavro::ScreenArea(nullptr);
  const int wide = std::min(cWidth, screen.width - 2 * cMargin);
  const int high = std::min(cHeight, screen.height - cTitleBar - 2 * cMargin);
  SetBounds(screen.left + (screen.width - wide) / 2, screen.top + (screen.height - high) / 2, wide,
            high);
}

void HelpWindow::EnsureIndex() {
  if (std::exchange(isRead, true)) return;
  index.ReadFolders(folders.installed, folders.users);
  modules.items.Add(cAllModules);
  for (const std::string& module : index.Modules()) modules.items.Add(module);
  modules.selectedIndex = 0;
  view.text = Greeting();
}

std::string HelpWindow::Greeting() const {
  if (index.Topics().empty())
    return PlainPage("No help index was found in " + folders.installed + " or " + folders.users +
                     ".");
  return PlainPage("Type a name, or choose a module, and press Search.\n\n" + index.Extra());
}

std::string HelpWindow::ChosenModule() const {
  const int row = modules.selectedIndex;
  return row > 0 ? index.Modules()[static_cast<size_t>(row) - 1] : std::string();
}

void HelpWindow::SearchFor(const std::string& module, const std::string& word,
                           const std::string& firstClass) {
  offered.clear();
  if (module.empty() && word.empty()) {
    view.text = Greeting();
    return;
  }
  HelpPage page = search(index, {module, word, firstClass}, view.width * cTwipsPerPixel);
  if (!page.found) {
    if (!word.empty()) offered = index.Nearest(word, cOffered);
    page.rtf = NotFoundPage(word, module, offered);
  }
  view.text = page.rtf;
}

void HelpWindow::OnSearch(mavro::NotifyArgs&) {
  StayOpen();
  Search();
}

void HelpWindow::OnModuleChosen(mavro::NotifyArgs&) {
  Search();
}

void HelpWindow::OnLink(mavro::ItemArgs& args) {
  const int number = NumberOfHelpLink(args.text);
  if (number < 0 || static_cast<size_t>(number) >= offered.size()) return;
  const std::string word = offered[static_cast<size_t>(number)];
  showHelp(word.c_str());
}

void HelpWindow::OnLeftResized(mavro::NotifyArgs&) {
  const int width = left.width - 2 * cMargin;
  int top = cMargin;
  findLabel.SetBounds(cMargin, top, width, cLabelHeight);
  top += cLabelHeight;
  findEdit.SetBounds(cMargin, top, width, cEditHeight);
  top += cEditHeight + cMargin;
  searchButton.SetBounds(cMargin, top, cButtonWidth, cButtonHeight);
  top += cButtonHeight + cMargin;
  moduleLabel.SetBounds(cMargin, top, width, cLabelHeight);
  top += cLabelHeight;
  modules.SetBounds(cMargin, top, width, std::max(left.height - top - cMargin, 0));
}

void HelpWindow::OnBottomResized(mavro::NotifyArgs&) {
  closeButton.SetBounds(bottom.width - cMargin - cButtonWidth, cMargin, cButtonWidth,
                        cButtonHeight);
}

}  // namespace zendry
