#pragma once

#include <string>
#include <string_view>

#include "project/ChosenSets.h"

namespace zendry {

class Project;
struct IdeConfig;

// Functions that compose command lines. Each makes one string from its values; the process runner
// splits it again by the rules of mavro::SplitCommandLine. Ordinary names are left as they are.
// Names that the splitter would break are quoted. Names that a tool would take for an option or a
// list of options ("-x", "@x") get the prefix "./". Switches are left as the user wrote them.

// Called with the text between two backquotes; its answer replaces text and backquotes.
using MacroHook = std::string (*)(std::string_view quoted);
std::string KeepMacroText(std::string_view quoted);

// Replaces "@" by `root`, the install root without trailing slash, and each text in backquotes by
// the answer of the hook. A backquote without partner is dropped. A root that the splitter would
// break is quoted.
std::string ExpandMacros(std::string_view text, std::string_view root,
                         MacroHook hook = KeepMacroText);
// Replaces each "@" of a path by `root` and nothing else.
std::string ExpandResourcePath(std::string_view path, std::string_view root);
// The value of "@": the parent of the program's folder, without trailing slash.
std::string MacroRoot(const std::string& appDir);

// A file's name as an argument.
std::string FileArgument(std::string_view name);

// `outDirName`, "/" and the base name of `source` with its extension changed. ObjectNames keeps two
// sources with one base name apart.
std::string ObjectPath(const std::string& outDirName, const std::string& source,
                       std::string_view extension);

// The command of a tool of one compiler set.
std::string ToolPath(const IdeConfig& config, int set, const std::string& tool);
// The resource compiler of a set. Machines have no resource compiler on their PATH, so a set that
// takes its tools from there gets that of the first set.
std::string ResourceToolPath(const IdeConfig& config, int set);

struct ProjectFlags {
  std::string include;  // compile switches of the project and its library set
  std::string link;     // link switches of both
};

// The library set is looked up in the configuration, where the first use expands its macros.
ProjectFlags ComposeFlags(const Project& project, IdeConfig& config);

// The parts of each step's command line; file names are given as they are, not as arguments.
// Those of a compiler are views, because a build composes a line for each source.
struct CompileParts {
  std::string_view tool;
  std::string_view options;  // of the build mode
  std::string_view includeFlags;
  std::string_view setFlags;
  std::string_view source;
  std::string_view object;  // empty: the tool chooses
};
struct SingleFileParts {
  std::string tool;
  std::string options;
  std::string includeFlags;
  bool strip = false;
  std::string source;
  std::string program;
};
struct ResourceParts {
  std::string tool;
  std::string script;
  std::string object;
  std::string options;
  std::string setFlags;
  std::string frameworkFlags;
};
struct LinkParts {
  std::string tool;
  std::string output;
  std::string objects;  // arguments, each with a blank before it
  std::string libFlags;
  std::string options;
};
struct ArchiveParts {
  std::string tool;
  std::string target;
  std::string objects;  // as in LinkParts
};

std::string CompileLine(const CompileParts& parts);
std::string SingleFileLine(const SingleFileParts& parts);
std::string ResourceLine(const ResourceParts& parts);
std::string LinkLine(const LinkParts& parts);
std::string ArchiveLine(const ArchiveParts& parts);

}  // namespace zendry
