#pragma once

#include <gtest/gtest.h>

#include <QTest>
#include <string>
#include <vector>

#include "GuiDriver.h"
#include "ScriptedDialogs.h"
#include "frmedt/DesignFrame.h"
#include "frmedt/FormWriter.h"

namespace test {

// The designer on a form that is read from statements, with real mouse and keys.
//
//   Design("Button one, two;", "one.SetBounds(8, 8, 80, 24); ...", [&] { Press(20, 20); ... });
class DesignTest : public testing::Test {
 protected:
  // Lines of the two regions, without markers; each statement on a line of its own.
  void Design(const std::string& decl, const std::string& init,
              const std::function<void()>& script) {
    form.root.declClass = "TestForm";
    form.ReadDecl(Lines("\t//!decl\n" + decl));
    form.ReadInit(Lines("\t\t//!init\n" + init));
    zendry::DesignFrame its(form);
    frame = &its;
    its.SetBounds(0, 0, 1000, 640);
    RunForm(its, true, script);
    result = its.result;
    frame = nullptr;
  }
  static std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    for (size_t start = 0; start < text.size();) {
      const size_t end = std::min(text.find('\n', start), text.size() - 1) + 1;
      lines.push_back(text.substr(start, end - start));
      start = end;
    }
    if (!lines.empty() && lines.back().back() != '\n') lines.back() += '\n';
    return lines;
  }
  // The statements of a row of buttons: one, two, ... each 80 by 24, below one another.
  static std::string Buttons(int count) {
    std::string init;
    for (int i = 1; i <= count; ++i) {
      const std::string name = "button" + std::to_string(i);
      init += "//!<Button>\n" + name + ".SetBounds(40, " + std::to_string(40 * i) +
              ", 80, 24);\nthis->Add(&" + name + ");\n";
    }
    return init;
  }
  static std::string Names(int count) {
    std::string decl;
    for (int i = 1; i <= count; ++i) decl += "Button button" + std::to_string(i) + ";\n";
    return decl;
  }

  zendry::FormEditor& Surface() const { return frame->editor; }
  zendry::CtrlRec& Rec(const std::string& name) const { return *form.Find(name); }
  mavro::Control& Live(const std::string& name) const { return *Rec(name).ctrl; }
  mavro::Rect At(const std::string& name) const { return Live(name).Bounds(); }
  std::vector<std::string> Selected() const {
    std::vector<std::string> names;
    for (const zendry::CtrlRec* rec : Surface().SelectedRecords()) names.push_back(rec->name);
    return names;
  }
  std::vector<std::string> AllNames() const {
    std::vector<std::string> names;
    for (size_t i = 1; i < form.controls.size(); ++i) names.push_back(form.controls[i]->name);
    return names;
  }
  // What "Save and close" would write, without tabs and line ends.
  std::vector<std::string> Written() {
    Surface().live.RefreshAll();
    std::vector<std::string> lines;
    zendry::FormWriter writer(form);
    writer.WriteInit(lines);
    for (std::string& line : lines) {
      line.erase(0, line.find_first_not_of('\t'));
      line.erase(line.find('\r'));
    }
    return lines;
  }

  // The mouse, at points of the surface.
  QPoint Place(int x, int y) const {
    QWidget* widget = WidgetOf(Surface());
    return widget->mapTo(widget->window(), QPoint(x, y));
  }
  QWindow* Window() const { return WidgetOf(*frame)->windowHandle(); }
  void Press(int x, int y, Qt::KeyboardModifiers keys = Qt::NoModifier) const {
    QTest::mousePress(Window(), Qt::LeftButton, keys, Place(x, y));
  }
  void MoveTo(int x, int y, Qt::KeyboardModifiers keys = Qt::NoModifier) const {
    QTest::mouseEvent(QTest::MouseMove, Window(), Qt::NoButton, keys, Place(x, y));
  }
  void Release(int x, int y, Qt::KeyboardModifiers keys = Qt::NoModifier) const {
    QTest::mouseRelease(Window(), Qt::LeftButton, keys, Place(x, y));
  }
  void Click(int x, int y, Qt::KeyboardModifiers keys = Qt::NoModifier) const {
    Press(x, y, keys);
    Release(x, y, keys);
  }
  void DragMouse(int fromX, int fromY, int toX, int toY) const {
    Press(fromX, fromY);
    MoveTo((fromX + toX) / 2, (fromY + toY) / 2);
    MoveTo(toX, toY);
    Release(toX, toY);
  }
  void Type(Qt::Key key, Qt::KeyboardModifiers keys = Qt::NoModifier) const {
    Key(*frame, key, keys);
  }
  void ChooseTool(const std::string& className) const {
    const auto& entries = frame->toolBox.Entries();
    for (size_t i = 0; i < entries.size(); ++i)
      if (entries[i].classDef->name == className)
        frame->toolBox.icons.selectedIndex = static_cast<int>(i);
  }
  std::string Status(int part) const { return frame->statusBar.PaneText(part); }

  zendry::FormData form;
  ScriptedDialogs dialogs;
  zendry::DesignFrame* frame = nullptr;
  int result = 0;
};

}  // namespace test
