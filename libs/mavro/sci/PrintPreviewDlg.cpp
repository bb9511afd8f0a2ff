#include "PrintPreviewDlg.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <string>

#include "Keys.h"
#include "PageSetup.h"
#include "PageSetupDlg.h"

namespace mavro {

namespace {

constexpr int cAround = 16;  // the page, in pixels
constexpr int cTick = 1;
constexpr auto cWorkInTick = std::chrono::milliseconds(20);

}  // namespace

PrintPreviewDlg::PrintPreviewDlg(const PrintJob& itsJob) : job(itsJob) {
  Initialize();
  text = "Print preview - " + job.title;
  focusControl = &view;
  timer.onTimer.Add_H(this, &PrintPreviewDlg::OnTick);
  BeginJob();
}

void PrintPreviewDlg::Initialize() {
  // clang-format off
	//!init
	this->SetBounds(0, 0, 900, 760);
	//!<Panel>
	bar.dock = Dock::cTop;
	bar.height = 46;
	bar.onResize.Add_H(this, &This::OnResized);
	this->Add(&bar);
	//!<Button>
	print.SetBounds(8, 8, 90, 30);
	print.text = "&Print...";
	print.onClick.Add_H(this, &This::OnButton);
	bar.Add(&print);
	//!<Button>
	save.SetBounds(106, 8, 130, 30);
	save.text = "Save as P&DF...";
	save.onClick.Add_H(this, &This::OnButton);
	bar.Add(&save);
	//!<Button>
	setup.SetBounds(244, 8, 130, 30);
	setup.text = "Page &set-up...";
	setup.onClick.Add_H(this, &This::OnButton);
	bar.Add(&setup);
	//!<Button>
	previous.SetBounds(382, 8, 90, 30);
	previous.text = "Pre&vious";
	previous.onClick.Add_H(this, &This::OnButton);
	bar.Add(&previous);
	//!<Button>
	next.SetBounds(480, 8, 90, 30);
	next.text = "&Next";
	next.onClick.Add_H(this, &This::OnButton);
	bar.Add(&next);
	//!<Label>
	pageLabel.SetBounds(578, 16, 150, 18);
	bar.Add(&pageLabel);
	//!<Button>
	close.SetBounds(802, 8, 90, 30);
	close.text = "&Close";
	close.kind = Button::cCancel;
	bar.Add(&close);
	//!<PaintBox>
	view.dock = Dock::cFill;
	view.accessibleName = "Page";
	view.onMouseWeel.Add_H(this, &This::OnWheel);
	view.onKeyDown.Add_H(this, &This::OnKey);
	view.onDraw.Add_H(this, &This::OnDraw);
	this->Add(&view);
	//!end
  // clang-format on
}

PrintPreviewDlg::~PrintPreviewDlg() {
  EndJob();
}

void PrintPreviewDlg::BeginJob() {
  device = Printing().preview(Usable(thePageSetup));
  TakeJob(pages, job);
  pages.Begin(*device);
  starts = {pages.NextPlace()};
  knowsAll = false;
  ShowPage(shown);
  timer.Start(cTick);
}

void PrintPreviewDlg::EndJob() {
  timer.Stop();
  pages.Cancel();
  device.reset();
}

// Lays out the last known page, to know where the next one starts; false at the end.
bool PrintPreviewDlg::CountPage() {
  if (knowsAll) return false;
  device->SetTarget({});
  pages.GoOn(starts.back(), KnownPages());
  knowsAll = !pages.NextPage();
  if (!knowsAll) starts.push_back(pages.NextPlace());
  return !knowsAll;
}

void PrintPreviewDlg::ShowPage(int number) {
  number = std::max(1, number);
  while (KnownPages() < number && CountPage()) {
  }
  shown = std::min(number, KnownPages());
  ShowNumber();
  view.Redraw();
}

void PrintPreviewDlg::ShowNumber() {
  pageLabel.text = "Page " + std::to_string(shown) + " of " + std::to_string(KnownPages()) +
                   (knowsAll ? "" : " ...");
  previous.enabled = shown > 1;
  next.enabled = !knowsAll || shown < KnownPages();
}

void PrintPreviewDlg::DrawPage(const Bitmap& target) {
  device->SetTarget(target);
  pages.GoOn(starts[static_cast<size_t>(shown - 1)], shown);
  pages.NextPage();
}

// The page is as large as the window lets it be, on the ground of the desktop.
void PrintPreviewDlg::OnDraw(NotifyArgs&) {
  Graphics& canvas = view.BackBuffer();
  if (!canvas.IsOpen()) return;
  const int width = view.width, height = view.height;
  canvas.FillRect({0, 0, width, height}, Color::cControl);
  const double scale = std::min(double(width - 2 * cAround) / pages.pageWidth,
                                double(height - 2 * cAround) / pages.pageHeight);
  const int w = static_cast<int>(pages.pageWidth * scale);
  const int h = static_cast<int>(pages.pageHeight * scale);
  if (w < 1 || h < 1) return;
  const double ratio = canvas.PixelRatio();
  const Bitmap page(static_cast<int>(std::lround(w * ratio)),
                    static_cast<int>(std::lround(h * ratio)), ratio);
  if (page.IsEmpty()) return;
  DrawPage(page);
  const int x = (width - w) / 2, y = (height - h) / 2;
  canvas.FillRect({x - 1, y - 1, w + 2, h + 2}, Color::cControlShadow);
  canvas.DrawBitmap(page, {x, y, w, h});
}

void PrintPreviewDlg::OnKey(KeyArgs& args) {
  struct Step {
    int key, by;
  };
  constexpr int cFar = 1 << 20;
  for (const auto& [key, by] : {Step{Key::cPageUp, -1},
                                {Key::cPageDown, 1},
                                {Key::cHome, -cFar},
                                {Key::cEnd, cFar},
                                {Key::cUp, -1},
                                {Key::cDown, 1},
                                {Key::cLeft, -1},
                                {Key::cRight, 1}}) {
    if (args.key != key) continue;
    ShowPage(shown + by);
    args.handled = true;
  }
}

void PrintPreviewDlg::OnWheel(MouseArgs& args) {
  if (args.wheel != 0) ShowPage(shown + (args.wheel < 0 ? 1 : -1));
}

void PrintPreviewDlg::OnButton(NotifyArgs& args) {
  if (args.sender == &previous) return ShowPage(shown - 1);
  if (args.sender == &next) return ShowPage(shown + 1);
  if (args.sender == &print) {
    PrintEditor(job);
  } else if (args.sender == &save) {
    ExportPdf(job);
  } else if (AskPageSetup()) {
    EndJob();
    BeginJob();
  }
}

void PrintPreviewDlg::OnTick(NotifyArgs&) {
  const auto end = std::chrono::steady_clock::now() + cWorkInTick;
  while (std::chrono::steady_clock::now() < end && CountPage()) {
  }
  ShowNumber();
  if (knowsAll) timer.Stop();
}

// The button stays at the right end of the bar.
void PrintPreviewDlg::OnResized(NotifyArgs&) {
  close.SetLocation(bar.width - print.left - close.width, print.top);
}

}  // namespace mavro
