#pragma once

#include <mavro>

namespace zendry {

// The popup menus of an editor: for its text and for the margins beside it. Each is built at its
// first use and shared by all editors.
mavro::ContextMenu& EditorTextMenu();
mavro::ContextMenu& EditorMarginMenu();

}  // namespace zendry
