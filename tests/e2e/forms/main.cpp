#include <fstream>

#include "Dialog.h"

// The program that the test of forms under a window manager builds, drives by keys and watches
// through its log, whose file is the first argument.

namespace {

std::ofstream theLog;

}  // namespace

void Log(const std::string& line) {
  theLog << line << std::endl;
}

class MainForm : public Form {
 public:
  typedef MainForm This;
  MainForm() { Initialize(); }

 private:
  enum Keys { cF2 = 0x71, cF3, cF4, cF5 };

  void Initialize() {
    text = "Forms";
    SetBounds(60, 60, 420, 260);
    onShow.Add_H(this, &This::ShownFirst);
    onShow.Add_H(this, &This::ShownSecond);
    onClose.Add_H(this, &This::Closing);
    onKeyPreview.Add_H(this, &This::PreviewKey);
    bar.dock = Dock::cTop;
    bar.images = 1;
    bar.AddButton(Icons::icoNew, "New");
    bar.AddButton(Icons::icoOpen, "Open");
    bar.AddSeparator();
    bar.AddButton(Icons::icoRun, "Run");
    Add(&bar);
    save.SetBounds(20, 60, 130, 40);
    save.text = "Save";
    save.icon = Icons::icoSave;
    Add(&save);
    name.SetBounds(20, 120, 200, 28);
    Add(&name);
  }

  void ShownFirst(NotifyArgs&) { Log("shown, first handler"); }
  void ShownSecond(NotifyArgs&) { Log("shown, second handler"); }

  void Closing(NotifyArgs& args) {
    if (!refuses) return;
    args.value = 0;
    Log("refused with " + std::string(name.text) + " in state " + std::to_string(name.state));
  }

  void PreviewKey(NotifyArgs& args) {
    if (args.value == cF2) RunModal("Modal", true);
    if (args.value == cF4) RunModal("Plain", false);
    if (args.value == cF5) refuses = !refuses;
    if (args.value == cF5) Log(refuses ? "refuses" : "allows");
    if (args.value != cF3) return;
    second.Show();
    Log("second shown, forms " + std::to_string(formCount));
  }

  void RunModal(const char* title, bool withCancel) {
    Dialog dialog(title, withCancel);
    Log("modal gave " + std::to_string(dialog.Run(true)));
  }

  ToolBar bar;
  Button save;
  Edit name;
  Dialog second{"Second", false};
  bool refuses = false;
};

int Application::Main(const ArgumentList& args) {
  theLog.open(args.at(0));
  MainForm mfrm;
  mfrm.Show();
  Log("main returned");
  return 0;
}
