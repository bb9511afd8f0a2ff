#include <string_view>
#include <vector>

#include "QtFactories.h"

namespace mavro {

namespace {

struct ClassRow {
  std::string_view className;
  NativeFactory make;
};

// The native classes and the factories of their windows: the only place that names the widgets.
constexpr ClassRow cClasses[] = {
    {"mavroCont", MakeContainer},
    {"mavrosplitcont", MakeContainer},
    {"mavroCustom", MakeCanvas},
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
    {"mavroGrid", MakeGrid},
    {"mavroBtnGroup", MakeButtonGroup},
    {"mavroScroller", MakeScroller},
    {"msctls_updown32", MakeSpinEdit},
    {"msctls_trackbar32", MakeTrackBar},
    {"msctls_progress32", MakeProgressBar},
    {"RichEdit50W", MakeRichView},
    {"msctls_statusbar32", MakeStatusBar},
};

// The classes of libraries above this one.
std::vector<ClassRow>& FurtherClasses() {
  static std::vector<ClassRow> classes;
  return classes;
}

template <class List>
NativeFactory FindFactory(const List& classes, std::string_view name) {
  for (const ClassRow& row : classes)
    if (row.className == name) return row.make;
  return nullptr;
}

}  // namespace

void RegisterNativeClass(std::string_view className, NativeFactory make) {
  if (!FindFactory(FurtherClasses(), className)) FurtherClasses().push_back({className, make});
}

NativeWindow* MakeNativeWindow(const CreateInfo& info) {
  NativeFactory make = FindFactory(cClasses, info.className);
  if (!make) make = FindFactory(FurtherClasses(), info.className);
  if (!make) return nullptr;
  NativeWindow* window = make(info);
  WindowProc(window, WM_NCCREATE, 0, 0);
  return window;
}

}  // namespace mavro
