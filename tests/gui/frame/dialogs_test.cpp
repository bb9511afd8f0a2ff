#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QGroupBox>
#include <QPlainTextEdit>
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>

#include "IdeDriver.h"
#include "base/HelpCommands.h"
#include "browser/BrowserActs.h"
#include "editor/EditorActs.h"
#include "frame/ToolActs.h"
#include "frmedt/EventDlg.h"
#include "frmedt/FontPropDlg.h"
#include "frmedt/FormCheck.h"
#include "frmedt/ItemsDlg.h"
#include "frmedt/LossDlg.h"
#include "frmedt/SelectDlg.h"
#include "frmedt/ToolBarEditor.h"
#include "help/HelpActs.h"
#include "search/ReplaceListDlg.h"

// Every dialog of the program: a screen reader finds names, Tab reaches each field, and the main
// window can be told to close while it is open.

namespace zendry {
namespace {

using test::IdeDriver;
using testing::IsEmpty;

constexpr char cForm[] =
    "class A: public Form\n{\n\ttypedef A This;\npublic:\n\t//!decl\n\t//!end\n"
    "\tA() {\n\t\tInitialize();\n\t}\nprivate:\n\tvoid Initialize() {\n\t\t//!init\n\t\t//!end\n"
    "\t}\n};\n";

struct DialogRow {
  const char* className;
  std::function<void()> open;
  bool isModal = true;
  bool savesBefore = false;  // the command saves the texts before it asks
};

void PrintTo(const DialogRow& row, std::ostream* out) {
  *out << row.className;
}

const DialogRow cRows[] = {
    {"NewFileDlg", [] { theFileActs.OnCommand(cNewCommand); }},
    {"NewProjectDialog", [] { theFileActs.OnCommand(cNewProjectCommand); }},
    {"CopyProjectDlg", [] { theFileActs.OnCommand(cCloneProjectCommand); }, true, true},
    {"SelectBox", [] { theFileActs.OnCommand(cRecentFilesCommand); }},
    {"PrjOptionsDlg", [] { thePrjActs.OnCommand(cProjectOptionsCommand); }},
    {"IdeOptForm", [] { theToolActs.OnCommand(cIdeOptionsCommand); }},
    {"FindInFilesDlg", [] { theToolActs.OnCommand(cFindInProjectCommand); }},
    {"FindInFilesDlg", [] { theToolActs.OnCommand(cReplaceInProjectCommand); }},
    {"NewFormDlg", [] { theToolActs.OnCommand(cNewFormCommand); }},
    {"ClassWizard", [] { theBrowserActs.OnCommand(cAddMemberCommand); }},
    {"BrowserDlg", [] { theBrowserActs.OnCommand(cOpenBrowserCommand); }},
    {"TabList", [] { theEditorActs.OnCommand(cTabListCommand); }},
    {"BreakEditor", [] { theDebugger.OnCommand(cViewBreakpointsCommand); }},
    {"TextDlg", [] { theDebugger.OnCommand(cAddWatchCommand); }},
    {"ProgParamsDlg", [] { theDebugger.OnCommand(cParametersCommand); }},
    {"DebugDlg", [] { theDebugger.OnCommand(cCommanderCommand); }},
    {"AboutDlg", [] { theHelpActs.OnCommand(cAboutCommand); }},
    {"HelpWindow", [] { theHelpActs.OnCommand(cShowHelpCommand); }, false},
    {"ReplaceListDlg",
     [] {
       ReplaceListDlg({{theMainForm->ActiveFile(), 2, 0}}, "a", "b").Choose();
     }},
    {"FindTextDlg", [] { theEditorActs.OnCommand(cFindCommand); }},
    {"EditReplaceDlg", [] { theEditorActs.OnCommand(mavro::cSciReplace); }},
    {"GoToLineDlg", [] { theEditorActs.OnCommand(mavro::cSciGoToLine); }},
    {"PageSetupDlg", [] { theFileActs.OnCommand(cPageSetupCommand); }},
    {"PrintPreviewDlg", [] { theFileActs.OnCommand(cPrintPreviewCommand); }},
    {"EventDlg",
     [] {
       EventDlg({"OnClick", "OnOther"}, "OnClick").Ask();
     }},
    {"LossDlg", [] { LossDlg("These would be lost:", {FormLoss{}}).Choose(); }},
    {"SelectDlg",
     [] {
       SelectDlg({"A", "B"}).Choose();
     }},
    {"ItemsDlg",
     [] {
       std::string items = "one\r\n";
       ItemsDlg().Ask(items);
     }},
    {"ToolBarEditor",
     [] {
       std::string items;
       ToolBarEditor().Ask(items);
     }},
    {"FontPropDlg",
     [] {
       std::string font = "Font(10)";
       FontPropDlg(font).Ask(font);
     }},
};

// The designer's window and its preview, which its own tests open.
const std::set<std::string> cElsewhere = {"DesignFrame", "PreviewForm"};

// The controls that the keyboard should reach, and what is wrong with their names.
struct Fields {
  std::set<QWidget*> widgets;
  std::string faults;
};

std::string Describe(const QWidget& widget) {
  QAccessibleInterface* object =
      QAccessible::queryAccessibleInterface(const_cast<QWidget*>(&widget));
  return std::string(widget.metaObject()->className()) + " \"" +
         object->text(QAccessible::Name).toStdString() + "\"; ";
}

Fields FieldsOf(const mavro::Form& form) {
  Fields fields;
  for (QWidget* widget : test::WidgetOf(form)->findChildren<QWidget*>()) {
    if (!(widget->focusPolicy() & Qt::TabFocus) || widget->focusProxy() || !widget->isVisible() ||
        !widget->isEnabled())
      continue;
    QAccessibleInterface* object = QAccessible::queryAccessibleInterface(widget);
    const bool isTabRow = object->role() == QAccessible::PageTabList;  // its tabs have the names
    if (!isTabRow && object->text(QAccessible::Name).isEmpty()) fields.faults += Describe(*widget);
    fields.widgets.insert(widget);
  }
  return fields;
}

// Tab reaches one button of a group, the arrow keys reach the others.
std::set<QWidget*> GroupOf(QWidget* widget) {
  const auto* button = qobject_cast<QAbstractButton*>(widget);
  const auto* group = widget ? qobject_cast<QGroupBox*>(widget->parentWidget()) : nullptr;
  if (!group || !button || !button->isCheckable()) return {widget};
  const auto buttons = group->findChildren<QAbstractButton*>();
  return {buttons.begin(), buttons.end()};
}

// Where a Tab is text, Ctrl+Tab goes on.
std::string NotReachedByTab(mavro::Form& form, std::set<QWidget*> wanted) {
  const size_t steps = 2 * wanted.size() + 2;
  for (size_t i = 0; i < steps && !wanted.empty(); ++i) {
    for (QWidget* reached : GroupOf(QApplication::focusWidget())) wanted.erase(reached);
    const auto* memo = qobject_cast<QPlainTextEdit*>(QApplication::focusWidget());
    const bool takesTab = memo && !memo->isReadOnly();
    test::Key(form, Qt::Key_Tab, takesTab ? Qt::ControlModifier : Qt::NoModifier);
  }
  std::string left;
  for (const QWidget* widget : wanted) left += Describe(*widget);
  return left;
}

class EveryDialog : public testing::TestWithParam<DialogRow> {
 protected:
  // Opens the dialog above a file with unsaved text, and calls the script in it.
  void Run(const std::function<void(mavro::Form&)>& inDialog,
           const std::function<void()>& afterwards) {
    const std::string project = ide.Project({{"a.cpp", cForm}});
    ide.Run({project}, [&] {
      theMainForm->editTabs.OpenFile(ide.files.Path("a.cpp"));
      CppEditor& editor = *theMainForm->editTabs.Active()->editor;
      editor.Focus();
      test::Key(*theMainForm, Qt::Key_X);
      test::Key(*theMainForm, Qt::Key_Return);
      const auto script = [&](mavro::Form& dialog) {
        ran = true;
        inDialog(dialog);
      };
      if (GetParam().isModal) ide.OnDialog(script);
      GetParam().open();
      if (!GetParam().isModal) {
        EXPECT_TRUE(test::WaitFor([] { return mavro::activeForm != theMainForm; }));
        script(*mavro::activeForm);
      }
      afterwards();
    });
    EXPECT_TRUE(ran);
  }
  static bool IsUnsaved() {
    return theMainForm && theMainForm->editTabs.Active() &&
           theMainForm->editTabs.Active()->editor->dirty;
  }
  // What the window manager does for the close box and Alt+F4 of the main window.
  static void AskMainWindowToClose() { test::WidgetOf(*theMainForm)->windowHandle()->close(); }
  static size_t Forms() { return QApplication::topLevelWidgets().size(); }

