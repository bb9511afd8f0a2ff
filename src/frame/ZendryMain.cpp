#include "Application.h"
#include "frame/IdeRun.h"

int mavro::Application::Main(ArgumentList& arguments) {
  return zendry::RunIde(arguments);
}
