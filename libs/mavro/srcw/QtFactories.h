#pragma once

#include "NativeWindow.h"

namespace mavro {

// The factories of the table of native classes; each makes the widget with ParentWidget(info) as
// parent.
using NativeFactory = NativeWindow* (*)(const CreateInfo& info);

NativeWindow* MakeContainer(const CreateInfo& info);
NativeWindow* MakeForm(const CreateInfo& info);
NativeWindow* MakeSplitBar(const CreateInfo& info);

// The client widget of the parent; null for a form.
QWidget* ParentWidget(const CreateInfo& info);

}  // namespace mavro
