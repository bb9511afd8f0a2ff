#include "Application.h"

namespace mavro {

// Alone in its file: the linker adds it only to programs that supply the other Main.
int Application::Main(ArgumentList& arguments) {
  const ArgumentList& unchanged = arguments;
  return Main(unchanged);
}

}  // namespace mavro
