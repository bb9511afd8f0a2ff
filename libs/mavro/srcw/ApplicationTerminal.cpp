#include "Application.h"

namespace mavro {

// Alone in its file: the linker adds it only to programs that supply no such function.
bool Application::AnswerOnTerminal(const ArgumentList&) {
  return false;
}

}  // namespace mavro
