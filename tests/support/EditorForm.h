#pragma once

#include <functional>
#include <map>
#include <string>

#include "EditorColours.h"
#include "Form.h"
#include "GuiDriver.h"
#include "SciEditor.h"
#include "TipRules.h"

namespace test {

// A small language like C with the component's lexer for it.
inline const mavro::StyleRow cSmallStyles[] = {
    {0, 0x101010, 0, 0},       {1, 0x808080, 9, 0},      {2, 0x808080, 9, 0},
    {4, 0x7F7F00, 0, 0},       {5, 0xEF0000, 0x1000, 0}, {6, 0x7F00, 0, 0},
    {9, 0x700F7F, 0, 0},       {10, 0, 0x1000, 0},       {11, 0, 0, 0},
    {12, 0, 0x8000, 0xE0C0E0}, {mavro::StyleRow::cEnd}};

inline mavro::EditorLanguage SmallLanguage() {
  mavro::EditorLanguage language;
  language.name = "cpp";
  language.styles = cSmallStyles;
  language.keywords = "int if for while class return void";
  language.keywords2 = "string";
  language.indentWords = "if for while";
  language.blockStart = "{";
  language.blockEnd = "}";
  language.wordChars = "_abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
  language.tipStart = "(";
  language.tipEnd = ")";
  language.tipSeparators = ",;";
  language.tipCalls = "{,";
  language.memberChars = ".->:";
  for (const int style : {1, 2, 4, 6, 7, 12, 20}) language.quietStyles |= 1u << style;
  language.directiveStyle = 9;
  language.lineComment = "//";
  return language;
}

// An editor that offers what the test has put into its fields and writes down what it was asked.
struct AskedEditor : mavro::SciEditor {
  AskedEditor() {
    options->keywordStyle = 5;
    language = &small;
  }

  void onTextChanged() override { ++textChanges; }
  void onSavePointChanged() override { savePoints += dirty ? "left " : "reached "; }
  void onDwell(int position) override {
    dwelt = position;
    if (hidesTip) Send(mavro::SCI_CALLTIPCANCEL);
  }
  bool getCompletion(std::string& text, std::string& list) override {
    asked += "[" + text + "]";
    list = offered;
    if (clearAsked) text.clear();
    return !offered.empty();
  }
  mavro::ListNote getListNote(const std::string& name) override { return notes[name]; }
  std::string getListChoice(const std::string& typed) override {
    return choice.starts_with(typed) ? choice : "";
  }
  void onListTaken(const std::string& name) override { taken += "[" + name + "]"; }
  bool getCallTip(const std::string& name, std::string& tip) override {
    askedTips += "[" + name + "]";
    if (name != tipName) return false;
    tip = offeredTip;
    return true;
  }
  bool findCallTip(mavro::EditorTip& tip) override {
    if (!SciEditor::findCallTip(tip)) return false;
    for (const std::string& text : furtherTips)
      tip.overloads.push_back(mavro::OverloadOf(text, small));
    return true;
  }
  void onUpdateUI() override { ++updates; }
  bool onFirstPart() override { return firstPart && firstPart(); }

  mavro::EditorLanguage small = SmallLanguage();
  std::string offered, asked, askedTips, tipName = "foo", offeredTip, savePoints;
  std::string choice, taken;
  std::map<std::string, mavro::ListNote> notes;
  std::function<bool()> firstPart;
  std::vector<std::string> furtherTips;  // more signatures of the offered one
  bool clearAsked = true;
  bool hidesTip = false;  // when the mouse rests
  int textChanges = 0, updates = 0, dwelt = -1;
};

// A form that such an editor fills.
struct EditorForm : mavro::Form {
  EditorForm() {
    SetBounds(0, 0, 600, 400);
    editor.dock = mavro::Dock::cFill;
    Add(&editor);
  }

  // Gives the editor a text; the first "@" in it is taken out and the caret put there.
  void Fill(std::string text) {
    const size_t at = text.find('@');
    if (at != std::string::npos) text.erase(at, 1);
    editor.Send(mavro::SCI_CLEARALL);
    editor.ReplaceSelection(text);
    const int caret = at == std::string::npos ? 0 : static_cast<int>(at);
    editor.Select(caret, caret);
    editor.Send(mavro::SCI_EMPTYUNDOBUFFER);
    editor.Send(mavro::SCI_SETSAVEPOINT);
    Settle();
  }
  // The text with "@" at the caret.
  std::string Shown() const {
    std::string text = editor.GetText();
    return text.insert(static_cast<size_t>(editor.CaretPosition()), "@");
  }
  // Types as the window system would.
  void Type(const std::string& text) {
    for (const char c : text) {
      if (c == '\n')
        Key(*this, Qt::Key_Return);
      else if (c == '\t')
        Key(*this, Qt::Key_Tab);
      else
        QTest::keyClick(WidgetOf(*this)->windowHandle(), c);
    }
  }
  // Paints what is due, so that what hangs on painting has happened.
  void Settle() {
    editor.Update();
    QTest::qWait(0);
  }

  AskedEditor editor;
};

// A colour as it is on the screen.
inline QRgb AsPixel(mavro::EditorColour colour, bool isDark = false) {
  const mavro::EditorColourRow& row = mavro::cEditorColours[colour];
  return QRgb(0xFF000000) | static_cast<QRgb>(isDark ? row.dark : row.light);
}

// Runs `script` with the editor focused in a shown form.
inline void RunEditor(EditorForm& form, const std::function<void()>& script) {
  RunForm(form, false, [&] {
    form.editor.Focus();
    script();
  });
}

}  // namespace test
