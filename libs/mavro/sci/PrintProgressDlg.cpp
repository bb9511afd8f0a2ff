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
  text = "Printing";
  resizable = false;
  SetSize(320, 118);
  label.text = words();
  label.SetBounds(15, 14, 290, 18);
  bar.min = 0;
  bar.max = 100;
  bar.SetBounds(15, 40, 290, 20);
  bar.accessibleName = "Printed";
  cancel.kind = Button::cCancel;
  cancel.SetBounds(221, 76, 84, 30);
  for (Control* control : std::initializer_list<Control*>{&label, &bar, &cancel}) Add(control);
  focusControl = &cancel;
  timer.onTimer.Add_H(this, &PrintProgressDlg::OnTick);
  timer.Start(cTick);
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
