#include <malloc.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <deque>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "FileText.h"
#include "base/ControlBytes.h"
#include "base/FileReader.h"
#include "base/Shell.h"
#include "tags/TagData.h"
#include "tags/TagLine.h"
#include "tags/TagParser.h"

// zendry-tags: writes the results of the tag parser as a tags file for editors.

using namespace zendry;
namespace fs = std::filesystem;

namespace {

enum ExitStatus { cDone = 0, cNotDone = 1, cWrongUse = 2 };

// First lines of the file, sorted like the tags, by their bytes.
constexpr std::string_view cHead =
    "!_TAG_FILE_FORMAT\t2\t/extended format/\n"
    "!_TAG_FILE_SORTED\t1\t/0=unsorted, 1=sorted, 2=foldcase/\n"
    "!_TAG_PROGRAM_NAME\tzendry-tags\t//\n"
    "!_TAG_PROGRAM_VERSION\t" ZENDRY_VERSION "\t//\n";

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

// A line with eight of its bytes as a number: most comparisons of a sort end there.
struct SortedLine {
  std::string_view text;
  uint64_t key = 0;

  void TakeKey(size_t at) {
    key = 0;
    if (at + sizeof key <= text.size()) {
      std::memcpy(&key, text.data() + at, sizeof key);
      if constexpr (std::endian::native == std::endian::little) key = __builtin_bswap64(key);
      return;
    }
    for (size_t i = at; i < at + sizeof key; ++i)
      key = key << 8 | (i < text.size() ? static_cast<unsigned char>(text[i]) : 0U);
  }
};

// Sorts lines that are the same up to `from`. Those that differ late, if at all, are few: they are
// compared as they are, since a line may have megabytes.
void SortLines(std::span<SortedLine> lines, size_t from = 0) {
  constexpr size_t cMostByKeys = 64;
  if (from >= cMostByKeys) {
    std::sort(lines.begin(), lines.end(),
              [](const SortedLine& a, const SortedLine& b) { return a.text < b.text; });
    return;
  }
  for (SortedLine& line : lines) line.TakeKey(from);
  std::sort(lines.begin(), lines.end(),
            [](const SortedLine& a, const SortedLine& b) { return a.key < b.key; });
  for (size_t start = 0, end = 0; start < lines.size(); start = end) {
    size_t longest = 0;
    for (; end < lines.size() && lines[end].key == lines[start].key; ++end)
      longest = std::max(longest, lines[end].text.size());
    const bool goesOn = end - start > 1 && longest > from + sizeof SortedLine::key;
    if (goesOn) SortLines(lines.subspan(start, end - start), from + sizeof SortedLine::key);
  }
}

// Lines in the order in which they come, without newlines. They stay where they are once they are
// written: memory that is used the first time costs more than what is done with it.
class CollectedLines {
 public:
  // The place to append the next line to.
  std::string& Room() {
    if (blocks.empty() || blocks.back().text.size() + cRoomOfALine > cBlock) {
      blocks.emplace_back();
      blocks.back().text.reserve(cBlock);
    }
    return blocks.back().text;
  }
  void EndLine() { blocks.back().ends.push_back(blocks.back().text.size()); }

  std::vector<SortedLine> Lines() const {
    std::vector<SortedLine> lines;
    size_t count = 0;
    for (const Block& block : blocks) count += block.ends.size();
    lines.reserve(count);
    for (const Block& block : blocks) {
      size_t start = 0;
      for (const size_t end : block.ends) {
        lines.push_back({std::string_view(block.text).substr(start, end - start)});
        start = end;
      }
    }
    return lines;
  }

 private:
  static constexpr size_t cBlock = 1 << 20, cRoomOfALine = 4096;

  struct Block {
    std::string text;
    std::vector<size_t> ends;  // of its lines
  };
  std::deque<Block> blocks;
};

// Collects the lines of the sources' tags.
class TagCollector {
 public:
  explicit TagCollector(const Options& newOptions) : options(newOptions) {
    theTagParser.shell = &log;
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
    const std::string file = EscapedForTags(path);
    theTagParser.found = [&](const TagFacts& tag) {
      AppendTagLine(unsorted.Room(), tag, file, *language);
      unsorted.EndLine();
    };
    TagData data;
    data.fileName = path;
    theTagParser.parseBuffer(data, &reader, options.locals);
    return true;
  }

  // The whole file.
  std::string Text() {
    std::vector<SortedLine> lines = unsorted.Lines();
    SortLines(lines);
    size_t size = cHead.size();
    for (const SortedLine& line : lines) size += line.text.size() + 1;
    std::string text;
    text.reserve(size);
    text = cHead;
    std::string_view last;
    for (size_t i = 0; i < lines.size(); ++i) {
      // Lines that are neighbours here come from places far apart.
      if (i + cFetched < lines.size()) {
        __builtin_prefetch(lines[i + cFetched].text.data());
        __builtin_prefetch(lines[i + cFetched].text.data() + 64);
      }
      const SortedLine& line = lines[i];
      if (line.text == last) continue;
      text.append(line.text).append(1, '\n');
      last = line.text;
    }
    return text;
  }

 private:
  static constexpr size_t cFetched = 8;

  const Options& options;
  LogShell log;
  CollectedLines unsorted;
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

bool WriteFile(const std::string& path, const std::string& text) {
  if (!MayReplace(path)) {
    Say(path + ": is no tags file, it was not replaced");
    return false;
  }
  const mavro::FileResult result = mavro::SaveFileText(path, text);
  if (!result.Ok()) Say(path + ": " + result.error);
  return result.Ok();
}

bool WriteOutput(const std::string& text) {
  const bool isWritten =
      std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
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
  const std::string text = collector.Text();
  const bool isWritten =
      options.output.empty() ? WriteOutput(text) : WriteFile(options.output, text);
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
