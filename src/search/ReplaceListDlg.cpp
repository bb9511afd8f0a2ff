#include "search/ReplaceListDlg.h"

#include <algorithm>

#include "Keys.h"
#include "base/ControlBytes.h"
#include "project/Project.h"

namespace zendry {

namespace {

constexpr int cMargin = 10;
constexpr int cButtonWidth = 92;
constexpr int cButtonHeight = 30;
constexpr int cTickWidth = 34;
constexpr int cFileWidth = 390;
constexpr int cCountWidth = 70;
constexpr size_t cMostShown = 40;
constexpr char cTicked[] = "\u2611";
constexpr char cNotTicked[] = "\u2610";

std::string Quoted(const std::string& text) {
  const std::string shown = MarkControlBytes(text.substr(0, cMostShown));
  return "\"" + shown + (text.size() > cMostShown ? "...\"" : "\"");
}

}  // namespace

ReplaceListDlg::ReplaceListDlg(const std::vector<FileHits>& newFiles, const std::string& what,
                               const std::string& with)
    : files(newFiles), ticked(newFiles.size(), true) {
  Initialize();
  question.text = "  Replace " + Quoted(what) + " by " + Quoted(with) + " in these files?";
  list.accessibleName = "Files with hits";
  list.AddColumn("", cTickWidth);
  list.AddColumn("file", cFileWidth);
  list.AddColumn("hits", cCountWidth);
  list.AddColumn("stay", cCountWidth);
  for (const FileHits& file : files)
    list.AddCells({cTicked, MarkControlBytes(theProject.MakeRelative(file.path)),
                   std::to_string(file.hits), file.missed > 0 ? std::to_string(file.missed) : ""});
  if (!files.empty()) list.selectedIndex = 0;
  focusControl = &list;
  ShowSum();
}

void ReplaceListDlg::Initialize() {
  using mavro::Button, mavro::Dock;
  // clang-format off
	//!init
	this->SetBounds(0, 0, 640, 400);
	this->text = "Repace in project";
	//!<Panel>
	above.dock = Dock::cTop;
	above.height = 6;
	this->Add(&above);
	//!<Label>
	question.dock = Dock::cTop;
	question.height = 24;
	this->Add(&question);
	//!<ListView>
	list.dock = Dock::cFill;
	list.showSelection = true;
	list.onClickRow.Add_H(this, &This::OnRow);
	list.onKeyDown.Add_H(this, &This::OnListKey);
	this->Add(&list);
	//!<Panel>
	buttons.dock = Dock::cBootom;
	buttons.height = 50;
	buttons.onResize.Add_H(this, &This::OnSizeChanged);
	this->Add(&buttons);
	//!<Button>
	all.SetBounds(10, 10, 92, 30);
	all.text = "&All";
	all.onClick.Add_H(this, &This::OnAll);
	buttons.Add(&all);
	//!<Button>
	none.SetBounds(112, 10, 92, 30);
	none.text = "&None";
	none.onClick.Add_H(this, &This::OnNone);
	buttons.Add(&none);
	//!<Button>
	replace.SetBounds(436, 10, 92, 30);
	replace.text = "Replace";
	replace.kind = Button::cOk;
	replace.onClick.Add_H(this, &This::OnReplace);
	buttons.Add(&replace);
	//!<Button>
	cancel.SetBounds(538, 10, 92, 30);
	cancel.kind = Button::cCancel;
	buttons.Add(&cancel);
	//!<Label>
	sum.dock = Dock::cBootom;
	sum.height = 24;
	this->Add(&sum);
	//!<Panel>
	gap.dock = Dock::cBootom;
	gap.height = 6;
	this->Add(&gap);
	//!end
  // clang-format on
}

std::vector<std::string> ReplaceListDlg::Choose() {
  std::vector<std::string> chosen;
  if (Run(true) != cOk) return chosen;
  for (size_t i = 0; i < files.size(); ++i)
    if (ticked[i]) chosen.push_back(files[i].path);
  return chosen;
}

void ReplaceListDlg::Tick(size_t row, bool on) {
  ticked[row] = on;
  list.SetCell(static_cast<int>(row), 0, on ? cTicked : cNotTicked);
}

void ReplaceListDlg::TickAll(bool on) {
  for (size_t i = 0; i < files.size(); ++i) Tick(i, on);
  ShowSum();
}

void ReplaceListDlg::ShowSum() {
  size_t hits = 0, missed = 0, count = 0;
  for (size_t i = 0; i < files.size(); ++i) {
    if (!ticked[i]) continue;
    hits += files[i].hits;
    missed += files[i].missed;
    ++count;
  }
  std::string said = "  " + std::to_string(hits) + (hits == 1 ? " hit in " : " hits in ") +
                     std::to_string(count) + (count == 1 ? " file" : " files");
  if (missed > 0) said += "; " + std::to_string(missed) + " more, which the search misses, stay";
  sum.text = said;
}

void ReplaceListDlg::OnRow(mavro::NotifyArgs& args) {
  if (args.value < 0 || args.value >= list.rowCount) return;
  const auto row = static_cast<size_t>(args.value);
  Tick(row, !ticked[row]);
  ShowSum();
}

void ReplaceListDlg::OnListKey(mavro::KeyArgs& args) {
  const int row = list.selectedIndex;
  if (args.key != mavro::Key::cSpace || row < 0) return;
  args.handled = true;
  Tick(static_cast<size_t>(row), !ticked[static_cast<size_t>(row)]);
  ShowSum();
}

void ReplaceListDlg::OnAll(mavro::NotifyArgs&) {
  TickAll(true);
}

void ReplaceListDlg::OnNone(mavro::NotifyArgs&) {
  TickAll(false);
}

void ReplaceListDlg::OnReplace(mavro::NotifyArgs&) {
  if (std::find(ticked.begin(), ticked.end(), true) != ticked.end()) return;
  StayOpen();
  sum.text = "  No file is ticked";
}

void ReplaceListDlg::OnSizeChanged(mavro::NotifyArgs&) {
  const int right = buttons.width - cMargin;
  const auto place = [](mavro::Button& button, int left) {
    button.SetBounds(left, cMargin, cButtonWidth, cButtonHeight);
  };
  place(all, cMargin);
  place(none, 2 * cMargin + cButtonWidth);
  place(replace, right - 2 * cButtonWidth - cMargin);
  place(cancel, right - cButtonWidth);
}

}  // namespace zendry
