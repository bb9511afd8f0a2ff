#include "PrintProgressDlg.h"

#include <chrono>
#include <utility>

namespace mavro {

namespace {

constexpr int cTick = 1;                                     // milliseconds
constexpr auto cWorkInTick = std::chrono::milliseconds(30);  // then the window takes input

}  // namespace

PrintProgressDlg::PrintProgressDlg(std::function<bool()> itsStep, std::function<int()> itsShare,
                                   std::function<std::string()> itsWords)
    : step(std::move(itsStep)), share(std::move(itsShare)), words(std::move(itsWords)) {
  Initialize();
  label.text = words();
  focusControl = &cancel;
  timer.onTimer.Add_H(this, &PrintProgressDlg::OnTick);
  timer.Start(cTick);
}

void PrintProgressDlg::Initialize() {
  // clang-format off
	//!init
	this->SetBounds(0, 0, 320, 118);
	this->text = "Printing";
	this->resizable = false;
	//!<Label>
	label.SetBounds(15, 14, 290, 18);
	this->Add(&label);
	//!<ProgressBar>
	bar.SetBounds(15, 40, 290, 20);
	bar.min = 0;
	bar.max = 100;
	bar.accessibleName = "Printed";
	this->Add(&bar);
	//!<Button>
	cancel.SetBounds(221, 76, 84, 30);
	cancel.kind = Button::cCancel;
	this->Add(&cancel);
	//!end
  // clang-format on
}

void PrintProgressDlg::OnTick(NotifyArgs&) {
  const auto end = std::chrono::steady_clock::now() + cWorkInTick;
  bool hasMore = true;
  while (hasMore && std::chrono::steady_clock::now() < end) hasMore = step();
  bar.value = share();
  label.text = words();
  if (hasMore) return;
  timer.Stop();
  result = cOk;
  Close();
}

}  // namespace mavro
