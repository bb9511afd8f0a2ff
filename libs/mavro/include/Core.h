#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Color.h"
#include "Events.h"
#include "Font.h"
#include "Property.h"

namespace mavro {

class ActionMenu;
class Container;
class Control;
class DataLink;
class DataSource;
class Form;
class SysImpl;

// The edge of its container that a control is docked to.
enum class Dock : int { cNone, cTop, cBootom, cLeft, cRight, cFill };

// The direction of a control. Designed forms write these names without a prefix.
enum Orientation : int { cHorizontal, cVertical };

// The line around a control.
enum class BorderStyle : int { cNone, cFixed3d, cStatic, cFrame, cRised };

enum class Cursor : int {
  cDefault,
  cArrow,
  cIBeam,
  cWait,
  cCross,
  cUpArrow,
  cHand,
  cSizeNS,
  cSizeWE,
  cSizeNWSE,
  cSizeNESW,
  cSizeAll
};

// The states in the life of a control's window.
enum ControlState {
  cNoWindow = 0,
  cClosing = 1,
  cHidden = 2,
  cMarkLayout = 3,  // a request only: marks the tree's layout, keeps its states
  cAboutToShow = 4,
  cShown = 5
};

// A place and a size in logical pixels.
struct Rect {
  int left = 0, top = 0, width = 0, height = 0;
  friend bool operator==(const Rect&, const Rect&) = default;
};

// Links a control to a value of the program. The kind of link depends on the kind of control; the
// control owns the link.
class DataLinkProperty {
 public:
  explicit DataLinkProperty(Control& its) : control(its) {}
  DataLinkProperty(const DataLinkProperty&) = delete;

  // `source` is not owned; null removes the link.
  DataLinkProperty& operator=(DataSource* source);
  DataSource* Get() const;

 private:
  Control& control;
  std::shared_ptr<DataLink> link;
};

// A visible element: plain properties and events, paired with a SysImpl that holds the native
// window. It can be set up completely before it has a window; all windows are made in one pass when
// the form runs. Children are members of their form; the tree never owns them.
class Control : public object {
 public:
  ~Control() override;

  // The preferred size of the control; and the layout of its content.
  virtual std::pair<int, int> GetSizeHint() const;
  virtual void Layout();
  // Makes the window, then those of the children in order, then fires onCreate.
  virtual void CreateControl();
  virtual Color InheritedForeColor() const;
  virtual Color InheritedBackColor() const;

  // Moves the window. A height of -1 keeps the current height. A change of size marks the layout as
  // pending.
  void SetBounds(int newLeft, int newTop, int newWidth, int newHeight = -1);
  void SetLocation(int newLeft, int newTop);
  void SetSize(int newWidth, int newHeight);
  Rect Bounds() const { return bounds; }
  void Focus();
  bool IsFocused() const;
  // Paints the invalid area now.
  void Update();
  // Marks the whole area as invalid, so that it is painted later.
  void Invalidate();
  // The form that contains this control, or null.
  Form* GetForm();

  SysImpl* const impl;  // owned

 private:
  Rect bounds{0, 0, 200, 100};

 public:
  Dock dock = Dock::cNone;
  TextProperty text;
  WriteProperty<bool> enabled;
  WriteProperty<bool> visible;
  WriteProperty<int> left, top, width, height;
  WriteProperty<Cursor> cursor;
  WriteProperty<Color> foreColor, backColor;
  WriteProperty<Font> font;
  WriteProperty<BorderStyle> borderStyle;
  WriteProperty<std::string> hint;
  WriteProperty<std::string> toolTip;  // the hint, by the name that designed forms use
  // The name of the control for screen readers. If it is empty, they use the control's text, else
  // the label before it, else its hint.
  WriteProperty<std::string> accessibleName;

  DataLinkProperty dataLink;

  NotifyEvent onCreate;
  KeyEvent onKeyDown, onKeyUp, onChar;
  MouseEvent onMouseDown, onMouseUp, onMouseMove, onMouseWeel, onContextMenu;
  CrossingEvent onMouseEnter, onMouseLeave;
  NotifyEvent onDblClick, onMove, onResize, onGotFocus, onLostFocus;
  // The control has become visible (value 1) or hidden (value 0), by its own `visible` or that of a
  // container.
  NotifyEvent onVisible;

  ActionMenu* menu = nullptr;  // popup shown on a context menu request; not owned
  int contextId = 0;           // the topic of its context help
  int tag = 0;                 // free for the program
  bool layoutPending = true;   // the children's bounds may be out of date
  Control* parent = nullptr;   // a container, or a control with pages or panes; not owned
  int state = cNoWindow;
  int id = -1;                     // index among the parent's children, with the tag 0x2000
  std::vector<Control*> children;  // tab order and z order; filled by containers only, not owned

 protected:
  // Takes ownership of `newImpl`, made by the most derived class.
  explicit Control(SysImpl* newImpl);

  std::pair<int, int> sizeHint{0, 0};

 private:
  friend class SysImpl;
};

// A control that has children and lays them out.
class Container : public Control {
 public:
  class Impl;

  int GetControlCount() const { return static_cast<int>(children.size()); }
  // Appends `control`, which is not owned.
  void Add(Control* control) { Insert(control, -1); }
  // Puts `control` at `index`, -1 for the end. In a running container its window is made at once.
  // The windows of the controls after it lose their routes: see RenewRoutes.
  void Insert(Control* control, int index);
  // Takes the control out and destroys its windows; the control itself is kept. The windows of the
  // controls after it lose their routes: see RenewRoutes.
  void Remove(int index);
  void Remove(Control* comp);
  // Repairs the routes of the children after Insert and Remove. These change the index of other
  // controls, and a control with a window then loses the tag of its native id. From then on its
  // messages (clicks, changes, selections) end at the container: its events don't fire and it gets
  // no colours. This call gives all children their routes and colours back.
  void RenewRoutes();

  // The dock layout: children take the edges in order, the last one with cFill gets the remaining
  // area.
  void Layout() override;

 protected:
  explicit Container(SysImpl* newImpl) : Control(newImpl) {}
};

// The same as Container::Insert and Remove, for controls that hold pages, panes or tool controls
// but are not containers that a program can fill. The ownership does not change.
void InsertChild(Control& parent, Control* child, int index);
void RemoveChild(Control& parent, int index);
// Moves the child at `from` to the index `to`; the children between them shift by one.
void MoveChild(Control& parent, int from, int to);

// Runs the layout of `control` if it is pending, then the same for every child.
void RunPendingLayout(Control* control);
// Passes a state down the tree. 3 and 4 also mark the layout as pending; 3 doesn't change the
// states.
void SetStateTree(Control* control, int state);

// A plain container.
class Panel : public Container {
 public:
  Panel();

 protected:
  explicit Panel(SysImpl* newImpl) : Container(newImpl) {}
};

}  // namespace mavro
