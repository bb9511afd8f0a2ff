#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace zendry {

// The terminal of a program that is run or debugged, apart from gdb's stream. It is a window of the
// user's terminal emulator, where the program "zendry-console" of ours runs; or, for programs that
// need none and on machines without one, a pseudo terminal whose text goes to the Output panel.
class ProgramTerminal {
 public:
  enum class Place { cWindow, cPanel };

  // What happens to the terminal; all of it comes from the idle pass. A function may close and
  // destroy the terminal.
  struct Events {
    // It is there; `path` names it for gdb. Empty for a program that runs without gdb.
    std::function<void(const std::string& path)> opened;
    // No window came; another Open with cPanel will do.
    std::function<void()> failed;
    // The user has closed the window.
    std::function<void()> closed;
    // Text for the Output panel, lines ended by CR LF, in pieces of no more than 20 KiB.
    std::function<void(std::string_view text)> printed;
    // A program that runs without gdb has ended.
    std::function<void(int exitCode, int signal)> ended;
  };

  explicit ProgramTerminal(Events itsEvents);
  ~ProgramTerminal();

  // Opens a terminal for a program that gdb runs. `helper` is the path of "zendry-console".
  void Open(Place place, const std::string& helper);
  // Runs a program in it without gdb. It goes on when this object is gone.
  void Run(Place place, const std::string& helper, const std::string& folder,
           const std::vector<std::string>& command);
  // Shows a text in the window, which stays until a key is pressed. Lets go of the window.
  void SayEnd(const std::string& text);
  // Passes on all that was printed up to now. Waits for what the system has not handed over, a
  // second at most.
  void Drain();

  // True for a terminal in the Output panel: lines for the program come from there.
  bool TakesInput() const;
  bool Send(const std::string& line);

 private:
  struct Impl;
  std::unique_ptr<Impl> impl;
};

// The command line that opens a window of the user's terminal emulator with a command in it; the
// command's words are to be appended. Empty if the machine has no such program, or no display.
std::vector<std::string> TerminalCommand();

}  // namespace zendry
