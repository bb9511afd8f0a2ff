#include "frmedt/DesignFrame.h"

#include <algorithm>

#include "frmedt/FormClip.h"
#include "frmedt/FormWriter.h"

namespace zendry {

using mavro::cControlKey;
using mavro::cShiftKey;
using mavro::Key;

DesignFrame* theDesignFrame = nullptr;

namespace {

enum StatusPart { cReadyPart, cNamePart, cPlacePart, cSizePart };

constexpr int cNameWidth = 160;
constexpr int cPlaceWidth = 200;
constexpr int cLeftWidth = 250;
constexpr int cScrollRange = 1000, cScrollPage = 100;
constexpr int cScrollMargin = 40;  // behind the form, so that its edges can be reached

struct ToolRow {
  const char* text;  // null for a separator
  int command = 0;
  int image = 0;
};

constexpr ToolRow cTools[] = {{"left align", cAlignLeft, 1},
                              {"right align", cAlignRight, 2},
                              {"top align", cAlignTop, 3},
                              {"bottom align", cAlignBottom, 4},
                              {nullptr},
                              {"equal width", cEqualWidth, 5},
                              {"equal height", cEqualHeight, 6},
                              {"equal size", cEqualSize, 7},
                              {nullptr},
                              {"space horiz", cSpaceHoriz, 8},
                              {"space vert", cSpaceVert, 9},
                              {nullptr},
                              {"align to grid", cAlignToGrid, 10},
                              {nullptr},
                              {"Save and close", cSaveAndCloseCommand, 11},
                              {nullptr},
                              {"undo (Ctrl+Z)", cDesignUndoCommand, 12},
                              {"redo (Ctrl+Y)", cDesignRedoCommand, 13},
                              {nullptr},
                              {"tab order (F4)", cTabOrderCommand, 14},
                              {"preview (F9)", cPreviewCommand, 15}};

struct KeyRow {
  const char* text;
  int command;
  int hotkey;
};

constexpr KeyRow cKeys[] = {{"move left", cMoveLeftCommand, cControlKey | Key::cLeft},
                            {"move right", cMoveRightCommand, cControlKey | Key::cRight},
                            {"move up", cMoveUpCommand, cControlKey | Key::cUp},
                            {"move down", cMoveDownCommand, cControlKey | Key::cDown},
                            {"undo", cDesignUndoCommand, cControlKey | 'Z'},
                            {"redo", cDesignRedoCommand, cControlKey | 'Y'},
                            {"redo", cDesignRedoCommand, cControlKey | cShiftKey | 'Z'},
                            {"cut", cCutControlsCommand, cControlKey | 'X'},
                            {"copy", cCopyControlsCommand, cControlKey | 'C'},
                            {"paste", cPasteControlsCommand, cControlKey | 'V'},
                            {"duplicate", cDuplicateControlsCommand, cControlKey | 'D'},
                            {"select all", cSelectAllControlsCommand, cControlKey | 'A'},
                            {"tab order", cTabOrderCommand, Key::cF4},
                            {"preview", cPreviewCommand, Key::cF9}};

// The focused control at or below `control`, or null.
const mavro::Control* FocusedIn(const mavro::Control& control) {
  for (const mavro::Control* child : control.children) {
    if (child->IsFocused() && child->children.empty()) return child;
    if (const mavro::Control* found = FocusedIn(*child)) return found;
  }
  return nullptr;
}

// Fields keep the keys that change a text.
bool TakesText(const mavro::Control* control) {
  return dynamic_cast<const mavro::Edit*>(control) || dynamic_cast<const mavro::ComboBox*>(control);
}

// The form as the program shows it.
class PreviewForm : public mavro::Form {
 public:
  explicit PreviewForm(const FormData& from) : live(model, LiveControls::Purpose::cPreview) {
    CopyForm(from, model);
    live.Bind(model.root, *this);
    live.ApplyAll(model.root);
    live.CreateAll();
    if (text.Get().empty()) text = "Preview";
    onKeyPreview.Add_H(this, &PreviewForm::OnKey);
  }
  ~PreviewForm() override { live.Clear(); }

