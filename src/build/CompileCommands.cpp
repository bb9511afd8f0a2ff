#include "build/CompileCommands.h"

#include <nlohmann/json.hpp>

#include "CommandLine.h"

namespace zendry {

namespace {

using Json = nlohmann::ordered_json;

// Other programs indent by blanks, so the form of a file tells who has made it.
std::string Written(const Json& commands) {
  return commands.dump(1, '\t') + "\n";
}

bool IsOurs(const std::string& text) {
  const Json read = Json::parse(text, nullptr, false);
  return !read.is_discarded() && read.is_array() && Written(read) == text;
}

}  // namespace

CommandsText CompileCommandsText(const std::vector<CompileCommand>& commands) {
  CommandsText result;
  Json all = Json::array();
  for (const CompileCommand& command : commands) {
    Json entry = {{"directory", command.folder},
                  {"file", command.file},
                  {"arguments", mavro::SplitCommandLine(command.line)},
                  {"output", command.object}};
    try {
      (void)entry.dump();
      all.push_back(std::move(entry));
    } catch (const Json::exception&) {
      result.leftOut.push_back(command.file);
    }
  }
  result.text = Written(all);
  return result;
}

mavro::FileResult SaveCompileCommands(const std::string& path, const std::string& text) {
  const mavro::FileText old = mavro::ReadFileText(path);
  if (!old.Ok() && !old.isMissing) return {old.error};
  if (old.Ok() && old.text != text && !IsOurs(old.text))
    return {path + " was made by another program and is left as it is; -o names another file"};
  return mavro::SaveFileText(path, text);
}

}  // namespace zendry
