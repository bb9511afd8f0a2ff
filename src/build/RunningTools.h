#pragma once

#include <string>

namespace zendry {

// Finds the tools that a killed builder has left: they would write into the objects of the next
// build, which ends them first.
//
// As long as a builder runs tools, the file cRunningName in the output folder holds its number and
// the time of its start, because its number alone doesn't tell it from a later process. Its tools,
// and what they start, have the same in their environment.
class RunningTools {
 public:
  static constexpr char cRunningName[] = ".zendry-running";

  ~RunningTools() { Forget(); }

  // Ends what a killed builder has left in a folder. Tools of a builder that is alive are left in
  // peace.
  void Open(const std::string& outputFolder);
  // Notes that tools are going to run, and returns the entry of their environment.
  std::string Mark();
  // None is running.
  void Forget();

 private:
  std::string path;
  std::string name;  // of this builder
  bool isOthers = false;
  bool isWritten = false;
};

}  // namespace zendry
