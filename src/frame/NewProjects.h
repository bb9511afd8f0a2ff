#pragma once

namespace zendry {

// Asks for a new project, makes it and opens it. The dialog begins with a page of
// NewProjectDialog::Page, and on that of the demos with the row of one.
void MakeNewProject(int page = 0, int demo = -1);
// Asks for a folder and a name, copies the open project there and opens the copy.
void CloneProject();

}  // namespace zendry
