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
  int count = 0;  // passed on; 0 when it follows from the strip's width
};

// The process-wide object. The framework holds the process entry and calls Application::Main.
class Application {
 public:
  // The program defines one of these two; the result is the exit code.
  static int Main(ArgumentList& arguments);
  static int Main(const ArgumentList& arguments);
  // Called before the program connects to the screen. A program that can answer its arguments on
  // standard output ("--help") writes the answer and returns true; it then ends with exit code 0.
  // The program may define this function; the default answers nothing.
  static bool AnswerOnTerminal(const ArgumentList& arguments);

  Application();
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  // Handles all messages in the queue without blocking, and calls the idle hook.
  void ProcessMessages();
  // Sets a callback that runs before the program ends by SIGTERM or SIGHUP, or because the
  // desktop's session ends. `keep` stores the data that the program wants to keep, asks nothing and
  // returns soon. It may be called during any other code that runs messages. After it the program
  // ends as it would have, without destructors. If the end of the session is called off, the
  // program goes on. Ignored signals stay ignored. Null removes the callback.
  void KeepOnEnd(void (*keep)());
  // Registers a picture strip of the program's resources. Tool bars refer to it by its resource id.
  void RegisterImageList(int resourceId, int width, int height, int count);
  const ImageStrip* FindImageList(int resourceId) const;

  Form* mainForm = nullptr;  // the form that owns forms made without an owner
  void (*&idleHook)();       // called when the queue runs dry; empty by default
  // The folder of the program file, with forward slashes and a trailing slash. If the program was
  // started by its bare name, this is that name instead.
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
