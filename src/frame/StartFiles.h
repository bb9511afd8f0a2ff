#pragma once

#include <string>
#include <vector>

#include "Form.h"
#include "Timer.h"
#include "base/Shell.h"
#include "rescue/StartMarks.h"

namespace zendry {

// Guards the files that open without a question: those of the command line and those of a session.
// If the program ended while it opened a file the last time, that file is left closed this time,
// and the user is told; the file stays in the session.
class StartFiles : public mavro::object {
 public:
  // `itsForm` and `itsShell` are the window that the files are shown in; they outlive this.
  StartFiles(mavro::Form& itsForm, Shell& itsShell);

  // Must be called before a file or a project is opened. False: leave it closed.
  bool MayOpen(const std::string& path, int line);
  // Call it when all files are loaded: reports the files that were left closed.
  void AllLoaded();
  // From now on, guards the file in front, which is to be painted next.
  void WatchShown();

  // Inserts the files left closed at their places among the open files.
  void AddLeftClosed(std::vector<OpenFile>& files) const;
  // Opened: a file has been opened after all. ForgetAll: the session is no longer wanted.
  void Opened(const std::string& path);
  void ForgetAll() { leftClosed.clear(); }
  // The program ends for a reason other than a file being opened.
  void EndsByItself() { marks.Clear(); }

 private:
  struct LeftClosed {
    OpenFile file;
    size_t place = 0;  // among the session's files
  };

  void OnTimer(mavro::NotifyArgs& args);
  void Say(const std::vector<std::string>& paths);

  mavro::Form& form;
  Shell& shell;
  StartMarks marks;
  std::vector<LeftClosed> leftClosed;
  std::vector<std::string> unsaid;
  mavro::Timer timer;
  int quietTicks = 0;
};

}  // namespace zendry
