#include "Failures.h"

#include <algorithm>
#include <cstdio>
#include <exception>

#include "SystemDialogs.h"

namespace mavro {

namespace {

// True for messages that follow an action of the user, and for timers, which stop when they fail.
bool IsAct(unsigned message) {
  switch (message) {
    case WM_CLOSE:
    case WM_NOTIFY:
    case WM_CONTEXTMENU:
    case WM_COMMAND:
    case WM_TIMER:
    case WM_HSCROLL:
    case WM_VSCROLL:
    case WM_MOUSEWHEEL:
      return true;
    default:
      return (message >= WM_KEYDOWN && message <= WM_SYSCHAR) ||
             (message >= WM_LBUTTONDOWN && message <= WM_MBUTTONDBLCLK);
  }
}

bool HasFailed(const NativeWindow& window, unsigned message) {
  const auto& failed = window.failedMessages;
  return std::find(failed.begin(), failed.end(), message) != failed.end();
}

void ShowFailure(const std::string& text) {
  static bool showing = false;
  if (showing) {
    std::fprintf(stderr, "%s\n", text.c_str());
    return;
  }
  showing = true;
  Dialogs().message(text, "Error", cOkOnly | cErrorIcon);
  showing = false;
}

}  // namespace

bool MayDispatch(const NativeWindow& window, unsigned message) {
  return message != WM_PAINT || !HasFailed(window, message);
}

void ReportFailure(NativeWindow* window, unsigned message, const char* what) {
  const std::string text = std::string("A command failed:\n\n") + what;
  if (IsWindow(window) && !IsAct(message)) {
    if (HasFailed(*window, message)) return;
    window->failedMessages.push_back(message);
  }
  // A box that opens during painting would make the window paint again.
  if (message == WM_PAINT)
    RunLater([text] { ShowFailure(text); });
  else
    ShowFailure(text);
}

void ReportCurrentException(NativeWindow* window, unsigned message) {
  try {
    throw;
  } catch (const std::exception& failure) {
    ReportFailure(window, message, failure.what());
  } catch (...) {
    ReportFailure(window, message, "unknown exception");
  }
}

}  // namespace mavro
