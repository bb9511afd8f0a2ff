#include <malloc.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "FileParts.h"
#include "TagsFile.h"
#include "base/ControlBytes.h"
#include "base/FileReader.h"
#include "base/Shell.h"
#include "tags/TagData.h"
#include "tags/TagParser.h"

// zendry-tags: writes the results of the tag parser as a tags file for editors.

using namespace zendry;
namespace fs = std::filesystem;

namespace {

enum ExitStatus { cDone = 0, cNotDone = 1, cWrongUse = 2 };

struct Options {
  std::vector<std::string> sources;
  std::string list;
  bool recursive = false;
  std::string output;
  std::string language;
  bool locals = false;
};

// The text as one line: a newline in a file's name becomes a mark too.
void Say(const std::string& text) {
  std::string line;
  for (char c : MarkControlBytes("zendry-tags: " + text))
    line += c == '\n' ? std::string("<0a>") : std::string(1, c);
  std::fprintf(stderr, "%s\n", line.c_str());
}

// Prints the parser's log, with the name of the source.
class LogShell : public OutputShell {
 public:
  void AppendOutput(std::string_view text) override {
    const size_t start = text.find_first_not_of("\r\n- ");
    const size_t end = text.rfind(" -->");
    if (start < end && end != std::string_view::npos)
      Say(source + ": " + std::string(text.substr(start, end - start)));
  }

  void ClearOutput() override {}

  std::string source;
};

// A name in a tags file must be one line without tabs.
bool IsWritable(const std::string& path) {
  return path.find_first_of("\t\r\n") == std::string::npos;
}

// Collects the tags of the sources.
class TagCollector {
 public:
  explicit TagCollector(const Options& newOptions) : options(newOptions) {
    theTagParser.shell = &log;
    theTagParser.storesTags = false;
    theTagParser.SetLimits(std::numeric_limits<int>::max() - 1, std::numeric_limits<int>::max());
    if (!options.language.empty()) theTagParser.language = LanguageNamed(options.language);
  }

  // False when the source couldn't be read.
  bool Add(const std::string& path) {
    FileReader reader;
    mavro::FileResult opened = reader.open(path.c_str());
    if (opened.Ok() && !IsWritable(path))
      opened.error = path + ": the name can't stand in a tags file";
    if (!opened.Ok()) {
      Say(opened.error);
      return false;
    }
    bool isHeader = false;
    const std::optional<Language> named = TagParser::languageOf(path, isHeader);
    const std::optional<Language> language = theTagParser.language ? theTagParser.language : named;
    if (!language) {
      Say(path + ": its name tells no language, it was passed over");
      return true;
    }
    log.source = path;
    tags.BeginSource(path);
    theTagParser.found = [&](const TagFacts& tag) { tags.Add(tag, *language); };
    TagData data;
    data.fileName = path;
    theTagParser.parseBuffer(data, &reader, options.locals);
    return true;
  }

  const TagsFile& Tags() const { return tags; }

 private:
  const Options& options;
  LogShell log;
  TagsFile tags;
};

// Only an older tags file is replaced.
bool MayReplace(const std::string& path) {
  constexpr std::string_view cMark = "!_TAG_";
  if (!mavro::FileExists(path)) return true;
  std::ifstream old(path, std::ios::binary);
  char start[cMark.size()];
  old.read(start, cMark.size());
  const auto count = static_cast<size_t>(old.gcount());
  return count == 0 || std::string_view(start, count) == cMark;
}

bool WriteFile(const std::string& path, const TagsFile& tags) {
  if (!MayReplace(path)) {
    Say(path + ": is no tags file, it was not replaced");
    return false;
  }
  const mavro::FileResult result =
      mavro::SaveFileParts(path, [&](const mavro::TakePart& take) { tags.Pass(take); });
  if (!result.Ok()) Say(path + ": " + result.error);
  return result.Ok();
}

bool WriteOutput(const TagsFile& tags) {
  bool isWritten = true;
  tags.Pass([&](std::string_view part) {
    isWritten = std::fwrite(part.data(), 1, part.size(), stdout) == part.size();
    return isWritten;
  });
  isWritten = std::fflush(stdout) == 0 && isWritten;
  if (!isWritten) Say("standard output can't be written");
  return isWritten;
}

// The sources in a folder and those below it, by name; links to folders aren't followed. A file
// without an extension is no source here. False when a folder couldn't be read.
bool AddFolder(const std::string& folder, std::vector<std::string>& sources) {
  std::vector<std::string> found;
  std::error_code error;
  fs::recursive_directory_iterator at(folder, error);
  for (; !error && at != fs::end(at); at.increment(error)) {
    bool isHeader = false;
    std::error_code ignored;
    if (at->path().has_extension() && at->is_regular_file(ignored) &&
        TagParser::languageOf(at->path().native(), isHeader))
      found.push_back(at->path());
  }
  if (error) Say(folder + ": " + error.message());
  std::sort(found.begin(), found.end());
  sources.insert(sources.end(), found.begin(), found.end());
  return !error;
}

// Names of sources, a line each.
bool AddList(const std::string& list, std::vector<std::string>& sources) {
  std::ifstream file;
  if (list != "-") file.open(list);
  std::istream& lines = list == "-" ? std::cin : file;
  if (!lines) {
    Say(list + ": " + std::strerror(errno));
    return false;
  }
  for (std::string line; std::getline(lines, line);)
    if (!line.empty()) sources.push_back(line);
  return true;
}

int Run(const Options& options) {
  TagCollector collector(options);
  std::vector<std::string> named = options.sources;
  bool allRead = options.list.empty() || AddList(options.list, named);
  std::vector<std::string> sources;
  for (const std::string& name : named) {
    if (options.recursive && fs::is_directory(name))
      allRead &= AddFolder(name, sources);
    else
      sources.push_back(name);
  }
  for (const std::string& source : sources) allRead &= collector.Add(source);
  const TagsFile& tags = collector.Tags();
  const bool isWritten =
      options.output.empty() ? WriteOutput(tags) : WriteFile(options.output, tags);
  return allRead && isWritten ? cDone : cNotDone;
}

// The names of the languages, for the help and the check.
std::vector<std::string> LanguageNames() {
  std::vector<std::string> names;
  for (const LanguageRecord& record : Languages()) names.emplace_back(record.name);
  return names;
}

}  // namespace

int main(int argc, char** argv) {
  // What one source has needed is kept for the next one.
  mallopt(M_MMAP_THRESHOLD, 64 << 20);
  mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
  Options options;
  CLI::App app("Writes a tags file of sources.", "zendry-tags");
  app.set_version_flag("--version", "zendry-tags " ZENDRY_VERSION);
  app.add_option("FILE", options.sources, "the sources");
  app.add_option("-L", options.list,
                 "read names of sources from this file, a line each, or from \"-\"");
  app.add_flag("-R", options.recursive, "read the sources in folders and below them");
  app.add_option("-o", options.output, "write to this file, not to standard output");
  app.add_option("--language", options.language,
                 "read every source as this, whatever its name tells")
      ->check(CLI::IsMember(LanguageNames(), CLI::ignore_case));
  app.add_flag("--locals", options.locals, "write the variables of functions too (C, C++)");
  app.footer(
      "Exit status: 0 done, 1 a source couldn't be read or the tags not be written,\n"
      "2 wrong command line.");
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? cDone : cWrongUse;
  }
  if (options.sources.empty() && options.list.empty()) {
    Say("FILE is required");
    return cWrongUse;
  }
  return Run(options);
}
