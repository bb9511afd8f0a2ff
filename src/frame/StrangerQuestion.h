#pragma once

#include <string>
#include <vector>

namespace zendry {

class Project;

// True if the project may be built and run: nothing in it can start something by itself, or the
// user trusts that. Else the user is asked, with a list; a Yes is remembered.
bool MayBuild(const Project& project);

// As long as it lives, the user edits the project: dangers that come in meanwhile are the user's
// own, and need no question.
class OwnDangers {
 public:
  explicit OwnDangers(const Project& its);
  ~OwnDangers();
  OwnDangers(const OwnDangers&) = delete;
  OwnDangers& operator=(const OwnDangers&) = delete;

 private:
  const Project& project;
  std::vector<std::string> before;
};

}  // namespace zendry
