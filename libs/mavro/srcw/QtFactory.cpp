#include <string_view>

#include "QtFactories.h"

namespace mavro {

namespace {

struct ClassRow {
  std::string_view className;
  NativeFactory make;
};

// The native classes and what makes their windows: the only place that names the widgets.
constexpr ClassRow cClasses[] = {
    {"mavroCont", MakeContainer},
    {"mavrosplitcont", MakeContainer},
    {"mavForm", MakeForm},
    {"#32770", MakeForm},
    {"mavroSplitter", MakeSplitBar},
    {"SysTreeView32", MakeTreeView},
    {"mavrotbctrl", MakeTabs},
    {"ToolbarWindow32", MakeToolBar},
    {"Static", MakeLabel},
    {"Button", MakeButton},
    {"Edit", MakeEdit},
    {"ListBox", MakeListBox},
    {"ComboBox", MakeComboBox},
    {"SysListView32", MakeListView},
    {"msctls_statusbar32", MakeStatusBar},
};

}  // namespace

NativeWindow* MakeNativeWindow(const CreateInfo& info) {
  for (const ClassRow& row : cClasses)
    if (row.className == info.className) {
      NativeWindow* window = row.make(info);
      WindowProc(window, WM_NCCREATE, 0, 0);
      return window;
    }
  return nullptr;
}

}  // namespace mavro
