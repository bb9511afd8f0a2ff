#pragma once

#include <mavro>

namespace zendry {

// The popup menus of an editor: for its text, for the margins beside it, and for both during a
// debug session. Each is built at its first use and shared by all editors.
mavro::ContextMenu& EditorTextMenu();
mavro::ContextMenu& EditorMarginMenu();
mavro::ContextMenu& EditorDebugMenu();

}  // namespace zendry
