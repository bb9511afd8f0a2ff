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
 public:
  explicit PageSetupDlg(const PageSetup& shown);

  // The chosen setup, after Run has answered cOk; it is usable.
  const PageSetup& Chosen() const { return setup; }

 private:
  struct Number {
    Label label;
    SpinEdit field;
  };
  struct Switch {
    CheckBox box;
    bool PageSetup::*isOn = nullptr;
  };

  void PlaceNumber(Number& number, const char* caption, int row, int column);
  void PlaceSwitches();
  void OnDestroyed(NotifyArgs& args);

  PageSetup setup;
  const bool isMetric;
  Label paperLabel, marginsLabel;
  ComboBox paper;
  std::array<Number, 4> margins;
  Number size;
  std::array<Switch, 6> switches;
  Button ok, cancel;
};

// Asks for the page setup of the program; false if nothing has changed.
bool AskPageSetup();

}  // namespace mavro
