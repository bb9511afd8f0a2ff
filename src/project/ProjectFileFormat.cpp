#include "project/ProjectFileFormat.h"

#include <string>

#include "base/Paths.h"
#include "base/XmlTag.h"
#include "project/Project.h"

namespace zendry {

namespace {

constexpr TagLabels cLabels = {"name", "opt", "p", "value"};

// The attributes of a line, empty ones left out.
struct Attributes {
  std::string_view name = {};
  int id = -1;
  std::string_view opt = {};
  std::string_view p = {};
  std::string_view value = {};
};

// Group: writing.

class ProjectWriter {
 public:
  ProjectText Write(const Project& project);

 private:
  void WriteFiles(const Project& project);
  void WriteGeneral(const Project& project);
  void WriteOptions(std::string_view element, const BuildOptions& options);
  void Line(int depth, std::string_view element);
  void Tag(int depth, std::string_view element, const Attributes& attributes);

  ProjectText out;
};

void ProjectWriter::Line(int depth, std::string_view element) {
  out.text.append(static_cast<size_t>(depth), '\t').append("<").append(element).append(">\n");
}

void ProjectWriter::Tag(int depth, std::string_view element, const Attributes& attributes) {
  XmlTag tag(cLabels);
  tag.begin(element, depth, XmlTag::Ends::cAtOnce);
  tag.set(attributes.name, attributes.opt, attributes.p, attributes.value, attributes.id);
  tag.write(out.text);
  if (!out.unwritable.empty() || tag.ReadsBack()) return;
  // No line has more than one text value.
  out.unwritable = tag.n + tag.o + tag.p + tag.v;
}

void ProjectWriter::WriteFiles(const Project& project) {
  const auto writeName = [&](const auto& file) {
    Tag(1, "file", {.name = project.RelativeIfSame(file->name)});
  };
  Line(0, "src");
  for (const auto& file : project.Files())
    if (file->type <= cCSource) writeName(file);
  Line(0, "/src");
  Line(0, "hdr");
  for (const auto& file : project.Files())
    if (file->type == cHeader) writeName(file);
  Line(0, "/hdr");
  if (project.resourceFile.empty()) return;
  Line(0, "res");
  Tag(1, "file", {.name = project.resourceFile});
  Line(0, "/res");
}

void ProjectWriter::WriteGeneral(const Project& project) {
  Line(1, "gen");
  Tag(2, "targ", {.id = project.type, .opt = project.libSet});
  Tag(2, "inc", {.value = project.includePath});
  Tag(2, "arch", {.value = project.linkerPath});
  Tag(2, "lib", {.value = project.linkLibs});
  Tag(2, "out", {.value = project.outName});
  Tag(2, "pars", {.p = project.programParams});
  Line(1, "/gen");
}

void ProjectWriter::WriteOptions(std::string_view element, const BuildOptions& options) {
  Line(1, element);
  Tag(2, "gcc", {.id = options.gcc});
  Tag(2, "comp", {.opt = options.comp});
  Tag(2, "link", {.opt = options.link});
  Line(1, std::string("/").append(element));
}

ProjectText ProjectWriter::Write(const Project& project) {
  out.text = "<ide>\n<set parse=\"";
  out.text += project.parse ? 'y' : 'n';
  out.text += "\"/></ide>\n";
  WriteFiles(project);
  Line(0, "opt");
  WriteGeneral(project);
  WriteOptions("dbg", project.debugOptions);
  WriteOptions("rel", project.releaseOptions);
  Line(0, "/opt");
  return std::move(out);
}

// Group: reading.

enum Section { cNoSection, cSrc, cHdr, cRes, cOpt, cGen, cDbg, cRel };

struct SectionName {
  std::string_view element;
  Section section;
};

constexpr SectionName cSections[] = {
    {"src", cSrc}, {"hdr", cHdr}, {"res", cRes}, {"opt", cOpt},
    {"gen", cGen}, {"dbg", cDbg}, {"rel", cRel},
};

class ProjectReader {
 public:
  explicit ProjectReader(Project& readInto) : project(readInto) {}
  ProjectReading Read(std::string_view text);

