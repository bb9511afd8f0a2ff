#pragma once

#include <mavro>

namespace zendry {

// The popup menus of an editor: of its text and of the margins beside it. Each is built at its
// first use and serves all editors.
mavro::ContextMenu& EditorTextMenu();
mavro::ContextMenu& EditorMarginMenu();

}  // namespace zendry
