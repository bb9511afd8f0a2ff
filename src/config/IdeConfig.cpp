#include "config/IdeConfig.h"

#include <algorithm>
#include <optional>
#include <sstream>

#include "FileText.h"
#include "base/FileKinds.h"
#include "base/ParseInt.h"
#include "base/XmlTag.h"
#include "config/EditorSettings.h"

namespace zendry {

IdeConfig theIdeConfig;
IdeFonts theIdeFonts;

namespace {

bool IsIndex(int id, size_t count) {
  return id >= 0 && static_cast<size_t>(id) < count;
}

void ReadToolSet(const XmlTag& tag, IdeConfig& config) {
  if (IsIndex(tag.id, config.toolSets.size()))
    config.toolSets[static_cast<size_t>(tag.id)] = {tag.o, tag.p, tag.v, tag.n};
}

void ReadFont(const XmlTag& tag, IdeFonts& fonts) {
  if (!IsIndex(tag.id, fonts.fonts.size())) return;
  const auto index = static_cast<size_t>(tag.id);
  FontRec& font = fonts.fonts[index];
  font.name = tag.n;
  font.style = ParseInt(tag.o);
  font.size = ParseInt(tag.v);
  theEditorSettings.fonts[index] = ShowableFont(font);
}

void ReadFileKinds(const XmlTag& tag) {
  std::istringstream extensions(tag.v);
  for (std::string extension; extensions >> extension;) AddFileKind(extension, tag.id);
}

// Limits can only be raised: what is below the parser's own counts as not told.
void ReadParserLimits(const XmlTag& tag, IdeConfig& config) {
  config.mostTags = std::max(config.mostTags, tag.id);
  config.longestLine = std::max(config.longestLine, ParseInt(tag.v));
}

// Only the first letter of an element's name counts.
void ReadElement(const XmlTag& tag, IdeConfig& config, IdeFonts& fonts) {
  switch (tag.element.front()) {
    case 'g':
      ReadToolSet(tag, config);
      break;
    case 'a':
      config.addOns[tag.n] = {false, tag.p, tag.v};
      break;
    case 'l':
      config.libSets[tag.n] = {false, tag.p, tag.v};
      break;
    case 'f':
      ReadFont(tag, fonts);
      break;
    case 'k':
      ReadFileKinds(tag);
      break;
    case 'p':
      ReadParserLimits(tag, config);
      break;
    case 's':
      config.defaultSet = tag.id;
      config.defaultOption = ParseInt(tag.o);
      break;
    default:
      break;
  }
}

}  // namespace

FontRec ShowableFont(FontRec font) {
  constexpr int cLeastSize = 4, cMostSize = 72, cStyleBits = 3;
  if (font.size < cLeastSize || font.size > cMostSize) font.size = FontRec().size;
  font.style &= cStyleBits;
  return font;
}

mavro::FileResult ReadConfig(IdeConfig& config, IdeFonts& fonts) {
  const std::string path = config.appDir + "Zendry.cfg";
  const mavro::FileText file = mavro::ReadFileText(path);
  if (file.isMissing) return {};
  if (!file.Ok()) return file;
  ForgetAddedFileKinds();
  const FittingTags tags = PassOverTooLong(file.text);
  TagSource source{tags.text};
  for (XmlTag tag; tag.read(&source);) ReadElement(tag, config, fonts);
  if (tags.passedOver.empty()) return {};
  return {"", path + ": left out is " + TooLongWords(tags)};
}

std::string InstallRoot(const std::string& appDir) {
  if (appDir.size() < 2) return appDir;
  return appDir.substr(0, appDir.rfind('/', appDir.size() - 2) + 1);
}

std::string ResolveToolPath(const std::string& dir, const std::string& name) {
  if (dir.empty()) return name;
  const bool inInstallRoot = dir.size() > 2 && dir.starts_with('@');
  const std::string folder = inInstallRoot ? InstallRoot(theIdeConfig.appDir) + dir.substr(2) : dir;
  return folder + "/" + name;
}

}  // namespace zendry