 private:
  // Escape ends a preview, whatever buttons the form has.
  void OnKey(mavro::NotifyArgs& args) {
    if (args.value != mavro::Key::cEscape) return;
    args.value = 0;
    Close();
  }

  FormData model;
  LiveControls live;
};

}  // namespace

bool DesignFrame::SurfaceKeys::IsEnabled(int) const {
  return !frame.editor.IsDragging() && !TakesText(FocusedIn(frame));
}

DesignFrame::DesignFrame(FormData& itsForm)
    : propBox(itsForm), eventBox(itsForm), editor(itsForm, *this), form(itsForm) {
  theDesignFrame = this;
  text = "Form designer";
  autoDialogKeys = false;
  FillToolBar();
  FillKeys();
  statusBar.dock = mavro::Dock::cBootom;
  statusBar.AddPane(0, "Ready");
  statusBar.AddPane(cNameWidth, "");
  statusBar.AddPane(cPlaceWidth, "");
  statusBar.AddPane(cPlaceWidth, "");
  pages.dock = mavro::Dock::cFill;
  for (mavro::TabPage* page : std::initializer_list<mavro::TabPage*>{&toolBox, &propBox, &eventBox})
    pages.Add(page);
  BindBoxes();
  leftPanel.Add(&pages);
  scroller.backColor = mavro::Color(mavro::Color::cControlShadow);
  scroller.Add(&editor);
  split.dock = mavro::Dock::cFill;
  split.pan1 = &leftPanel;
  split.pan2 = &scroller;
  split.SetPosition(cLeftWidth);
  Add(&toolBar);
  Add(&statusBar);
  Add(&split);
  focusControl = &toolBox.icons;
  onCreate.Add_H(this, &DesignFrame::OnCreated);
  onShow.Add_H(this, &DesignFrame::OnShown);
  onKeyDown.Add_H(this, &DesignFrame::OnKey);
  onClose.Add_H(this, &DesignFrame::OnCloseRequest);
  editor.onResize.Add_H(this, &DesignFrame::OnSurfaceSized);
}

DesignFrame::~DesignFrame() {
  editor.ClearSelection();
  if (theDesignFrame == this) theDesignFrame = nullptr;
}

void DesignFrame::FillToolBar() {
  toolBar.dock = mavro::Dock::cTop;
  toolBar.images = cDesignStrip;
  for (const ToolRow& row : cTools) {
    if (row.text)
      toolBar.AddButton(row.image, row.text, row.command);
    else
      toolBar.AddSeparator();
  }
  toolBar.onClick.Add_H(this, &DesignFrame::OnTool);
}

void DesignFrame::FillKeys() {
  keys.SetTarget(this, &DesignFrame::Command);
  for (const KeyRow& row : cKeys)
    surfaceKeys.ActionAdded(keys.Add(row.command, row.text, row.hotkey));
  menuBar = &surfaceKeys;
}

void DesignFrame::OnCreated(mavro::NotifyArgs&) {
  for (const auto direction : {mavro::cHorizontal, mavro::cVertical})
    scroller.SetScrollRange(direction, cScrollRange, cScrollPage);
  ResetTool();
  editor.CreateAll();
  editor.ClearSelection();
  editor.live.RefreshAll();
  history = std::make_unique<FormHistory>(form);
  ShowRecord(form.root);
  ShowButtons();
}

// One box for all controls that could not be made.
void DesignFrame::OnShown(mavro::NotifyArgs&) {
  std::string words;
  for (const std::string& failure : editor.live.failures)
    words += (words.empty() ? "" : "\n") + failure;
  if (!words.empty()) mavro::Information(words);
}

void DesignFrame::OnSurfaceSized(mavro::NotifyArgs&) {
  if (scroller.state == mavro::cNoWindow) return;
  const mavro::Rect size = editor.Bounds();
  scroller.SetScrollRange(mavro::cHorizontal, std::max(cScrollRange, size.width + cScrollMargin),
                          cScrollPage);
  scroller.SetScrollRange(mavro::cVertical, std::max(cScrollRange, size.height + cScrollMargin),
                          cScrollPage);
}

const CtrlClass* DesignFrame::ChosenTool() {
  const ToolEntry& entry = toolBox.Selected();
  return entry.classDef == &WindowRegClass ? nullptr : entry.classDef;
}

void DesignFrame::Show(mavro::Control* control) {
  CtrlRec* c = editor.live.RecordOf(control);
  MAVRO_ASSERT(c);
  ShowRecord(*c);
}

void DesignFrame::ShowRecord(CtrlRec& rec) {
  editor.live.Refresh(rec);
  if (&rec != shown || rec.classDef->alwaysRefresh) FillBoxes(rec);
  shown = &rec;
  statusBar.SetPane(cNamePart, &rec == &form.root ? form.root.declClass : rec.name);
  ShowNumbers(rec);
  TakeFocus();
}

void DesignFrame::SelectionExtended() {
  shown = nullptr;
  ShowRecord(editor.ShownRecord());
}

void DesignFrame::BindBoxes() {
  propBox.onCommit = [this](CtrlRec& rec, PropValue& prop) { TakeValue(rec, prop); };
  propBox.onDone = [this] {
    editor.FollowControls();
    StepDone();
    ShowPlace(editor.ShownRecord());
  };
  propBox.onRefused = [this](const std::string& words) { SayReady(words); };
  eventBox.onBind = [this](CtrlRec&) { StepDone(); };
  eventBox.onRequestHandler = [this](const auto& className, const auto& name, const auto& args) {
    RequestHandler(className, name, args);
  };
  eventBox.onRequestRemoval = [this](const auto& className, const auto& name, const auto& args) {
    RequestRemoval(className, name, args);
  };
}

// The value is in the record already.
void DesignFrame::TakeValue(CtrlRec& rec, PropValue& prop) {
  SayReady();
  const int kind = prop.pd ? prop.pd->kind : cOtherKind;
  if (kind == cClassKind || kind == cNameKind) {
    statusBar.SetPane(cNamePart, &rec == &form.root ? form.root.declClass : rec.name);
    return;
  }
  editor.live.Apply(rec, prop);
  if (!rec.ctrl) return;
  if (kind >= cDockKind && kind <= cHeightKind) editor.LayoutAround(rec);
  rec.ctrl->Invalidate();
}

// Of several controls what they have in common is shown.
void DesignFrame::FillBoxes(CtrlRec& rec) {
  const std::vector<CtrlRec*> selected = editor.SelectedRecords();
  if (selected.size() > 1) {
    propBox.Show(selected);
    eventBox.Clear();
    return;
  }
  propBox.Show(rec);
  eventBox.Show(rec);
}

// The boxes hold a record's values as they are; only a control that has been moved has new ones.
void DesignFrame::ShowPlace(CtrlRec& rec) {
  ShowNumbers(rec);
  if (!rec.ctrl || &rec != shown) return;
  const mavro::Rect at = rec.ctrl->Bounds();
  const bool isForm = &rec == &form.root;
  propBox.SetValue("left", std::to_string(isForm ? 0 : at.left));
  propBox.SetValue("top", std::to_string(isForm ? 0 : at.top));
  propBox.SetValue("width", std::to_string(at.width));
  propBox.SetValue("height", std::to_string(at.height));
}

void DesignFrame::ShowNumbers(const CtrlRec& rec) {
  if (!rec.ctrl) return;
  const mavro::Rect at = rec.ctrl->Bounds();
  const auto number = [](int value) { return std::to_string(value); };
  statusBar.SetPane(cPlacePart, "left:" + number(at.left) + "  top:" + number(at.top));
  statusBar.SetPane(cSizePart, "width:" + number(at.width) + "  height:" + number(at.height));
}

void DesignFrame::TakeFocus() {
  if (state != mavro::cNoWindow) Focus();
}

void DesignFrame::SayReady(const std::string& words) {
  statusBar.SetPane(cReadyPart, words);
}

void DesignFrame::StepDone() {
  if (!history) return;
  editor.live.RefreshAll();
  if (editor.SelectedRecords().size() > 1) propBox.Renew();
  history->Commit();
  ShowButtons();
}

void DesignFrame::ShowButtons() {
  for (int row = 0; row < toolBar.RowCount(); ++row) {
    const int command = toolBar.GetRow(row).command;
    if (command == cDesignUndoCommand) toolBar.Enable(row, history->CanUndo());
    if (command == cDesignRedoCommand) toolBar.Enable(row, history->CanRedo());
  }
}

void DesignFrame::OnTool(mavro::NotifyArgs& args) {
  Command(args.value);
  TakeFocus();
}

void DesignFrame::OnKey(mavro::KeyArgs& args) {
  args.handled = true;
  const bool isShift = args.modifiers & mavro::cShift;
  switch (args.key) {
    case Key::cLeft:
      if (isShift) return Command(cNarrowerCommand);
      break;
    case Key::cRight:
      if (isShift) return Command(cWiderCommand);
      break;
    case Key::cUp:
      if (isShift) return Command(cLowerCommand);
      break;
    case Key::cDown:
      if (isShift) return Command(cTallerCommand);
      break;
    case Key::cDelete:
      if (!isShift) return Command(cDeleteControlsCommand);
      break;
    case Key::cEscape:
      if (editor.CancelDrag()) return;
      if (editor.IsTabOrderShown()) return Command(cTabOrderCommand);
      if (ChosenTool()) return ResetTool();
      break;
    default:
      break;
  }
  args.handled = false;
}

void DesignFrame::Command(int id) {
  if (editor.IsDragging() && id != cSaveAndCloseCommand) return;
  switch (id) {
    case cSaveAndCloseCommand:
      return Save();
    case cDesignUndoCommand:
      return Undo();
    case cDesignRedoCommand:
      return Redo();
    case cTabOrderCommand:
      editor.ShowTabOrder(!editor.IsTabOrderShown());
      TakeFocus();
      return SayReady(editor.IsTabOrderShown() ? "Click the controls in their order" : "Ready");
    case cPreviewCommand:
      return Preview();
    case cMoveLeftCommand:
      return editor.MoveSelection(-1, 0);
    case cMoveRightCommand:
      return editor.MoveSelection(1, 0);
    case cMoveUpCommand:
      return editor.MoveSelection(0, -1);
    case cMoveDownCommand:
      return editor.MoveSelection(0, 1);
    case cNarrowerCommand:
      return editor.SizeSelection(-1, 0);
    case cWiderCommand:
      return editor.SizeSelection(1, 0);
    case cLowerCommand:
      return editor.SizeSelection(0, -1);
    case cTallerCommand:
      return editor.SizeSelection(0, 1);
    case cDeleteControlsCommand:
      shown = nullptr;
      if (!editor.DeleteSelection()) shown = &editor.ShownRecord();
      return;
    case cCutControlsCommand:
      if (!editor.HasSelection()) return;
      Copy();
      return Command(cDeleteControlsCommand);
    case cCopyControlsCommand:
      return Copy();
    case cPasteControlsCommand:
      return Paste(mavro::ClipboardText());
    case cDuplicateControlsCommand:
      return Paste(CopyText(form, editor.SelectedRecords()));
    case cSelectAllControlsCommand:
      return SelectAll();
    default:
      return Align(id);
  }
}

void DesignFrame::Undo() {
  if (!history->CanUndo()) return;
  ShowOutcome(history->Undo([this] {
    editor.ClearSelection();
    editor.live.Clear();
  }));
}

void DesignFrame::Redo() {
  if (!history->CanRedo()) return;
  ShowOutcome(history->Redo([this] {
    editor.ClearSelection();
    editor.live.Clear();
  }));
}

void DesignFrame::ShowOutcome(const FormHistory::Outcome& outcome) {
  const std::string name = outcome.isRebuilt || !shown ? "" : shown->name;
  if (outcome.isRebuilt) editor.RecreateAll();
  for (CtrlRec* rec : outcome.changed) {
    editor.live.ReapplyAll(*rec);
    editor.LayoutAround(*rec);
  }
  editor.FollowControls();
  shown = nullptr;
  ShowRecord(editor.ShownRecord());
  if (editor.IsTabOrderShown()) editor.ShowTabOrder(true);
  ShowButtons();
}

void DesignFrame::Copy() {
  if (const std::string clip = CopyText(form, editor.SelectedRecords()); !clip.empty())
    mavro::SetClipboardText(clip);
}

// Into the selected container, else beside the selected control. A control that would cover another
// one exactly is put below and to the right of it.
void DesignFrame::Paste(const std::string& clip) {
  CtrlRec* target = &editor.ShownRecord();
  const bool isCopied = !target->classDef->isContainer || clip == CopyText(form, {target});
  if (target->classDef->alwaysRefresh && !isCopied) target = editor.live.CurrentPage(*target);
  if (target && isCopied && target != &form.root) target = target->parent;
  const std::vector<CtrlRec*> pasted = target && target->classDef->isContainer
                                           ? PasteText(form, *target, clip)
                                           : std::vector<CtrlRec*>();
  if (pasted.empty()) return mavro::Beep();
  for (CtrlRec* rec : pasted) MoveBeside(*rec);
  editor.live.CreateAll();
  editor.ClearSelection();
  for (CtrlRec* rec : pasted) {
    if (!rec->ctrl) continue;
    editor.LayoutAround(*rec);
    editor.Select(rec->ctrl, editor.HasSelection());
  }
  SelectionExtended();
  StepDone();
}

void DesignFrame::MoveBeside(CtrlRec& rec) {
  if (rec.classDef->noBounds) return;
  const auto isCovered = [&] {
    for (const CtrlRec* other : form.ChildrenOf(*rec.parent))
      if (other != &rec && other->ValueText("left") == rec.ValueText("left") &&
          other->ValueText("top") == rec.ValueText("top"))
        return true;
    return false;
  };
  while (isCovered())
    for (const char* row : {"left", "top"})
      rec.SetValueText(
          row, std::to_string(std::atoi(rec.ValueText(row).c_str()) + mavro::LayoutForm::cGrid));
}

void DesignFrame::SelectAll() {
  editor.ClearSelection();
  for (const CtrlRec* rec : form.ChildrenOf(form.root))
    if (rec->ctrl) editor.Select(rec->ctrl, editor.HasSelection());
  SelectionExtended();
}

void DesignFrame::Preview() {
  editor.live.RefreshAll();
  PreviewForm preview(form);
  preview.Run(true);
}

void DesignFrame::Save() {
  editor.CancelDrag();
  if (!Write()) return;
  result = cOk;
  isSaving = true;
  Close();
}

bool DesignFrame::Write() {
  editor.live.RefreshAll();
  declLines.clear();
  initLines.clear();
  FormWriter writer(form);
  writer.WriteDecl(declLines);
  writer.WriteInit(initLines);
  return !maySave || maySave();
}

// The close box asks about changes; "Save and close" doesn't.
void DesignFrame::OnCloseRequest(mavro::NotifyArgs& args) {
  if (isSaving) return;
  editor.CancelDrag();
  result = cNone;
  editor.live.RefreshAll();
  history->Commit();
  if (!history->IsChanged()) return;
  bool isCancelled = false;
  const bool isYes = mavro::Confirm("Save the changes of the form?", &isCancelled);
  if (isCancelled || (isYes && !Write())) {
    handlerAction = 0;
    args.value = 0;
  } else if (isYes) {
    result = cOk;
  }
}

void DesignFrame::RequestHandler(const std::string& className, const std::string& name,
                                 const std::string& args) {
  Request(1, className, name, args);
}

void DesignFrame::RequestRemoval(const std::string& className, const std::string& name,
                                 const std::string& args) {
  Request(-1, className, name, args);
}

void DesignFrame::Request(int action, const std::string& className, const std::string& name,
                          const std::string& args) {
  handlerClass = className;
  handlerName = name;
  handlerArgs = args;
  handlerAction = action;
  Save();
  if (!isSaving) handlerAction = 0;
}

}  // namespace zendry
