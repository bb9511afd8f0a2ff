#pragma once

#include <string>
#include <vector>

#include "FileText.h"

namespace zendry {

// Where a new project is made.
struct ProjectPlace {
  std::string folder;  // with a trailing slash
  std::string name;

  std::string FileOf(const std::string& extension) const { return folder + name + "." + extension; }
  // True if a project or a program of this name is there already.
  bool IsTaken() const;
};

// Writes the source and the project file of a new console program. Existing files are replaced, so
// the caller asks first. Answers the error of the first file that can't be written.
mavro::FileResult WriteConsoleProject(const ProjectPlace& place, bool isCpp);

// Writes the project file of a new form application of these sources and headers, and its resource
// script.
mavro::FileResult WriteFormProject(const ProjectPlace& place, const std::vector<std::string>& files,
                                   bool withResource);

// The folder that new projects are offered in: the last one, else "CppSrc" in the installation, or
// in the user's own folder if the installation isn't the user's.
std::string DefaultProjectFolder(const std::string& last, const std::string& installRoot);

}  // namespace zendry
