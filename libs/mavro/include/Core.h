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

// Edge of its container that a control is laid along.
enum class Dock : int { cNone, cTop, cBootom, cLeft, cRight, cFill };

// Which way a control lies. Designed forms write these names without a prefix.
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

// Life of a control's window.
enum ControlState {
  cNoWindow = 0,
  cClosing = 1,
  cHidden = 2,
  cMarkLayout = 3,  // a request only: marks the tree's layout, leaves its states
  cAboutToShow = 4,
  cShown = 5
};

// A place and a size in logical pixels.
struct Rect {
  int left = 0, top = 0, width = 0, height = 0;
  friend bool operator==(const Rect&, const Rect&) = default;
};

// Ties a control to a value of the program by the link that suits its kind; the link is the
// control's own.
class DataLinkProperty {
 public:
  explicit DataLinkProperty(Control& its) : control(its) {}
  DataLinkProperty(const DataLinkProperty&) = delete;

  // `source` is not owned; null ends the tie.
  DataLinkProperty& operator=(DataSource* source);
  DataSource* Get() const;

 private:
  Control& control;
  std::shared_ptr<DataLink> link;
};

// A visible thing: plain properties and events, paired with a SysImpl that holds the native window.
// It exists and can be set up in full before it has a window; windows are made in one pass when the
// form runs. Children are members of their form and never owned by the tree.
class Control : public object {
 public:
  ~Control() override;

  // The size that the control would like to have, and its laying out of what it holds.
  virtual std::pair<int, int> GetSizeHint() const;
  virtual void Layout();
  // Makes the window, then those of the children in order, then fires onCreate.
  virtual void CreateControl();
  virtual Color InheritedForeColor() const;
  virtual Color InheritedBackColor() const;

  // A height of -1 keeps the current one. Moves the window; a change of size marks the layout
  // pending.
  void SetBounds(int newLeft, int newTop, int newWidth, int newHeight = -1);
  void SetLocation(int newLeft, int newTop);
  void SetSize(int newWidth, int newHeight);
  Rect Bounds() const { return bounds; }
  void Focus();
  bool IsFocused() const;
  // Paints what is invalid now.
  void Update();
  // Marks the whole area as to be painted.
  void Invalidate();
  // The form that this control stands in, or null.
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
  // What screen readers call the control; where it is empty, its text, else the label before it,
  // else its hint.
  WriteProperty<std::string> accessibleName;

  DataLinkProperty dataLink;

  NotifyEvent onCreate;
  KeyEvent onKeyDown, onKeyUp, onChar;
  MouseEvent onMouseDown, onMouseUp, onMouseMove, onMouseWeel, onContextMenu;
  CrossingEvent onMouseEnter, onMouseLeave;
  NotifyEvent onDblClick, onMove, onResize, onGotFocus, onLostFocus;
  // The control can be seen from now on, or no more, by its own `visible` or a container's; value:
  // 1 or 0.
  NotifyEvent onVisible;

  ActionMenu* menu = nullptr;  // popup shown on a context menu request; not owned
  int contextId = 0;           // what context help is asked for
  int tag = 0;                 // the program's own
  bool layoutPending = true;   // the children's places may be stale
  Control* parent = nullptr;   // a container, or a control that keeps pages or panes; not owned
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
  // The windows of the controls behind it lose their routes: see RenewRoutes.
  void Insert(Control* control, int index);
  // Takes the control out and destroys its windows; the control itself stays. The windows of the
  // controls behind it lose their routes: see RenewRoutes.
  void Remove(int index);
  void Remove(Control* comp);
  // Sets right what Insert and Remove leave behind. A control whose index they change while it has
  // a window loses the tag of its native id: from then on what it tells its container (clicks,
  // changes, selections) ends there, so that its events don't fire, and it gets no colours. This
  // call gives all children their routes and colours back.
  void RenewRoutes();

  // The dock layout: children take the edges in order, the last one with cFill gets what is left.
  void Layout() override;

 protected:
  explicit Container(SysImpl* newImpl) : Control(newImpl) {}
};

// What Container::Insert and Remove do, for controls that keep pages, panes or tool controls
// without being containers for programs to fill. Ownership stays where it is.
void InsertChild(Control& parent, Control* child, int index);
void RemoveChild(Control& parent, int index);
// Gives the child at `from` the place `to` in the order; the others close up.
void MoveChild(Control& parent, int from, int to);

// Runs the layout of `control` if it is pending, and then that of every child where it is.
void RunPendingLayout(Control* control);
// Passes a state down the tree; 3 and 4 also mark the layout pending, 3 leaves the states alone.
void SetStateTree(Control* control, int state);

// A plain container.
class Panel : public Container {
 public:
  Panel();

 protected:
  explicit Panel(SysImpl* newImpl) : Container(newImpl) {}
};

}  // namespace mavro
