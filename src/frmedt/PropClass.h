#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zendry {

struct CtrlRec;
struct PropValue;

// What an operation of a value type works on.
struct PropContext {
  CtrlRec* rec = nullptr;
  PropValue* prop = nullptr;
  int number = 0;    // the value as a number, for what reaches a control
  std::string text;  // of the statement
};

// Numbers of the value types. From cItemsType on a value is a list of statements; for those above
// cSelectionType the property box shows a button.
enum PropType {
  cStringType = 0,
  cIntegerType = 1,
  cFloatType = 2,
  cExpressionType = 3,
  cSelectionType = 4,
  cCommandType = 5,
  cItemsType = 6
};

// A type of property values. A value is always text in the model; the type turns the text of a
// statement into it and back. The instances are global and shared by all rows. Taking a value from
// the property box needs a window, so that isn't here: the window half has a table from each
// instance to its editor.
class PropClass {
 public:
  explicit PropClass(int newType, const char* newRef = nullptr, const char* newPrefix = nullptr)
      : type(newType), ref(newRef), prefix(newPrefix) {}
  PropClass(const PropClass&) = delete;
  PropClass& operator=(const PropClass&) = delete;
  virtual ~PropClass() = default;

  // Sets the value of `context.prop` from the text of a statement in `context.text`. A text that
  // doesn't fit leaves the value as it was.
  virtual void ToValue(PropContext& context) const;
  // Sets `context.text` to the source of the value. In that of a list each piece ends with a NUL
  // character.
  virtual bool ToSource(PropContext& context) const;

  const int type;
  const char* const ref;     // options of a selection, separated by "|"
  const char* const prefix;  // of each option in source
};

// One of a list of options.
class PropSel : public PropClass {
 public:
  explicit PropSel(const char* options, const char* prefix = nullptr)
      : PropClass(cSelectionType, options, prefix) {}
  void ToValue(PropContext& context) const override;
  bool ToSource(PropContext& context) const override;
};

// A command of the property box; nothing of it is in the source.
class PropCmd : public PropClass {
 public:
  PropCmd() : PropClass(cCommandType) {}
};

// A font, by the same text in the source and in the value.
class PropFont : public PropClass {
 public:
  PropFont() : PropClass(cCommandType) {}
};

// A list of items, each of them the source text of the arguments of an `Add`. In the value each
// item ends with CR LF.
class PropItems : public PropClass {
 public:
  PropItems() : PropClass(cItemsType) {}
  void ToValue(PropContext& context) const override;
  bool ToSource(PropContext& context) const override;

 protected:
  // What comes before and after an item in the source: a quote or nothing.
  explicit PropItems(std::string_view theQuote) : PropClass(cItemsType), quote(theQuote) {}

 private:
  const std::string_view quote = {};
};

// A list of strings.
class PropStrItems : public PropItems {
 public:
  PropStrItems() : PropItems("\"") {}
};

// The buttons of a tool bar.
class PropTbItems : public PropItems {};

extern const PropClass thePropString, thePropInteger, thePropFloat, thePropExpression;
extern const PropSel thePropBoolean, thePropDock, thePropBorder, thePropColor, thePropIcon,
    thePropAlign, thePropDataType, thePropButtonKind, thePropOrientation, thePropDialLabels,
    thePropWindowType;
extern const PropCmd thePropPages;
extern const PropFont thePropFont;
extern const PropStrItems thePropStrItems;
extern const PropTbItems thePropTbItems;

// The options of a list that is separated by "|".
std::vector<std::string> SplitOptions(std::string_view options);
// The number of "|" before the first place where the text of the value is found in the whole list,
// so a value that is a part of an earlier option means that one; 0 if it isn't found.
int OptionPosition(std::string_view options, std::string_view value);
// The items of a list's value: the pieces that end with CR LF, and what is behind the last one.
std::vector<std::string> SplitItems(std::string_view value);

// The number that a value means for its control: of an integer the number at its beginning, of a
// selection the position of its option, else 0.
int ValueNumber(const PropClass& type, std::string_view value);

// A font as its text tells it. The text of a font without a size, such as "<default>", gives an
// empty one. The last character of a quoted typeface is lost: Font("Arial", 10) gives "Aria".
struct FontText {
  bool isBold = false;
  bool isItalic = false;
  int size = 0;
  std::string name;

  static FontText Parse(std::string_view text);
};

}  // namespace zendry
