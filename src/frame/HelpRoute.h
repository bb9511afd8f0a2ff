#pragma once

namespace zendry {

class MainForm;

// Ties the help commands to the window's editors: the word at the caret and its class.
void BindHelp(MainForm& form);
void UnbindHelp();

}  // namespace zendry
