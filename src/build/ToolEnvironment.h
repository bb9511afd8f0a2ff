#pragma once

#include <string>
#include <vector>

namespace zendry {

// Removes the environment variables that make gcc search folders that no project names.
void ClearCompilerEnvironment();

// The changes of the environment for the tools of a build, as mavro::SpawnConsole::environment
// wants them: messages are in English, so that lines mean what the readers of lines expect. The
// letters and quotes of the user's locale stay. `userLocale` is the value of LC_ALL, or null.
std::vector<std::string> ToolEnvironment(const char* userLocale);

}  // namespace zendry
