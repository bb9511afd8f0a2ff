#include "Application.h"
#include "IdeRun.h"

int mavro::Application::Main(ArgumentList& arguments) {
  return zendry::RunIde(arguments);
}
