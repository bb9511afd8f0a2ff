#pragma once

#include <string>
#include <vector>

#include "rescue/RescueCopies.h"

namespace zendry {

class Project;

// Writes a changed project into the rescue folder; removes this program's copy when nothing is
// unsaved. A project that has no file of its own yet gets no copy: it has nothing to lose.
void KeepRescueCopy(const Project& project);
// Removes this program's copy.
void DropRescueCopy();
// Says if unsaved projects and texts get copies; false also removes the copies that are there.
void KeepRescueCopies(bool on);

// The changed projects of runs of the program that have ended unexpectedly.
std::vector<RescueCopy> FindRescuedProjects();
// Asks about each of them: Yes saves it under its own path, No deletes the copy, Cancel keeps the
// copy for the next start. Answers the path of the last project saved; empty for none.
std::string OfferRescuedProjects();

// From now on, rescues the open project and the open texts when a precondition breaks or a signal
// other than SIGKILL ends the program. The rescue has three seconds; then the program ends, even
// during a write. It always ends by its original cause.
void RescueOnLastWords();

}  // namespace zendry
