#pragma once

#include <mavro>

namespace zendry {

// Grays what nobody handles, in submenus too.
void GrayUnhandled(mavro::Menu& menu);

// The popup menus of an editor: of its text and of the margins beside it. Each is built at its
// first use and serves all editors.
mavro::ContextMenu& EditorTextMenu();
mavro::ContextMenu& EditorMarginMenu();

}  // namespace zendry
