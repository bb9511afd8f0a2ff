// A screen reader finds a role and a name in every window that the program shows.
#include <gtest/gtest.h>

#include <QAccessible>

#include "GoToLineDlg.h"
#include "IdeDriver.h"
#include "browser/BrowserActs.h"

namespace zendry {
namespace {

using test::IdeDriver;

std::string RoleName(QAccessible::Role role) {
  return std::to_string(static_cast<int>(role));
}

struct Seen {
  QAccessible::Role role;
  std::string name;
  int keyParts = 0;    // what can have the keyboard
  std::string faults;  // those of them that have no name or are nothing more than an area
};

void LookBelow(QAccessibleInterface& object, Seen& seen) {
  if (object.state().invisible) return;
  const auto* widget = qobject_cast<const QWidget*>(object.object());
  // A part that leaves the keyboard to another one is a part of that one.
  if (widget && widget->focusPolicy() & Qt::TabFocus && !widget->focusProxy()) {
    ++seen.keyParts;
    const bool isArea = object.role() == QAccessible::Client;
    const bool isTabRow = object.role() == QAccessible::PageTabList;  // its tabs have the names
    const bool isNamed = isTabRow || !object.text(QAccessible::Name).isEmpty();
    if (isArea || !isNamed)
      seen.faults += std::string(widget->metaObject()->className()) + " of role " +
                     RoleName(object.role()) + (isNamed ? "" : " has no name") + "; ";
  }
  for (int i = 0; i < object.childCount(); ++i)
    if (QAccessibleInterface* child = object.child(i)) LookBelow(*child, seen);
}

Seen SeenIn(const mavro::Form& form) {
  QAccessibleInterface* window = QAccessible::queryAccessibleInterface(test::WidgetOf(form));
  Seen seen{window->role(), window->text(QAccessible::Name).toStdString(), 0, ""};
  LookBelow(*window, seen);
  return seen;
}

std::string NameOf(const mavro::Control& control) {
  QWidget* named = control.impl->hwnd->StyledWidget();
  return QAccessible::queryAccessibleInterface(named)->text(QAccessible::Name).toStdString();
}

// Calls `open`, which shows a dialog, and answers its contents.
Seen SeenInDialog(IdeDriver& ide, const std::function<void()>& open) {
  Seen seen{};
  ide.OnDialog([&](mavro::Form& dialog) {
    seen = SeenIn(dialog);
    dialog.Close();
  });
  open();
  return seen;
}

TEST(AccessibleWindows, MainWindow_AllItsPanes) {
  IdeDriver ide;
  ide.Run({ide.Project({{"a.cpp", "int a;\n"}})}, [&] {
    theMainForm->editTabs.OpenFile(ide.files.Path("a.cpp"));
    for (int page = 0; page < theMainForm->bottomTabs.TabCount(); ++page) {
      theMainForm->ShowPage(page);
      theMainForm->leftTabs.selectedIndex = page % 2;
      const Seen seen = SeenIn(*theMainForm);
      EXPECT_EQ(seen.role, QAccessible::Window);
      EXPECT_NE(seen.name, "");
      EXPECT_EQ(seen.faults, "") << "page " << page;
      EXPECT_GE(seen.keyParts, 3) << "the editor, and a part of each pane";
    }
  });
}

TEST(AccessibleWindows, Parts_AreCalledByWhatTheyShow) {
  IdeDriver ide;
  ide.Run({ide.Project({{"a.cpp", "int a;\n"}})}, [&] {
    theMainForm->editTabs.OpenFile(ide.files.Path("a.cpp"));
    EXPECT_EQ(NameOf(*theMainForm->editTabs.Active()->editor), "a.cpp");
    EXPECT_EQ(NameOf(theMainForm->output), "Output");
    EXPECT_EQ(NameOf(theMainForm->projectTree), "Project");
    EXPECT_EQ(NameOf(theMainForm->classTree), "Classes");
    EXPECT_EQ(NameOf(theMainForm->errorList.list), theMainForm->errorList.text);
    EXPECT_EQ(NameOf(theMainForm->watches[3].list), "Watch-4");
    theMainForm->editTabs.NewTab("");
    EXPECT_EQ(NameOf(*theMainForm->editTabs.Active()->editor), "Noname");
    for (const mavro::ToolBar* bar :
         {&theMainForm->toolBar, &theMainForm->paneBar, &theMainForm->toolPanel.bar})
      EXPECT_EQ(QAccessible::queryAccessibleInterface(test::WidgetOf(*bar))->role(),
                QAccessible::ToolBar);
  });
}

TEST(AccessibleWindows, Dialogs) {
  IdeDriver ide;
  ide.Run({ide.Project({{"a.cpp", "class A {\n  int a;\n};\n"}})}, [&] {
    theMainForm->editTabs.OpenFile(ide.files.Path("a.cpp"));
    const std::pair<const char*, std::function<void()>> rows[] = {
        {"New", [] { theFileActs.OnCommand(theFileActs.actNew->id); }},
        {"Class wizard", [] { theBrowserActs.OnCommand(cAddMemberCommand); }},
        {"Browser", [] { theBrowserActs.OnCommand(cOpenBrowserCommand); }},
        {"Recent files", [] { theFileActs.OnCommand(cRecentFilesCommand); }},
        {"Recent projects", [] { theFileActs.OnCommand(cRecentProjectsCommand); }},
        {"Breakpoints", [] { theDebugger.OnCommand(cViewBreakpointsCommand); }},
        {"watch", [] { theDebugger.OnCommand(cAddWatchCommand); }},
        {"Debug Commander", [] { theDebugger.OnCommand(cCommanderCommand); }},
        {"Program parameters", [] { theDebugger.OnCommand(cParametersCommand); }},
        {"Go to", [] { mavro::AskGoToLine(*theMainForm->editTabs.Active()->editor); }}};
    for (const auto& [title, open] : rows) {
      const Seen seen = SeenInDialog(ide, open);
      EXPECT_EQ(seen.role, QAccessible::Dialog) << title;
      EXPECT_TRUE(seen.name.starts_with(title)) << seen.name;
      EXPECT_EQ(seen.faults, "") << title;
      EXPECT_GE(seen.keyParts, 3) << title;
    }
  });
}

}  // namespace
}  // namespace zendry
