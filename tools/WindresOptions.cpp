#include "WindresOptions.h"

#include <algorithm>
#include <string_view>

#include "CommandLine.h"

namespace zendry {

const char* const cWindresHelp =
    "Usage: windres [option]... [script [object]]\n"
    "Compiles a resource script to an object file.\n"
    "\n"
    "  -i, --input FILE         the script\n"
    "  -o, --output FILE        the object\n"
    "  -I, --include-dir FOLDER where included files and resources are looked for\n"
    "  -D, --define NAME[=TEXT] define a macro\n"
    "  -U, --undefine NAME      take a definition back\n"
    "  -J, --input-format rc    the only format that is read\n"
    "  -O, --output-format coff an object for this system; the only format that is written\n"
    "      --preprocessor COMMAND, --preprocessor-arg SWITCH\n"
    "  -v, --verbose            print the preprocessor's command\n"
    "  -h, --help, -V, --version\n"
    "\n"
    "Accepted without effect: -c, --codepage; -F, --target; -l, --language; -r;\n"
    "--use-temp-file, --no-use-temp-file; switches for the compiler (-f..., -g..., -m..., "
    "-W...).\n";

namespace {

enum Option {
  cInput,
  cOutput,
  cIncludeFolder,
  cDefine,
  cUndefine,
  cInputFormat,
  cOutputFormat,
  cPreprocessor,
  cPreprocessorArgument,
  cVerbose,
  cHelp,
  cVersion,
  cIgnored,  // without value
  cIgnoredWithValue
};

struct OptionName {
  char letter;  // '\0' for none
  std::string_view word;
  Option option;
  bool hasValue;
};
constexpr OptionName cOptionNames[] = {
    {'i', "input", cInput, true},
    {'o', "output", cOutput, true},
    {'I', "include-dir", cIncludeFolder, true},
    {'D', "define", cDefine, true},
    {'U', "undefine", cUndefine, true},
    {'J', "input-format", cInputFormat, true},
    {'O', "output-format", cOutputFormat, true},
    {'\0', "preprocessor", cPreprocessor, true},
    {'\0', "preprocessor-arg", cPreprocessorArgument, true},
    {'v', "verbose", cVerbose, false},
    {'h', "help", cHelp, false},
    {'V', "version", cVersion, false},
    {'c', "codepage", cIgnoredWithValue, true},
    {'F', "target", cIgnoredWithValue, true},
    {'l', "language", cIgnoredWithValue, true},
    {'r', "", cIgnored, false},
    {'\0', "use-temp-file", cIgnored, false},
    {'\0', "no-use-temp-file", cIgnored, false},
};

constexpr std::string_view cObjectFormats[] = {"coff", "elf"};

// True for switches of compilers that this program doesn't use.
bool IsCompilerSwitch(std::string_view argument) {
  constexpr std::string_view cBeginnings = "fgmWp";
  constexpr std::string_view cLevels = "0123sgz";
  if (argument.size() > 2 && argument[1] == 'O')
    return cLevels.find(argument[2]) != std::string_view::npos || argument == "-Ofast";
  return argument == "-s" || argument.starts_with("-std=") || argument == "-g" ||
         (argument.size() > 2 && cBeginnings.find(argument[1]) != std::string_view::npos);
}

class OptionReader {
 public:
  explicit OptionReader(const std::vector<std::string>& arguments) : arguments(arguments) {}

  WindresOptions Read() {
    for (; index < arguments.size() && options.error.empty(); ++index) ReadArgument();
    const bool isQuestion = options.wantsHelp || options.wantsVersion;
    if (options.error.empty() && !isQuestion && options.input.empty())
      options.error = "no script is named";
    else if (options.error.empty() && !isQuestion && options.output.empty())
      options.error = "no object is named: -o FILE";
    return options;
  }

 private:
  void ReadArgument() {
    const std::string_view argument = arguments[index];
    if (onlyFiles || argument.size() < 2 || argument[0] != '-')
      return TakeFile(std::string(argument));
    if (argument == "--")
      onlyFiles = true;
    else if (argument.starts_with("--"))
      ReadLong(argument.substr(2));
    else if (!IsCompilerSwitch(argument))
      ReadShort(argument);
  }

  void TakeFile(const std::string& name) {
    std::string& place = options.input.empty() ? options.input : options.output;
    if (!place.empty())
      options.error = "one script and one object are expected, and then comes " + name;
    place = name;
  }

  // "--word", "--word VALUE" or "--word=VALUE".
  void ReadLong(std::string_view text) {
    const size_t equals = text.find('=');
    const std::string_view word = text.substr(0, equals);
    for (const OptionName& name : cOptionNames) {
      if (word.empty() || name.word != word) continue;
      if (!name.hasValue && equals != std::string_view::npos) break;
      if (equals == std::string_view::npos) return TakeOption(name);
      return Apply(name.option, std::string(text.substr(equals + 1)));
    }
    options.error = "there is no option --" + std::string(text);
  }

  // "-x", "-x VALUE" or "-xVALUE".
  void ReadShort(std::string_view argument) {
    for (const OptionName& name : cOptionNames) {
      if (name.letter != argument[1]) continue;
      if (argument.size() == 2) return TakeOption(name);
      if (!name.hasValue) break;
      return Apply(name.option, std::string(argument.substr(2)));
    }
    options.error = "there is no option " + std::string(argument);
  }

  void TakeOption(const OptionName& name) {
    if (!name.hasValue) return Apply(name.option, "");
    if (index + 1 >= arguments.size())
      options.error = arguments[index] + " needs a value";
    else
      Apply(name.option, arguments[++index]);
  }

  void Apply(Option option, const std::string& value) {
    switch (option) {
      case cInput:
        options.input = value;
        break;
      case cOutput:
        options.output = value;
        break;
      case cIncludeFolder:
        options.includeFolders.push_back(value);
        break;
      case cDefine:
        options.defines.push_back(value);
        break;
      case cUndefine:
        options.undefines.push_back(value);
        break;
      case cInputFormat:
        if (value != "rc") options.error = "the format " + value + " can't be read, only rc";
        break;
      case cOutputFormat:
        if (std::find(std::begin(cObjectFormats), std::end(cObjectFormats), value) ==
            std::end(cObjectFormats))
          options.error = "the format " + value + " can't be written, only an object: -O coff";
        break;
      case cPreprocessor:
        options.preprocessor = mavro::SplitCommandLine(value);
        break;
      case cPreprocessorArgument:
        options.preprocessorArguments.push_back(value);
        break;
      case cVerbose:
        options.isVerbose = true;
        break;
      case cHelp:
        options.wantsHelp = true;
        break;
      case cVersion:
        options.wantsVersion = true;
        break;
      case cIgnored:
      case cIgnoredWithValue:
        break;
    }
  }

  const std::vector<std::string>& arguments;
  size_t index = 0;
  bool onlyFiles = false;
  WindresOptions options;
};

}  // namespace

WindresOptions ReadWindresOptions(const std::vector<std::string>& arguments) {
  return OptionReader(arguments).Read();
}

}  // namespace zendry