 private:
  void ReadElement(const XmlTag& tag);
  bool StartSection(const std::string& element);
  void ReadFileName(const std::string& path);
  void ReadGeneral(const XmlTag& tag);
  void ReadOption(const XmlTag& tag);
  void ReadCompileSwitches(const std::string& switches);
  BuildOptions& Group() { return section == cRel ? project.releaseOptions : project.debugOptions; }

  Project& project;
  Section section = cNoSection;
  bool saidSingleResource = false;
};

ProjectReading ProjectReader::Read(std::string_view text) {
  ProjectReading reading;
  if (const FittingTags tags = PassOverTooLong(text); !tags.passedOver.empty()) {
    reading.hasElements = true;
    reading.tooLong = "holds " + TooLongWords(tags);
    return reading;
  }
  TagSource source{text};
  for (XmlTag tag; tag.read(&source);) {
    reading.hasElements = true;
    if (tag.element == "/opt") reading.isComplete = true;
    ReadElement(tag);
  }
  return reading;
}

void ProjectReader::ReadElement(const XmlTag& tag) {
  if (tag.element.starts_with('/'))
    section = cNoSection;
  else if (StartSection(tag.element))
    return;
  else if (tag.element == "set")
    project.parse = project.parse && !tag.p.starts_with('n');
  else if (tag.element == "file")
    ReadFileName(tag.n);
  else if (section >= cGen)
    ReadOption(tag);
}

bool ProjectReader::StartSection(const std::string& element) {
  for (const SectionName& entry : cSections)
    if (element == entry.element) {
      section = entry.section;
      return true;
    }
  return false;
}

void ProjectReader::ReadFileName(const std::string& path) {
  if (FileKind(path) == cResourceScript && !project.resourceFile.empty()) {
    if (saidSingleResource) return;
    saidSingleResource = true;
  }
  project.AddFile(path);
}

// Old form projects ask for optimisation by size, which breaks them.
void ProjectReader::ReadCompileSwitches(const std::string& switches) {
  Group().comp = switches;
  const size_t bySize = switches.find("-Os");
  if (project.type == cFormApplication && bySize != std::string::npos)
    Group().comp.replace(bySize, 3, "-O2");
}

// Only the first letter of an element's name counts.
void ProjectReader::ReadOption(const XmlTag& tag) {
  switch (tag.element.front()) {
    case 'c':
      return ReadCompileSwitches(tag.o);
    case 'g':
      Group().gcc = tag.id;
      return;
    case 'o':
      project.outName = tag.v;
      return;
    case 'p':
      project.programParams = tag.p;
      return;
    case 't':
      project.type = tag.id;
      project.libSet = tag.o;
      return;
    default:
      break;
  }
  if (section == cGen)
    ReadGeneral(tag);
  else if (tag.element.front() == 'l')
    Group().link = tag.o;
}

void ProjectReader::ReadGeneral(const XmlTag& tag) {
  switch (tag.element.front()) {
    case 'a':
      project.linkerPath = tag.v;
      break;
    case 'i':
      project.includePath = tag.v;
      break;
    case 'l':
      project.linkLibs = tag.v;
      break;
    default:
      break;
  }
}

}  // namespace

std::string WhyUnwritable(std::string_view value) {
  XmlTag tag(cLabels);
  tag.begin("inc", 0, XmlTag::Ends::cAtOnce);
  tag.set("", "", "", value, -1);
  if (tag.ReadsBack()) return "";
  constexpr size_t cMost = cMaxTagToken - 3;  // two quotes and the slash are in the same token
  if (value.size() > cMost)
    return "too long for the project file, " + std::to_string(value.size()) + " characters of " +
           std::to_string(cMost);
  return "the project file can't hold these double quotes";
}

ProjectText WriteProjectText(const Project& project) {
  return ProjectWriter().Write(project);
}

ProjectReading ReadProjectText(std::string_view text, Project& project) {
  return ProjectReader(project).Read(text);
}

}  // namespace zendry
