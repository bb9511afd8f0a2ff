#include "debug/ThrownException.h"

#include <cxxabi.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

#include "debug/DebugWords.h"

namespace zendry {

namespace {

// A function keeps the exception in one of the registers that its callees give back.
constexpr std::string_view cKeptRegisters[] = {"rbx", "rbp", "r12", "r13", "r14", "r15"};

// The exception's header is found by its class, the bytes "GNUCC++" and one more: 0 for a header
// that is followed by the object, 1 for one that names another object in its first word.
constexpr std::string_view cClass = "0x474e5543432b2b";
constexpr std::string_view cVariable = "$zendry_thrown";  // the address of the class

bool IsThrow(const GdbFrame& frame) {
  const std::string function = FunctionOf(frame.text);
  return function == "__cxa_throw" || function == "__cxa_rethrow" ||
         function.starts_with("std::rethrow_exception(");
}

bool IsAbort(const GdbFrame& frame) {
  const std::string function = FunctionOf(frame.text);
  return function == "abort" || function == "__GI_abort";
}

bool IsTerminate(const GdbFrame& frame) {
  return frame.text.find(" std::terminate") != std::string::npos ||
         frame.text.find("__verbose_terminate_handler") != std::string::npos;
}

// True if only the library lies between a throw and the abort: a function that may not throw.
bool AbortsAtOnce(std::vector<GdbFrame>::const_iterator first,
                  std::vector<GdbFrame>::const_iterator thrown) {
  const auto abort = std::find_if(first, thrown, IsAbort);
  return abort != thrown && std::none_of(abort + 1, thrown, [](const GdbFrame& frame) {
           return !frame.place.file.empty();
         });
}

}  // namespace

std::optional<Termination> FindTermination(const std::vector<GdbFrame>& stack) {
  const auto thrown = std::find_if(stack.begin(), stack.end(), IsThrow);
  const bool isThrown = thrown != stack.end();
  const bool isTermination = std::any_of(stack.begin(), stack.end(), IsTerminate) ||
                             (isThrown && AbortsAtOnce(stack.begin(), thrown));
  if (!isTermination) return {};
  Termination termination;
  if (isThrown) termination.throwLevel = thrown->place.level;
  return termination;
}

ThrownCommands AskForThrown(int level) {
  const std::string at(cVariable);
  const std::string word = "*(unsigned long*)";
  const std::string set = "set " + at + " = ";
  ThrownCommands commands;
  commands.preparations.push_back(set + "(unsigned long)0");
  for (const std::string_view name : cKeptRegisters) {
    const std::string held = "$" + std::string(name);
    commands.preparations.push_back("frame apply level " + std::to_string(level) + " -q " + set +
                                    word + held + " / 256 == " + std::string(cClass) +
                                    " ? (unsigned long)" + held + " : " + at);
  }
  // An exception that was kept and thrown again.
  commands.preparations.push_back(set + word + at + " % 256 == 1 ? " + word + "(" + at +
                                  " - 80) - 32 : " + at);
  commands.type = "print *((char**)*(void**)(" + at + " - 80) + 1)";
  const std::string what = "((void***)(" + at + " + 32))[0][2]";
  commands.text = "print " + what + " == (void*)&_ZNKSt13runtime_error4whatEv || " + what +
                  " == (void*)&_ZNKSt11logic_error4whatEv ? *(char**)(" + at + " + 40) : (char*)0";
  return commands;
}

std::string GdbQuotedText(std::string_view value) {
  const size_t first = value.find('"');
  const size_t last = value.rfind('"');
  if (first == last) return {};
  std::string text;
  for (size_t i = first + 1; i < last; ++i) {
    if (value[i] == '\\' && i + 1 < last && (value[i + 1] == '"' || value[i + 1] == '\\')) ++i;
    text += value[i];
  }
  return text;
}

std::string ThrownType(std::string_view value) {
  std::string name = GdbQuotedText(value);
  // A type that only one source knows.
  if (name.starts_with('*')) name.erase(0, 1);
  if (name.empty()) return {};
  int status = 0;
  const std::unique_ptr<char, decltype(&std::free)> readable(
      abi::__cxa_demangle(name.c_str(), nullptr, nullptr, &status), &std::free);
  return status == 0 && readable ? readable.get() : name;
}

std::string TerminationWords(const Termination& termination, const std::string& type,
                             const std::string& text) {
  if (!termination.throwLevel) return "The program has called std::terminate";
  std::string words = "The program has thrown an exception that nobody catches";
  if (!type.empty()) words += ": " + type;
  if (!type.empty() && !text.empty()) words += ": " + text;
  return words;
}

}  // namespace zendry
