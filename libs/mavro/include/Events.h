#pragma once

#include <string>
#include <vector>

#include "Handlers.h"
#include "Keys.h"

namespace mavro {

class Control;
struct TreeNode;

// Keys and buttons that are held down during an input event, as bits.
enum Modifiers { cShift = 1, cControl = 2, cPrimary = 4, cAltOrMiddle = 8, cLeftEvent = 0x10 };

// A key was pressed or released, or produced a character.
struct KeyArgs {
  enum Kind { cDown = 1, cUp = 2, cChar = 4 };
  Control* sender = nullptr;
  int kind = cDown;
  bool handled = false;  // a handler sets it to keep the key from the control
  int modifiers = 0;
  int key = 0;  // one of Key's codes; the character for cChar
};

// The mouse did something inside a control.
struct MouseArgs {
  enum Kind { cDown = 1, cUp = 2, cMove = 4, cContext = 8, cWheel = 16, cEnter = 32, cLeave = 64 };
  enum Button { cNone = 0, cLeft = 1, cRight = 2, cMiddle = 4 };
  Control* sender = nullptr;
  int kind = cDown;
  bool handled = false;
  int modifiers = 0;
  int button = cNone;
  int x = 0;  // client coordinates; for a context menu screen coordinates, or -1 from the keyboard
  int y = 0;
  int wheel = 0;  // degrees turned, positive away from the user; cWheel only
};

// An event of one item of a control: a row, a cell, or the only text.
struct ItemArgs {
  Control* sender = nullptr;
  int value = 0;     // set by the event; a handler may change it for the sender to read
  int row = -1;      // which item; -1 for none
  int col = -1;      // its column, if there are columns
  std::string text;  // the item's text
};

// Something happened to a node of a tree.
struct TreeArgs {
  Control* sender = nullptr;
  TreeNode* node = nullptr;
};

// Files were dropped on a form.
struct FilesArgs {
  Control* sender = nullptr;
  Control* over = nullptr;         // the innermost control under the drop; null if it is gone
  std::vector<std::string> paths;  // absolute, in the order of the drop; at least one
};

// The mouse has entered or left a control. Handlers may take MouseArgs or NotifyArgs; they are
// called in the order in which they were added.
class CrossingEvent {
 public:
  // Appends a handler as Event::Add_H does.
  template <class Target, class Class>
  void Add_H(Target* target, void (Class::*method)(MouseArgs&)) {
    detail::CheckMayHandle<Class>();
    if constexpr (detail::cMayHandle<Class>)
      handlers.Append(static_cast<Class*>(target),
                      {static_cast<void (object::*)(MouseArgs&)>(method), nullptr});
  }
  template <class Target, class Class>
  void Add_H(Target* target, void (Class::*method)(NotifyArgs&)) {
    detail::CheckMayHandle<Class>();
    if constexpr (detail::cMayHandle<Class>)
      handlers.Append(static_cast<Class*>(target),
                      {nullptr, static_cast<void (object::*)(NotifyArgs&)>(method)});
  }

  bool HasHandlers() const { return !handlers.IsEmpty(); }

  // Calls every handler with the arguments of its kind. Returns false if a handler destroyed the
  // event.
  bool Fire(MouseArgs& mouse, NotifyArgs& notify) {
    return handlers.ForEach([&](object& target, const Method& method) {
      if (method.mouse)
        (target.*method.mouse)(mouse);
      else
        (target.*method.notify)(notify);
    });
  }

 private:
  struct Method {
    void (object::*mouse)(MouseArgs&);
    void (object::*notify)(NotifyArgs&);
  };
  detail::HandlerList<Method> handlers;
};

using KeyEvent = Event<KeyArgs>;
using MouseEvent = Event<MouseArgs>;
using ItemEvent = Event<ItemArgs>;
using TreeEvent = Event<TreeArgs>;
using FilesEvent = Event<FilesArgs>;

}  // namespace mavro
