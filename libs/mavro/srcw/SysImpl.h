#pragma once

#include <memory>
#include <string>

#include "Core.h"
#include "NativeWindow.h"

namespace mavro {

class Brush;
class DataLink;

// Keys that a control has for itself where they would move the focus or press a dialog's button.
enum OwnKeys { cOwnEnter = 1, cOwnEscape = 2, cOwnArrows = 4 };

// The platform half of a control: holds its native window and turns messages into its events. Owned
// by the control. Plain code over NativeWindow, independent of the toolkit.
class SysImpl : public object {
 public:
  // Kinds above cContainer are forms and may have menus.
  enum Type { cControl, cContainer, cForm };
  // Flag of CreateNative: the control's key events need the framework's window procedure.
  enum CreateFlags { cWantsKeys = 1 };

  explicit SysImpl(Type itsType = cControl);
  ~SysImpl() override;

  // Makes the native window; called once by Control::CreateControl.
  virtual void Create() = 0;
  // Called after the children have been made; containers mark their layout and run it.
  virtual void AfterCreate();
  // Destroys the native window; the text is kept if the flag says so.
  virtual void Destroy();
  virtual void Show(bool on);
  // Fills the style words before creation.
  virtual void PrepareStyle();
  // A command aimed at this control; by default it goes to the control's action menu.
  virtual void OnCommand(int code, Param handle);
  // A notification of this control's own window, reflected by its parent.
  virtual Param OnNotify(NotifyHeader* header);
  // Message dispatch. Every path that doesn't return ends in DefaultProc.
  virtual Param WndProc(unsigned message, Param wParam, Param lParam);
  virtual void OnDrawItem();
  // Called for the control with the focus before a dialog ends with OK: takes what is being typed.
  // False if that is refused; the dialog then stays open.
  virtual bool FinishTyping() { return true; }
  // Source 0 searches the action menu; forms add closing (1: store the result, 2: close).
  virtual int OnMenuCommand(int source, int id);

  // Creates the window of a class: data link, style words, window, text, font, border, enabled
  // state, real size, and the private "created" message, in this order.
  void CreateNative(std::string_view className, int flags);

  std::string GetText() const;
  void SetText(const std::string& newText);

  // Setters of the control's properties. Each does nothing without a window.
  void BoundsChanged();
  void EnabledChanged();
  void VisibleChanged();
  void ColorsChanged();
  // Shows the colours that the parent returns; containers and forms show their own.
  void ShowColors();
  void FontChanged();
  void CursorChanged();
  void BorderChanged();
  void HintChanged();
  void AccessibleNameChanged();

  // The area that children are laid out in: the client area, or without a window, the control's
  // bounds.
  Rect ClientRect() const;

  Control* owner = nullptr;
  NativeWindow* hwnd = nullptr;
  const Type type;
  uint32_t style;
  uint32_t exStyle;
  std::unique_ptr<Brush> backgroundBrush;  // made at its first use
  bool subclass = false;
  bool eraseBackground;
  bool textIsLive = true;
  bool keepTextOnDestroy = false;
  bool childrenTakeKeys = true;  // false: Tab and the first focus pass over all that is in it
  int modalResult = 0;           // the result that a button closes its form with
  int ownKeys = 0;               // OwnKeys, as bits
  DataLink* dataLink = nullptr;
  int mouseX = 0;  // where the mouse was last pressed, client coordinates
  int mouseY = 0;
  BorderStyle borderStyle = BorderStyle::cNone;
  std::string hint;
  std::string accessibleName;
  Cursor cursor = Cursor::cDefault;
  bool visible = true;
  bool enabled = true;
  Color foreColor, backColor;
  Font font;
  std::string text;

 protected:
  Control& Owner() const { return *owner; }
  // The control's bounds, writable: the bounds that windows report are stored here without a call
  // of a setter.
  Rect& OwnerBounds() const;
  // Fires one of the control's events; false if the control is gone afterwards.
  bool FireNotify(NotifyEvent& event, int value = 0);

 private:
  void RevealInContainers();
  Param OnContextMenu(Param wParam, Param lParam);
  Param OnKey(unsigned message, Param wParam, Param lParam);
  Param OnMouse(unsigned message, Param wParam, Param lParam);
  // Called when the mouse has entered or left.
  Param OnCrossing(unsigned message, Param wParam, Param lParam);
};

// The platform half of containers: routes commands and notifications of children.
class Container::Impl : public SysImpl {
 public:
  explicit Impl(Type itsType = cContainer);

  void Create() override;
  void AfterCreate() override;
  Param WndProc(unsigned message, Param wParam, Param lParam) override;

 private:
  Param RouteCommand(Param wParam, Param lParam);
  Param RouteNotify(Param wParam, Param lParam);
  Param RouteColors(PaintColors& colors, const NativeWindow& window);
};

// Every control that has a window, found from it by the 1-based index in its user data. The order
// has no meaning: removal moves the last control into the gap.
void RegisterDisplayable(Control* control);
void UnregisterDisplayable(Control* control);
// The control of a window, or null.
Control* ControlOf(const NativeWindow* window);

// The focused control at or below `control`, or null.
Control* FocusedIn(Control& control);

// The child of `container` under a native id with the child route, or an assertion.
Control* RoutedChild(Control* container, int nativeId);

}  // namespace mavro
