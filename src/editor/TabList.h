#pragma once

namespace zendry {

class EditTabs;

// Shows the list of the open files, those in front last first, and finds one by typed letters of
// its name or path. The chosen one comes to the front; Escape leaves everything as it was.
void ChooseTab(EditTabs& tabs);

}  // namespace zendry
