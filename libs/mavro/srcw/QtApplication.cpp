#include <QScreen>
#include <QWidget>
#include <QWindow>
#include <filesystem>

#include "Application.h"
#include "Entry.h"
#include "Failures.h"
#include "Form.h"
#include "QtDialogs.h"
#include "QtEnding.h"
#include "QtInput.h"
#include "QtLoop.h"
#include "QtScreen.h"
#include "SessionBus.h"
#include "SysImpl.h"

namespace mavro {

namespace {

constexpr int cFailed = 1;

// An exception that no window has caught ends the program with a message.
int RunMain(ArgumentList& arguments) {
  try {
    return Application::Main(arguments);
  } catch (...) {
    ReportCurrentException(nullptr, 0);
  }
  return cFailed;
}

}  // namespace

int RunApplication(int argc, char** argv) {
  std::error_code ignored;
  theApplication.appDir = AppDirOf(argv[0], std::filesystem::current_path(ignored).string());
  ArgumentList arguments(argv + 1, argv + argc);
  if (Application::AnswerOnTerminal(arguments)) return 0;
  KeepBusFromStarting();
  int toolkitArgc = 1;
  ToolkitApplication toolkit(toolkitArgc, argv);
  toolkit.setQuitOnLastWindowClosed(false);
  InstallQtLoop(&toolkit);
  InstallQtDialogs();
  InstallEnding();
  const int code = RunMain(arguments);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  return code;
}

Rect ScreenArea(const Form* form) {
  const QScreen* screen = form && form->impl->hwnd ? form->impl->hwnd->widget->screen()
                                                   : QGuiApplication::primaryScreen();
  return UsableArea(screen);
}

Rect UsableArea(const QScreen* screen) {
  static Rect last{0, 0, 1024, 768};
  if (!screen) return last;
  const QRect area = screen->availableGeometry();
  last = {area.left(), area.top(), area.width(), area.height()};
  return last;
}

}  // namespace mavro
