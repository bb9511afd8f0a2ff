#pragma once

#include <string>
#include <vector>

#include "rescue/RescueCopies.h"

namespace zendry {

class Project;

// Writes a changed project into the rescue folder; takes this program's copy away when nothing is
// unsaved. A project that has no file of its own yet has nothing to lose.
void KeepRescueCopy(const Project& project);
// Takes this program's copy away.
void DropRescueCopy();

// The changed projects of programs that have ended without a word.
std::vector<RescueCopy> FindRescuedProjects();
// Asks about each of them: Yes saves it where it belongs,
// No throws it away, Cancel leaves it for the next time. Answers the path of the last one saved;
// empty for none.
std::string OfferRescuedProjects();

// Has the project in hand and the open texts rescued when a precondition breaks or a signal ends
// the program, but for SIGKILL. Three seconds are given; then the program ends whatever is still
// being written, and it always ends of what it would have ended of.
void RescueOnLastWords();

}  // namespace zendry
