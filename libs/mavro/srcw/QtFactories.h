#pragma once

#include "NativeWindow.h"

namespace mavro {

// The factories of the table of native classes; each makes the widget with ParentWidget(info) as
// parent.
using NativeFactory = NativeWindow* (*)(const CreateInfo& info);

NativeWindow* MakeContainer(const CreateInfo& info);
NativeWindow* MakeForm(const CreateInfo& info);
NativeWindow* MakeCanvas(const CreateInfo& info);
NativeWindow* MakeSplitBar(const CreateInfo& info);
NativeWindow* MakeLabel(const CreateInfo& info);
NativeWindow* MakeButton(const CreateInfo& info);
NativeWindow* MakeGroupBox(const CreateInfo& info);
NativeWindow* MakeButtonGroup(const CreateInfo& info);
NativeWindow* MakeScroller(const CreateInfo& info);
NativeWindow* MakeSpinEdit(const CreateInfo& info);
NativeWindow* MakeTrackBar(const CreateInfo& info);
NativeWindow* MakeProgressBar(const CreateInfo& info);
NativeWindow* MakeRichView(const CreateInfo& info);
NativeWindow* MakeIconView(const CreateInfo& info);
NativeWindow* MakeEdit(const CreateInfo& info);
NativeWindow* MakeListBox(const CreateInfo& info);
NativeWindow* MakeComboBox(const CreateInfo& info);
NativeWindow* MakeListView(const CreateInfo& info);
NativeWindow* MakeGrid(const CreateInfo& info);
NativeWindow* MakeStatusBar(const CreateInfo& info);
NativeWindow* MakeTreeView(const CreateInfo& info);
NativeWindow* MakeTabs(const CreateInfo& info);
NativeWindow* MakeToolBar(const CreateInfo& info);

// Adds a class of a library above this one. The name is not copied and must stay valid; a name that
// is already known keeps its factory.
void RegisterNativeClass(std::string_view className, NativeFactory make);

// The client widget of the parent; null for a form.
QWidget* ParentWidget(const CreateInfo& info);

}  // namespace mavro
