#pragma once

#include <string>
#include <vector>

#include "Action.h"
#include "Core.h"

namespace mavro {

class ToolBar;

// The type that means a separator in a tool bar's list of items.
struct ToolBarSeparator {};
inline constexpr ToolBarSeparator _separator_{};

// The plain rows of a tool bar, by the names that designed forms use.
class ToolBarItems {
 public:
  explicit ToolBarItems(ToolBar& bar) : owner(bar) {}
  ToolBarItems(const ToolBarItems&) = delete;
  ToolBarItems& operator=(const ToolBarItems&) = delete;

  // Appends a button whose command is the number of its picture, or a separator.
  void Add(int image, const std::string& toolTip);
  void Add(ToolBarSeparator);
  int GetCount() const;

 private:
  ToolBar& owner;
};

// A row of picture buttons, separators and controls. A button shows one action of a command table.
// A menu at the end of the row contains the buttons that don't fit.
class ToolBar : public Control {
 public:
  class Impl;
  ToolBar();
  ~ToolBar() override;

  // One element of the bar: a button, a separator or a control.
  struct Row {
    int id = 0;                // the row's index
    Action* action = nullptr;  // not owned; null for separators, controls and plain buttons
    int image = -1;
    int command = -1;            // of a plain button; -1 for that of its picture
    std::string text;            // tool tip of a plain button
    Control* control = nullptr;  // not owned
    bool separator = false;
    bool enabled = true;
  };

  // Appends a button for an action. If `image` is 0 or more, it is stored in the action; otherwise
  // the button shows the action's stored image.
  void Add(Action* action, int image);
  // Appends a button without an action, for `command`; -1 makes the picture's number its command.
  void AddButton(int image, const std::string& text, int command = -1);
  void AddSeparator();
  // Appends a control, which keeps its own width and becomes a child of the bar.
  void AddControl(Control* control);
  // Replaces the action of a row, its picture (-1 keeps the old one) and its tool tip.
  void SetAction(int row, Action* action, int image);
  // +1 enables the button of a row, -1 disables it.
  void Command(int row, int message);
  void Enable(int row, bool on) { Command(row, on ? 1 : -1); }
  // Removes all rows; controls among them lose their windows.
  void Clear();
  // Updates the buttons after actions have changed their texts or hotkeys.
  void Rebuild();
  int RowCount() const { return static_cast<int>(rows.size()); }
  const Row& GetRow(int cmd) const;
  // Places the buttons and controls.
  void Layout() override;

  ToolBarItems items;
  // The strip with the buttons' pictures, by resource id. If the height of the bar was never set,
  // it follows from the pictures.
  WriteProperty<int> images;
  // A button was clicked and no action's handler handles it; value: its command, which is an
  // action's id or the command that the button was added with.
  NotifyEvent onClick;

 private:
  Impl& TheImpl() const;
  void Append(Row row);

  std::vector<Row> rows;
};

}  // namespace mavro
