#include "build/CommandLines.h"

#include "CommandLine.h"
#include "base/Paths.h"
#include "config/IdeConfig.h"
#include "project/Project.h"

namespace zendry {

namespace {

// Writes expanded text and keeps track of the places inside quotes as the splitter sees them,
// because there a root that needs quotes is written without quotes of its own.
class MacroWriter {
 public:
  explicit MacroWriter(std::string_view root) : root(root) {}

  void Copy(std::string_view text) {
    for (char c : text) Copy(c);
  }
  void Copy(char c) {
    if (c == '"' && backslashes % 2 == 0) quoted = !quoted;
    backslashes = c == '\\' ? backslashes + 1 : 0;
    written += c;
  }
  void InsertRoot() {
    backslashes = 0;
    if (root.empty() || mavro::QuoteArgument(root) == root)
      written += root;
    else
      written += quoted ? InnerQuoted() : mavro::QuoteArgument(root);
  }
  std::string Take() { return std::move(written); }

 private:
  // The root in the form that it needs inside quotes that continue after it.
  std::string InnerQuoted() const {
    const std::string whole = mavro::QuoteArgument(std::string(root) + "/");
    return whole.substr(1, whole.size() - 3);
  }

  std::string_view root;
  std::string written;
  bool quoted = false;
  size_t backslashes = 0;  // how many `written` ends with
};

}  // namespace

std::string KeepMacroText(std::string_view quoted) {
  return std::string(quoted);
}

std::string ExpandMacros(std::string_view text, std::string_view root, MacroHook hook) {
  MacroWriter writer(root);
  while (!text.empty()) {
    const char first = text[0];
    text.remove_prefix(1);
    if (first == '@') {
      writer.InsertRoot();
    } else if (first != '`') {
      writer.Copy(first);
    } else if (const size_t end = text.find('`'); end != std::string_view::npos) {
      std::string result = hook(text.substr(0, end));
      if (result.ends_with('\n')) result.back() = ' ';
      writer.Copy(result);
      text.remove_prefix(end + 1);
    }
  }
  return writer.Take();
}

std::string ExpandResourcePath(std::string_view path, std::string_view root) {
  std::string expanded;
  for (char c : path) {
    if (c == '@')
      expanded += root;
    else
      expanded += c;
  }
  return expanded;
}

std::string MacroRoot(const std::string& appDir) {
  std::string root = InstallRoot(appDir);
  if (root.ends_with('/')) root.pop_back();
  return root;
}

std::string FileArgument(std::string_view name) {
  const bool isTakenForOption = name.starts_with('-') || name.starts_with('@');
  return mavro::QuoteArgument(isTakenForOption ? "./" + std::string(name) : std::string(name));
}

std::string ObjectPath(const std::string& outDirName, const std::string& source,
                       std::string_view extension) {
  return outDirName + "/" + ChangeExtension(BaseName(source), extension);
}

std::string ToolPath(const IdeConfig& config, int set, const std::string& tool) {
  return ResolveToolPath(config.toolSets[static_cast<size_t>(CompilerSet(set))].folder, tool);
}

std::string ResourceToolPath(const IdeConfig& config, int set) {
  const std::string tool = ToolPath(config, set, config.windres);
  const bool isThere = tool.find('/') != std::string::npos || IsOnPath(tool);
  return isThere ? tool : ToolPath(config, 0, config.windres);
}

ProjectFlags ComposeFlags(const Project& project, IdeConfig& config) {
  const std::string root = MacroRoot(config.appDir);
  ProjectFlags flags;
  flags.include =
      ExpandMacros(project.includePath, root) + " " + ExpandMacros(cBasicIncludes, root) + " ";
  flags.link = ExpandMacros(project.linkerPath, root) + " " + ExpandMacros(cBasicLibs, root) + " " +
               project.linkLibs + " ";
  LibSet* const set = LibrarySetOf(project, config);
  if (!set) return flags;
  if (!set->expanded) {
    set->include = ExpandMacros(set->include, root);
    set->link = ExpandMacros(set->link, root);
    set->expanded = true;
  }
  flags.include += set->include;
  flags.link += set->link;
  return flags;
}

std::string CompileLine(const CompileParts& parts) {
  std::string line = mavro::QuoteArgument(parts.tool);
  line.append("  -c ").append(parts.options).append(" ").append(parts.includeFlags);
  line.append(" ").append(parts.setFlags).append("  ").append(FileArgument(parts.source));
  if (!parts.object.empty()) line.append(" -o ").append(FileArgument(parts.object));
  return line;
}

std::string SingleFileLine(const SingleFileParts& parts) {
  return mavro::QuoteArgument(parts.tool) + " " + parts.options + " " + parts.includeFlags +
         (parts.strip ? " -s " : "") + "  " + FileArgument(parts.source) + " -o " +
         FileArgument(parts.program);
}

std::string ResourceLine(const ResourceParts& parts) {
  return mavro::QuoteArgument(parts.tool) + "  -i " + FileArgument(parts.script) + " -o " +
         FileArgument(parts.object) + " " + parts.options + " " + parts.setFlags +
         parts.frameworkFlags;
}

std::string LinkLine(const LinkParts& parts) {
  return mavro::QuoteArgument(parts.tool) + "  -o " + FileArgument(parts.output) + " " +
         parts.objects + " " + parts.libFlags + " " + parts.options;
}

std::string ArchiveLine(const ArchiveParts& parts) {
  return mavro::QuoteArgument(parts.tool) + " -r " + FileArgument(parts.target) + " " +
         parts.objects;
}

}  // namespace zendry
