#pragma once

#include <string>

#include "config/IdeSession.h"

namespace zendry {

// Lets the user choose from the recent files or projects; `id` is the command that asks. Answers
// the path; empty when cancelled.
std::string ChooseRecent(const RecentList& recent, int id);

}  // namespace zendry
