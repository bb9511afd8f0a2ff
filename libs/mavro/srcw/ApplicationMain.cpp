#include "Application.h"

namespace mavro {

// Alone in its file: the linker takes it only into programs that supply the other one.
int Application::Main(ArgumentList& arguments) {
  const ArgumentList& unchanged = arguments;
  return Main(unchanged);
}

}  // namespace mavro
