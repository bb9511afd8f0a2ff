#include <cstdio>

#include "Application.h"
#include "frame/IdeRun.h"
#include "frame/StartupFile.h"

int mavro::Application::Main(ArgumentList& arguments) {
  return zendry::RunIde(arguments);
}

bool mavro::Application::AnswerOnTerminal(const ArgumentList& arguments) {
  const std::string answer = zendry::TerminalAnswer(arguments);
  std::fputs(answer.c_str(), stdout);
  return !answer.empty();
}
