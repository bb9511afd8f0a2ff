#pragma once

#include <string>
#include <vector>

#include "Core.h"
#include "IdleHook.h"

namespace mavro {

class Form;

// argv[1] onward, the program's name excluded.
using ArgumentList = std::vector<std::string>;

// A strip of equal pictures among the program's resources.
struct ImageStrip {
  int resourceId = 0;
  int width = 0;
  int height = 0;
  int count = 0;  // passed on; 0 when the strip's width tells it
};

// The process-wide object. The framework holds the process entry and calls Application::Main.
class Application {
 public:
  // One of these two is supplied by the program; its answer is the exit code.
  static int Main(ArgumentList& arguments);
  static int Main(const ArgumentList& arguments);
  // Asked before anything of the screen is touched: a program that can answer its arguments on
  // standard output ("--help") writes the answer and returns true, which ends it with 0. Supplied
  // by the program if it wants to; by default nothing is answered.
  static bool AnswerOnTerminal(const ArgumentList& arguments);

  Application();
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  // Handles everything that waits in the queue, without blocking, and calls the idle hook.
  void ProcessMessages();
  // Has `keep` called before the program ends without being asked: by SIGTERM or SIGHUP, or because
  // the desktop's session ends. It stores what the program wants to keep, asks nothing and returns
  // soon; it may be called while anything else that runs messages is under way. Then the program
  // ends as it would have, without destructors. A session's end may also be called off, and the
  // program goes on. Signals that are ignored stay so. Null: ends as before.
  void KeepOnEnd(void (*keep)());
  // Registers a picture strip of the program's resources, for tool bars to name by resource id.
  void RegisterImageList(int resourceId, int width, int height, int count);
  const ImageStrip* FindImageList(int resourceId) const;

  Form* mainForm = nullptr;  // the form that owns forms made without an owner
  void (*&idleHook)();       // called when the queue runs dry; empty by default
  // Folder of the program file with forward slashes and its trailing slash; a program started by
  // its bare name has that name instead.
  std::string appDir;

 private:
  std::vector<ImageStrip> imageLists;
};

extern Application theApplication;

// The usable area of the screen that `form` is on, in logical pixels; of the first screen for null
// or a form without a window.
Rect ScreenArea(const Form* form);

// Turns argv[0] into `appDir`: a relative path with a folder in it is made absolute against
// `current`.
std::string AppDirOf(const std::string& argv0, const std::string& current);

}  // namespace mavro
