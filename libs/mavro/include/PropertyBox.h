#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Button.h"
#include "Edit.h"
#include "Label.h"
#include "ListBox.h"
#include "Scroller.h"
#include "Timer.h"

namespace mavro {

class PropertyBox;

// One row of a PropertyBox: a title, and the one editor that its mode shows. Editors are made at
// their first use and then kept.
class PopertyItem : public Panel {
 public:
  enum Mode { cEdit, cButton, cCombo, cCheck };

  PopertyItem();
  ~PopertyItem() override;

  // Hides the current editor and shows that of `newMode`. A new row has none.
  void SetMode(int newMode);
  // Fills the combo box with the pieces of `list` between its "|". `list` outlives the row.
  void SetOptions(const char* list);
  void SetTitle(const std::string& newTitle);
  // The text of the active editor; of the check box "true" or "false". Setting it fires nothing: a
  // text that the combo box doesn't have selects none.
  void SetValue(const std::string& value);
  std::string Value() const;
  // Takes the text of the active editor and fires the box's onChange with it. A typed text that
  // doesn't suit the edit's data type is not taken.
  void Commit();
  void Layout() override;

  int index = 0;  // told with the box's events
  Label title;
  Edit edit;
  Button button;
  ComboBox combo;
  CheckBox check;
  Control* const editors[4];  // by Mode

  int ActiveMode() const { return mode; }          // -1 before the first SetMode
  const char* Options() const { return options; }  // the list that was set last, or null

 private:
  friend class PropertyBox;

  PropertyBox& Box() const;
  Control* Active() const { return mode < 0 ? nullptr : editors[mode]; }
  void Enliven(Control& editor);
  void ForgetTyping();
  void GiveBack();
  void OnTyped(NotifyArgs& args);
  void OnEditKey(KeyArgs& args);
  void OnLeft(NotifyArgs& args);
  void OnArrow(KeyArgs& args);
  void OnButtonPressed(MouseArgs& args);
  void OnClicked(NotifyArgs& args);
  void OnDoubleClicked(NotifyArgs& args);
  void OnChosen(ItemArgs& args);
  void OnTitle(MouseArgs& args);
  void OnEdge(MouseArgs& args);

  int mode = -1;
  const char* options = nullptr;
  std::string kept;                            // the text before the user typed
  bool typed = false;                          // the edit has a text that was not taken yet
  enum class Press { cKey, cMouse, cSecond };  // the second one of a double click
  Press press = Press::cKey;                   // what clicks the button now
  int titleWidth = 0;                          // of the title's letters
  bool isDragging = false;                     // the edge of the title column
};

// A column of rows, each a title and an editor, that scrolls. Rows are made once and reused. Enter
// takes a typed text, and so does leaving its editor; Escape gives the old one back; Up and Down go
// to the neighbouring row. The edge between titles and editors can be dragged.
class PropertyBox : public Scroller {
 public:
  PropertyBox();
  ~PropertyBox() override;

  // Shows the first `count` rows, which are made if there are fewer, and hides the others.
  void SetCount(int count);
  int Count() const { return used; }
  // `row` is less than Count().
  PopertyItem& Item(int row);
  // Makes the title column as wide as its widest title, but not more than most of the box, unless
  // the user has dragged its edge. To be called when titles have been set.
  void FitTitles();
  // Gives a row's editor the focus and scrolls it into view. A row out of range is ignored.
  void FocusRow(int row);
  void Layout() override;

  static constexpr int cRowHeight = 24;
  // Row: the row's index; text: the new value. The user has changed a value, or clicked a button.
  ItemEvent onChange;
  // The same for a double click on a row's button.
  ItemEvent onDblClickRow;
  // If true, a click of the mouse on a row's button is told when no second one has followed it.
  bool waitsForDoubleClick = false;

 private:
  friend class PopertyItem;

  int TitleColumn() const;
  void DragEdge(int to);
  void PlaceRows(int width);
  void ClickLater(const PopertyItem& item);
  void OnWaited(NotifyArgs& args);
  void OnResized(NotifyArgs& args);

  std::vector<std::unique_ptr<PopertyItem>> items;
  int used = 0;
  int column = 80;           // where the editors begin
  bool columnIsSet = false;  // by the user
  int clicked = -1;          // the row whose button waits for a second click
  Timer doubleClickTime{this};
};

}  // namespace mavro
