#include "build/BuildInputs.h"

#include <unistd.h>

#include <algorithm>
#include <utility>

#include "CommandLine.h"
#include "FilePath.h"
#include "FileText.h"
#include "base/Paths.h"
#include "project/Project.h"

namespace zendry {

namespace {

std::string Within(const std::string& folder, const std::string& name) {
  return folder.empty() || IsAbsolutePath(name) ? name : folder + "/" + name;
}

// The linker takes the first folder that has the library, and there the shared one.
std::string FindLibrary(const std::vector<std::string>& folders, const std::string& name) {
  const bool isFileName = name.starts_with(":");
  const std::vector<std::string> files =
      isFileName ? std::vector{name.substr(1)}
                 : std::vector{"lib" + name + ".so", "lib" + name + ".a"};
  for (const std::string& folder : folders)
    for (const std::string& file : files)
      if (mavro::FileExists(folder + "/" + file)) return folder + "/" + file;
  return "";
}

// The name under which the build knows a file that a compiler has read, so that its time is asked
// once; empty for a file that isn't watched.
std::string WatchedName(const Project& project, const std::string& path, bool watchesAll) {
  const std::string full = TidyPath(project.GetFullPath(path));
  if (const ProjectFile* file = project.FindFile(full)) return file->name;
  if (watchesAll) return path;
  const std::string relative = project.MakeRelative(full);
  return IsAbsolutePath(relative) || relative.starts_with("../") ? "" : path;
}

// The words and the strings of a text.
std::vector<std::string> WordsOf(const std::string& text) {
  std::vector<std::string> words;
  std::string word;
  bool isString = false;
  for (const char c : text + "\n") {
    const bool isBlank = c == ' ' || c == '\t' || c == '\r' || c == ',';
    if (c != '"' && c != '\n' && (isString || !isBlank)) {
      word += c;
      continue;
    }
    if (!word.empty()) words.push_back(std::exchange(word, ""));
    isString = c == '"' && !isString;
  }
  return words;
}

}  // namespace

std::string ReadFilesPath(const std::string& outDirName, int slot) {
  const std::string name = cReadFilesName + (slot > 0 ? "-" + std::to_string(slot) : "");
  return outDirName.empty() ? name : outDirName + "/" + name;
}

std::string AskForReadFiles(const std::string& path, bool watchesAll) {
  unlink(path.c_str());
  return (watchesAll ? "SUNPRO_DEPENDENCIES=" : "DEPENDENCIES_OUTPUT=") + path + " read";
}

std::string AskForReadFilesBySwitches(const std::string& path, bool watchesAll) {
  unlink(path.c_str());
  return (watchesAll ? " -MD -MF " : " -MMD -MF ") + mavro::QuoteArgument(path) + " -MT read";
}

std::vector<InputFile> ExistingInputs(FileTimes& times, const std::vector<std::string>& paths) {
  std::vector<InputFile> inputs;
  for (const std::string& path : paths)
    if (const auto time = times.Of(path)) inputs.push_back({path, *time});
  return inputs;
}

std::vector<std::string> LinkInputs(const std::string& line, const std::string& outDirName) {
  const std::vector<std::string> arguments = mavro::SplitCommandLine(line);
  std::vector<std::string> folders, libraries, inputs;
  for (size_t i = 1; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    const bool isSplit =
        (argument == "-L" || argument == "-l" || argument == "-o") && i + 1 < arguments.size();
    const std::string value =
        isSplit ? arguments[++i] : argument.substr(std::min<size_t>(2, argument.size()));
    if (argument.starts_with("-L"))
      folders.push_back(Within(outDirName, value));
    else if (argument.starts_with("-l"))
      libraries.push_back(value);
    else if (!argument.starts_with("-"))
      inputs.push_back(Within(outDirName, argument));
  }
  for (const std::string& library : libraries)
    if (const std::string found = FindLibrary(folders, library); !found.empty())
      inputs.push_back(found);
  return inputs;
}

std::vector<std::string> ResourceInputs(const std::string& script) {
  std::vector<std::string> inputs = {script};
  const std::string folder = mavro::FolderOf(script);
  for (const std::string& word : WordsOf(mavro::ReadFileText(script).text)) {
    if (word.find('.') == word.npos) continue;
    for (const std::string& path : {word, folder + word})
      if (mavro::FileExists(path)) inputs.push_back(path);
  }
  return inputs;
}

std::vector<InputFile> TakeReadFiles(FileTimes& times, const Project& project,
                                     const std::string& path, FileTimes::Time start,
                                     bool watchesAll) {
  const std::string rule = mavro::ReadFileText(path).text;
  unlink(path.c_str());
  std::vector<InputFile> inputs;
  for (const std::string& read : ReadMakeRule(rule)) {
    const std::string name = WatchedName(project, read, watchesAll);
    if (name.empty()) continue;
    if (const auto time = times.Of(name))
      inputs.push_back({name, *time > start ? InputFile::cUnknownTime : *time});
  }
  if (watchesAll) inputs.push_back(cAllReadFiles);
  return inputs;
}

FileTimes::Time TimeOfNow() {
  constexpr FileTimes::Time cSecond = 1'000'000'000;
  timespec now;
  clock_gettime(CLOCK_REALTIME, &now);
  return now.tv_sec * cSecond + now.tv_nsec;
}

}  // namespace zendry