  IdeDriver ide;
  bool ran = false;
};

std::string NameOfRow(const testing::TestParamInfo<DialogRow>& info) {
  return info.param.className + std::to_string(info.index);
}
INSTANTIATE_TEST_SUITE_P(Of, EveryDialog, testing::ValuesIn(cRows), NameOfRow);

TEST_P(EveryDialog, HasNamesForScreenReaders_AndTabReachesEachField) {
  Run(
      [&](mavro::Form& dialog) {
        QAccessibleInterface* window =
            QAccessible::queryAccessibleInterface(test::WidgetOf(dialog));
        EXPECT_FALSE(window->text(QAccessible::Name).isEmpty());
        const Fields fields = FieldsOf(dialog);
        EXPECT_EQ(fields.faults, "") << "without a name";
        EXPECT_EQ(NotReachedByTab(dialog, fields.widgets), "") << "not reached";
        dialog.Close();
      },
      [] {});
}

TEST_P(EveryDialog, ClosingTheMainWindow_LosesNothing) {
  Run(
      [&](mavro::Form& dialog) {
        mavro::Form* open = &dialog;
        AskMainWindowToClose();
        QCoreApplication::processEvents();
        ASSERT_TRUE(theMainForm);
        EXPECT_EQ(IsUnsaved(), !GetParam().savesBefore);
        if (GetParam().isModal) {
          EXPECT_THAT(ide.dialogs.texts, IsEmpty()) << "the dialog has to be answered first";
          EXPECT_EQ(mavro::activeForm, open);
        } else {
          EXPECT_FALSE(ide.dialogs.texts.empty()) << "the unsaved text is asked about";
        }
        ide.dialogs.texts.clear();
        open->Close();
      },
      [&] {
        EXPECT_EQ(IsUnsaved(), !GetParam().savesBefore);
        if (!IsUnsaved()) return;
        AskMainWindowToClose();
        EXPECT_TRUE(test::WaitFor([&] { return !ide.dialogs.texts.empty(); }));
        EXPECT_TRUE(IsUnsaved()) << "the question was cancelled";
        EXPECT_EQ(ide.files.Read("a.cpp"), cForm);
      });
}

TEST(EveryDialogOfTheProgram, IsListedHere) {
  std::set<std::string> listed = cElsewhere;
  for (const DialogRow& row : cRows) listed.insert(row.className);
  const std::regex form(
      R"(class (\w+) (?:final )?: public (?:mavro::)?(Form|TextDlg|FindBaseDlg)\b)");
  const std::filesystem::path src = std::filesystem::path(TEST_DATA) / "../../src";
  for (const auto& file : std::filesystem::recursive_directory_iterator(src)) {
    const std::string kind = file.path().extension();
    if (kind != ".h" && kind != ".cpp") continue;
    std::ifstream stream(file.path());
    for (std::string line; std::getline(stream, line);) {
      std::smatch match;
      if (!std::regex_search(line, match, form) || match[1] == "MainForm") continue;
      EXPECT_TRUE(listed.contains(match[1])) << match[1] << " of " << file.path();
    }
  }
}

}  // namespace
}  // namespace zendry
