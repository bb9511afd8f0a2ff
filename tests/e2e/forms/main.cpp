#include <fstream>

#include "Dialog.h"

// The program that the tests of forms under a window manager build, drive by keys and watch
// through its log, whose file is the first argument. A second argument makes a modal dialog the
// first form.

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
    name.onChange.Add_H(this, &This::NameChanged);
    Add(&name);
  }

  void ShownFirst(NotifyArgs&) { Log("shown, first handler"); }
  void ShownSecond(NotifyArgs&) { Log("shown, second handler"); }

  void NameChanged(NotifyArgs&) { Log("name holds " + std::string(name.text)); }

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
  if (args.size() > 1) {
    Dialog dialog("First", true);
    Log("first gave " + std::to_string(dialog.Run(true)));
  }
  MainForm mfrm;
  mfrm.Show();
  Log("main returned");
  return 0;
}
