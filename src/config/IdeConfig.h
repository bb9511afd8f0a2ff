#pragma once

#include <array>
#include <map>
#include <string>

#include "FileText.h"

namespace zendry {

// A library set of "Zendry.cfg": switches that a project takes by naming the set.
struct LibSet {
  bool expanded = false;  // both strings have had their macros expanded
  std::string include;    // appended to the compile switches
  std::string link;       // appended to the link switches
};

// A compiler set of "Zendry.cfg". An empty folder means that its tools are found on PATH.
struct ToolSet {
  std::string name;
  std::string folder;
  std::string flags;
  std::string launcher = {};  // a program put before the compilers; empty for none
};

// The use of a font record of "Zendry.cfg": the editor's proportional font, the editor's font with
// letters of one width, and the Output panel's font.
enum FontUse { cVariableFont, cFixedFont, cOutputFont };

// One configurable font. `style` has the bits of mavro::Font.
struct FontRec {
  int kind = 0;
  int style = 0;
  std::string name;
  int size = 10;
};

// The installation's settings for tools and libraries; read once at start and never changed after
// that.
struct IdeConfig {
  std::string appDir;  // folder of the program with its trailing slash
  std::string gcc = "gcc";
  std::string gpp = "g++";
  std::string gdb = "gdb";
  std::string linker = "g++";
  std::string ar = "ar";
  std::string windres = "windres";
  std::string windresOptions = "-D _WIN32_WINNT=0x0501 -O coff";
  int mostTags = 1024;     // of one source
  int longestLine = 1023;  // of a source whose tags are wanted
  int defaultSet = 0;
  int defaultOption = 0;
  std::map<std::string, LibSet> libSets;
  std::map<std::string, LibSet> addOns;
  std::array<ToolSet, 3> toolSets;
};

// The font, corrected so that it can be shown: an unreadable size becomes the usual one, style bits
// without a meaning are dropped.
FontRec ShowableFont(FontRec font);

struct IdeFonts {
  bool largeToolBar = false;
  std::array<FontRec, 3> fonts = {{{0, 0, "Verdana"}, {1, 0, "Courier New"}, {2, 0, "Ariel"}}};
};

extern IdeConfig theIdeConfig;
extern IdeFonts theIdeFonts;

// Reads "Zendry.cfg" in `config.appDir`, and the extensions that it adds to the kinds of files. A
// missing file leaves everything as it is. So does a file that can't be read, which is an error.
// Elements without a meaning are passed over; an element with a value that is too long to be read
// is a doubt.
mavro::FileResult ReadConfig(IdeConfig& config, IdeFonts& fonts);

// The folder that "@" stands for: the parent of `appDir`, with its trailing slash.
std::string InstallRoot(const std::string& appDir);

// The command that starts a tool: `name` alone for an empty `dir`, else `dir`, "/" and `name`,
// where a `dir` longer than two characters that begins with "@/" is in the install root.
std::string ResolveToolPath(const std::string& dir, const std::string& name);

}  // namespace zendry
