#pragma once

#include <functional>
#include <string>

namespace zendry {

class EditTabs;

// Asks for a new form and makes its class: in the text in front, or in a file of its own, which is
// shown. `addToProject` gets the path of each file that was made. False if nothing was made.
bool NewForm(EditTabs& tabs, const std::function<void(const std::string& path)>& addToProject);

}  // namespace zendry
