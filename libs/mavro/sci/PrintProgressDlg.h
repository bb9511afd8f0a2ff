#pragma once

#include <functional>
#include <string>

#include "Button.h"
#include "Form.h"
#include "Label.h"
#include "ProgressBar.h"
#include "Timer.h"

namespace mavro {

// Prints page after page, shows how far the job is and lets the user cancel it.
class PrintProgressDlg : public Form {
  typedef PrintProgressDlg This;

 public:
  // `itsStep` prints a page and is false after the last one; `itsShare` is what has been printed,
  // of 100; `itsWords` say where the job is.
  PrintProgressDlg(std::function<bool()> itsStep, std::function<int()> itsShare,
                   std::function<std::string()> itsWords);

  // True if all pages have been printed, false if the user has cancelled.
  bool PrintAll() { return Run(true) == cOk; }

  // clang-format off
	//!decl
	Label label;
	ProgressBar bar;
	Button cancel;
	//!end
  // clang-format on

 private:
  void Initialize();
  void OnTick(NotifyArgs& args);

  const std::function<bool()> step;
  const std::function<int()> share;
  const std::function<std::string()> words;
  Timer timer{this};
};

}  // namespace mavro
