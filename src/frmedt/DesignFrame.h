#pragma once

#include <functional>
#include <mavro>
#include <string>
#include <vector>

#include "frmedt/EventBox.h"
#include "frmedt/FormEditor.h"
#include "frmedt/FormHistory.h"
#include "frmedt/PropBox.h"
#include "frmedt/ToolBox.h"

namespace zendry {

// Commands of the designer's keys; those of the tool bar are AlignCommand and these.
enum DesignCommand {
  cSaveAndCloseCommand = 0,
  cDesignUndoCommand = 12,
  cDesignRedoCommand = 13,
  cTabOrderCommand = 14,
  cPreviewCommand = 15,
  cMoveLeftCommand = 800,
  cMoveRightCommand = 801,
  cMoveUpCommand = 802,
  cMoveDownCommand = 803,
  cNarrowerCommand = 804,
  cWiderCommand = 805,
  cLowerCommand = 806,
  cTallerCommand = 807,
  cDeleteControlsCommand = 808,
  cCutControlsCommand = 810,
  cCopyControlsCommand = 811,
  cPasteControlsCommand = 812,
  cDuplicateControlsCommand = 813,
  cSelectAllControlsCommand = 814
};

// The window that a form is designed in: the surface, the toolbox, and the pages with properties
// and events. It runs modally and ends with the lines of both regions.
class DesignFrame : public mavro::Form, private DesignHost {
 public:
  explicit DesignFrame(FormData& itsForm);
  ~DesignFrame() override;

  // Selects the record of a control in the boxes. The control must be one of the form.
  void Show(mavro::Control* control);
  void Command(int id);
  void Align(int id) { editor.Align(id); }

  // Save the form and close, with a wish: to add a method to the form's class and go to it, or to
  // remove it. `args` is the class of its argument.
  void RequestHandler(const std::string& className, const std::string& name,
                      const std::string& args);
  void RequestRemoval(const std::string& className, const std::string& name,
                      const std::string& args);

  // Called with the written lines before the window closes; false keeps it open.
  std::function<bool()> maySave;

  // What the session reads after the window has closed with the result cOk.
  std::vector<std::string> initLines, declLines;
  std::string handlerClass, handlerName, handlerArgs;
  int handlerAction = 0;  // 0 none, 1 add and go to it, -1 remove

  FormHistory& History() { return *history; }

  mavro::ToolBar toolBar;
  ToolBox toolBox;
  PropBox propBox;
  EventBox eventBox;
  mavro::StatusBar statusBar;
  mavro::TabCtrl pages;
  mavro::Panel leftPanel;
  mavro::SplitContainer split;
  mavro::Scroller scroller;
  FormEditor editor;

 private:
  // The hotkeys of the surface. They act while the surface has the keyboard, so that a text field
  // keeps its own.
  class SurfaceKeys : public mavro::AccelMenu {
   public:
    explicit SurfaceKeys(DesignFrame& itsFrame) : frame(itsFrame) {}
    bool IsEnabled(int id) const override;

   private:
    DesignFrame& frame;
  };

  const CtrlClass* ChosenTool() override;
  void ResetTool() override { toolBox.Reset(); }
  void ShowRecord(CtrlRec& rec) override;
  void SelectionExtended() override;
  void ShowPlace(CtrlRec& rec) override;
  void TakeFocus() override;
  void StepDone() override;

  void ShowNumbers(const CtrlRec& rec);
  void FillToolBar();
  void FillKeys();
  void OnCreated(mavro::NotifyArgs& args);
  void OnShown(mavro::NotifyArgs& args);
  void OnTool(mavro::NotifyArgs& args);
  void OnKey(mavro::KeyArgs& args);
  void OnCloseRequest(mavro::NotifyArgs& args);
  void OnSurfaceSized(mavro::NotifyArgs& args);
  void Save();
  bool Write();
  void Request(int action, const std::string& className, const std::string& name,
               const std::string& args);
  void Undo();
  void Redo();
  void ShowOutcome(const FormHistory::Outcome& outcome);
  void ShowButtons();
  void FillBoxes(CtrlRec& rec);
  void BindBoxes();
  void TakeValue(CtrlRec& rec, PropValue& prop);
  void Copy();
  void Paste(const std::string& clip);
  void MoveBeside(CtrlRec& rec);
  void SelectAll();
  void Preview();
  void SayReady(const std::string& words = "Ready");

  FormData& form;
  mavro::ActionList keys;
  SurfaceKeys surfaceKeys{*this};
  std::unique_ptr<FormHistory> history;
  CtrlRec* shown = nullptr;  // in the boxes
  bool isSaving = false;
};

// The window that is open, or null.
extern DesignFrame* theDesignFrame;

}  // namespace zendry
