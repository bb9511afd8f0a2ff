#pragma once

#include <string>
#include <vector>

namespace zendry {

class Project;

// A value of a project that can make a build or a run start something other than the compilers of
// the installation, or write elsewhere.
struct ProjectDanger {
  std::string place;  // the value's name in the dialogs, such as "Debug, Compile"
  std::string text;   // the part of it, such as "-fplugin=./x.so"
  // Tells the danger from all others: the project's folder, the text, and the content of a file
  // that holds further options.
  std::string key;
};

// The dangers of a project's flags, output name, program parameters and tools, in this order. Runs
// nothing. Options of compilers: -wrapper, -fplugin=, -iplugindir=, -specs=, -B, @file, linker
// plug-ins and program interpreters, and files to write. Tools that lie in the project's folder.
std::vector<ProjectDanger> FindDangers(const Project& project);

}  // namespace zendry
