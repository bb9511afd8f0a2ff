#pragma once

#include <array>

#include "Button.h"
#include "Form.h"
#include "Label.h"
#include "ListBox.h"
#include "PageSetup.h"
#include "SpinEdit.h"

namespace mavro {

// Asks how pages shall look.
class PageSetupDlg : public Form {
  typedef PageSetupDlg This;

 public:
  explicit PageSetupDlg(const PageSetup& shown);

  // The chosen setup, after Run has answered cOk; it is usable.
  const PageSetup& Chosen() const { return setup; }

 private:
  struct Margin {
    SpinEdit* field;
    int PageSetup::*length;
  };
  struct Switch {
    CheckBox* box;
    bool PageSetup::*isOn;
  };

  // clang-format off
	//!decl
	Label paperLabel;
	ComboBox paper;
	Label marginsLabel, leftLabel;
	SpinEdit leftMargin;
	Label rightLabel;
	SpinEdit rightMargin;
	Label topLabel;
	SpinEdit topMargin;
	Label bottomLabel;
	SpinEdit bottomMargin;
	Label sizeLabel;
	SpinEdit letterSize;
	CheckBox landscape, pageHeader, pageFooter, lineNumbers, asFolded;
	CheckBox colours;
	Button okButton, cancel;
	//!end
  // clang-format on

  void Initialize();
  void Show();
  void OnDestroyed(NotifyArgs& args);

  PageSetup setup;
  const bool isMetric;
  const std::array<Margin, 4> margins;
  const std::array<Switch, 6> switches;
};

// Asks for the page setup of the program; false if nothing has changed.
bool AskPageSetup();

}  // namespace mavro
