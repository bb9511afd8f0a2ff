#pragma once

namespace zendry {

// Asks for a new project, makes it and opens it.
void MakeNewProject();
// Asks for a folder and a name, copies the open project there and opens the copy.
void CloneProject();

}  // namespace zendry
