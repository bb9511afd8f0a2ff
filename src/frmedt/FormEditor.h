#pragma once

#include <memory>
#include <string>
#include <vector>

#include "LayoutForm.h"
#include "frmedt/CtrlReg.h"
#include "frmedt/LiveControls.h"

namespace zendry {

// The window around the surface, as the surface sees it.
class DesignHost {
 public:
  virtual ~DesignHost() = default;
  // The class that is chosen in the toolbox; null while it says "Select".
  virtual const CtrlClass* ChosenTool() = 0;
  virtual void ResetTool() = 0;
  // Shows a record in the boxes and takes the focus from them.
  virtual void ShowRecord(CtrlRec& rec) = 0;
  // Controls have joined the selection or left it; the primary one may be the same.
  virtual void SelectionExtended() = 0;
  // Shows the place of a record that has been moved.
  virtual void ShowPlace(CtrlRec& rec) = 0;
  virtual void TakeFocus() = 0;
  // An action of the user has ended: what has changed is one step of undo.
  virtual void StepDone() = 0;
};

// The commands that arrange the selected controls, by the numbers of the tool bar.
enum AlignCommand {
  cAlignLeft = 1,
  cAlignRight = 2,
  cAlignTop = 3,
  cAlignBottom = 4,
  cEqualWidth = 5,
  cEqualHeight = 6,
  cEqualSize = 7,
  cAlignToGrid = 8,
  cSpaceHoriz = 9,
  cSpaceVert = 10
};

// The surface that a form is designed on: a live copy of the form. The mouse selects, moves and
// sizes controls, and drops new ones; the controls themselves never see it.
class FormEditor : public mavro::LayoutForm {
 public:
  static constexpr int cGridStep = 4;    // of "align to grid"
  static constexpr int cHandleBand = 4;  // from an edge inwards, where dragging sizes
  static constexpr int cFrameBand = 2;   // from an edge inwards, where a press keeps the selection

  FormEditor(FormData& itsForm, DesignHost& itsHost);
  ~FormEditor() override;

  // Makes the controls of all records that have none, after the values of the form have been
  // applied.
  void CreateAll();
  // Makes all controls anew, after the records have been replaced.
  void RecreateAll();

  // Selects a control. With `extend` it joins the others or leaves them, if it has the same parent;
  // if not, it beeps and answers null.
  mavro::Selector* Select(mavro::Control* wanted, bool extend);
  void ClearSelection();
  // The records of the selected controls, the primary first.
  std::vector<CtrlRec*> SelectedRecords() const;
  // True if a control is selected.
  bool HasSelection() const { return selector.selected; }
  // The grips follow controls that have been moved by others.
  void FollowControls();
  // The record that the boxes show: of the primary control, else of the form.
  CtrlRec& ShownRecord();

  // Makes a control of a class in the primary control, or in the form if nothing is selected, with
  // its corner at a point of the surface. False, with a beep, if it can't be put there.
  bool DropControl(const CtrlClass& tool, int x, int y);
  CtrlRec* FindControl(std::string_view name) const { return form.Find(name); }
  // The innermost control at a point; null over the form itself.
  mavro::Control* ControlAt(int x, int y);

  void Align(int command);
  // Move or size all selected controls.
  void MoveSelection(int dx, int dy);
  void SizeSelection(int dw, int dh);
  // Deletes the selected controls and what is in them. False if nothing is selected.
  bool DeleteSelection();
  // Gives up a drag: everything is as before the press. False if nothing is dragged.
  bool CancelDrag();
  bool IsDragging() const { return dragging; }

  // Shows the places in the Tab order, and lets clicks give controls the next places.
  void ShowTabOrder(bool on);
  bool IsTabOrderShown() const { return isTabOrder; }

  // Lays a container out again after values of a control have changed.
  void LayoutAround(CtrlRec& rec);

  LiveControls live;

 private:
  // The edges under the pointer, as a sum.
  enum Hit { cNoEdge = 0, cLeftEdge = 1, cRightEdge = 2, cTopEdge = 4, cBottomEdge = 8 };

  void OnPress(mavro::MouseArgs& args);
  void OnMoved(mavro::MouseArgs& args);
  void OnReleased(mavro::MouseArgs& args);
  void OnDouble(mavro::NotifyArgs& args);
  int HitAt(int x, int y) const;
  void ShowCursorAt(int x, int y);
  void BeginDrag(int x, int y);
  void Drag(int x, int y, bool keepsAxis);
  void ShowGuides();
  void TakeTabPlace(CtrlRec& rec);
  void ShowTabMarks();
  mavro::Control* ControlIn(int x, int y, mavro::Control& container);
  mavro::Control* ControlOf(int x, int y, mavro::Control& found);
  void ChoosePageAt(int x, int y);
  std::vector<mavro::Selector*> Selectors();
  void Space(bool isLevel);
  void AlignAllToGrid();
  void DeleteRecord(CtrlRec& rec);

  FormData& form;
  DesignHost& host;
  std::vector<std::unique_ptr<mavro::Selector>> others;  // beside the primary one
  int hit = cNoEdge;
  bool dragging = false;
  int grabLeft = 0, grabTop = 0, grabRight = 0, grabBottom = 0;
  std::vector<mavro::Rect> before;    // of the selected controls at the press
  std::vector<mavro::Rect> siblings;  // of the others around it, in surface coordinates
  bool isTabOrder = false;
  std::vector<CtrlRec*> ordered;  // those that have been given their place by a click
  int pressedX = 0, pressedY = 0;
};

// The current surface, or null.
extern FormEditor* theFormEditor;

}  // namespace zendry
