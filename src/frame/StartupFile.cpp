#include "frame/StartupFile.h"

#include "base/Paths.h"
#include "base/Version.h"

namespace zendry {

namespace {

constexpr char cHelp[] =
    "Usage: zendry [FILE...]\n"
    "\n"
    "Opens an IDE for C and C++ on the files of the command line: a project (.zpj) or sources\n"
    "(.cpp, .cc, .c, .h, .hpp, .rc, ...). The last one is in front, the others have tabs before "
    "it.\n"
    "\n"
    "  --help     says this\n"
    "  --version  says the version\n"
    "\n"
    "Settings live in ~/.zendry. ZENDRY_LOG=FILE keeps a log of what the tag parser does.\n"
    "zendry-make builds a project without a window.\n";

}  // namespace

std::vector<StartupFile> FindStartupFiles(const std::vector<std::string>& arguments) {
  std::vector<StartupFile> found;
  for (const std::string& argument : arguments) {
    std::string path = TidyPath(argument);
    const int kind = FileKind(path);
    if (kind == cUnknownKind) continue;
    if (kind == cProjectFile)
      std::erase_if(found, [](const StartupFile& file) { return file.kind == cProjectFile; });
    found.push_back({std::move(path), kind});
  }
  return found;
}

std::string TerminalAnswer(const std::vector<std::string>& arguments) {
  if (arguments == std::vector<std::string>{"--help"}) return cHelp;
  if (arguments == std::vector<std::string>{"--version"})
    return std::string("zendry ") + cVersion + "\n";
  return "";
}

}  // namespace zendry
