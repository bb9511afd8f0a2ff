#include <cstdio>
#include <cstdlib>
#include <new>

#include "Application.h"
#include "base/LargeBlocks.h"
#include "frame/IdeRun.h"
#include "frame/StartupFile.h"

#ifndef __SANITIZE_ADDRESS__

// The editing component keeps its text in vectors, whose memory comes from here.
void* operator new(std::size_t size) {
  for (;;) {
    if (void* block = zendry::NewBlock(size)) return block;
    const std::new_handler handler = std::get_new_handler();
    if (!handler) throw std::bad_alloc();
    handler();
  }
}

void operator delete(void* block) noexcept {
  std::free(block);
}

void operator delete(void* block, std::size_t) noexcept {
  std::free(block);
}

#endif

int mavro::Application::Main(ArgumentList& arguments) {
  zendry::ReturnFreedBlocks();
  return zendry::RunIde(arguments);
}

bool mavro::Application::AnswerOnTerminal(const ArgumentList& arguments) {
  const std::string answer = zendry::TerminalAnswer(arguments);
  std::fputs(answer.c_str(), stdout);
  return !answer.empty();
}
