#pragma once

namespace zendry {

class Project;
struct IdeConfig;
struct LibSet;

// The sets of "Zendry.cfg" that a project is built with.

// The compiler set for a project's number: 0 if there is no set of that number.
int CompilerSet(int gcc);
// The library set; form applications that name none take that of the framework. Null without any.
LibSet* LibrarySetOf(const Project& project, IdeConfig& config);

}  // namespace zendry
