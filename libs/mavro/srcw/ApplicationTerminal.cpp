#include "Application.h"

namespace mavro {

// Alone in its file: the linker takes it only into programs that supply none.
bool Application::AnswerOnTerminal(const ArgumentList&) {
  return false;
}

}  // namespace mavro
