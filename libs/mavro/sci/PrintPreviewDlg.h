#pragma once

#include <memory>
#include <vector>

#include "Button.h"
#include "Form.h"
#include "Label.h"
#include "PaintBox.h"
#include "PreviewDevice.h"
#include "PrintCommands.h"
#include "Timer.h"

namespace mavro {

// Shows the pages of a job one by one, and prints them. Pages are laid out as they are needed, and
// counted while nothing else is to do.
class PrintPreviewDlg : public Form {
  typedef PrintPreviewDlg This;

 public:
  explicit PrintPreviewDlg(const PrintJob& itsJob);
  ~PrintPreviewDlg() override;

  // Shows a page, from 1; the last one for a greater number.
  void ShowPage(int number);
  int ShownPage() const { return shown; }
  // Draws the shown page into a bitmap.
  void DrawPage(const Bitmap& target);
  // The number of pages that are known, and whether there are more.
  int KnownPages() const { return static_cast<int>(starts.size()); }
  bool KnowsAll() const { return knowsAll; }

  // clang-format off
	//!decl
	Panel bar;
	Button print, save, setup, previous, next;
	Label pageLabel;
	Button close;
	PaintBox view;
	//!end
  // clang-format on

 private:
  void Initialize();
  void BeginJob();
  void EndJob();
  bool CountPage();
  void ShowNumber();
  void OnDraw(NotifyArgs& args);
  void OnKey(KeyArgs& args);
  void OnWheel(MouseArgs& args);
  void OnButton(NotifyArgs& args);
  void OnTick(NotifyArgs& args);
  void OnResized(NotifyArgs& args);

  const PrintJob job;
  SciPrinter pages;
  std::unique_ptr<PreviewDevice> device;
  std::vector<PrintLayout::Place> starts;  // of the known pages
  bool knowsAll = false;
  int shown = 1;
  Timer timer{this};
};

}  // namespace mavro
