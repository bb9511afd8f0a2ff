#include "tags/TagReference.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <iterator>
#include <optional>
#include <utility>

#include "FileText.h"
#include "base/FileTimes.h"
#include "base/Paths.h"
#include "base/TextMark.h"
#include "base/XmlTag.h"
#include "tags/LibraryNames.h"
#include "tags/TagCache.h"
#include "tags/TagData.h"
#include "tags/TagParser.h"

namespace zendry {

namespace {

// A header's full path.
std::string FullHeaderPath(const std::string& path, const std::string& definition) {
  if (IsAbsolutePath(path)) return path;
  return definition.substr(0, definition.rfind('/') + 1) + path;
}

class DefinitionReader {
 public:
  DefinitionReader(TagData& readInto, const std::string& path) : data(readInto), definition(path) {}

  void Read(const std::string& text) {
    theTagParser.Bind(data);
    TagSource source{text};
    for (XmlTag tag; tag.read(&source);) ReadElement(tag);
  }

 private:
  void ReadElement(const XmlTag& tag) {
    switch (tag.element.front()) {
      case 'l':
        folder = tag.p;
        break;
      case 'o':
        data.saveCache = tag.o.find("-x") != std::string::npos;
        break;
      case 'h':
        ReadHeader(tag);
        break;
      default:
        break;
    }
  }

  void ReadHeader(const XmlTag& tag) {
    const std::string path = folder + "/" + (tag.p.empty() ? tag.n : tag.p);
    data.headers.push_back({tag.id, tag.o, tag.n, path});
    theTagParser.parseFile(FullHeaderPath(path, definition), tag.id);
  }

  TagData& data;
  const std::string& definition;
  std::string folder;
};

// Without this the cache would stay older than the definition for ever if the clock was set back
// after the definition was written.
void MakeAsNewAs(const std::string& cache, const std::string& definition) {
  if (!definitionIsNewer(definition, cache)) return;
  struct stat status;
  if (stat(definition.c_str(), &status) != 0) return;
  const timespec times[] = {status.st_mtim, status.st_mtim};
  utimensat(AT_FDCWD, cache.c_str(), times, 0);
}

// A read-only installation comes with its caches; without one there, the tags are only kept for
// this session.
void WriteCache(const TagData& library, const std::string& definition, uint64_t definitionMark) {
  const std::string cache = CachePath(definition);
  if (mavro::SaveFileText(cache, CacheText(library, definitionMark)).Ok())
    MakeAsNewAs(cache, definition);
}

// The tags of a definition from its cache, if that can be trusted.
bool LoadCache(TagData& library, const std::string& definition, const uint64_t* definitionMark) {
  const mavro::FileText cache = mavro::ReadFileText(CachePath(definition));
  if (!cache.Ok()) return false;
  if (!IsCacheTrue(cache.text, definitionMark) && !IsUnstampedCache(cache.text)) return false;
  ReadCacheText(cache.text, library);
  return true;
}

TagData ReadLibrary(const std::string& path) {
  TagData library;
  const mavro::FileText definition = mavro::ReadFileText(path);
  const uint64_t mark = definition.Ok() ? TextMark(definition.text) : 0;
  const bool isNewer = definitionIsNewer(path, CachePath(path));
  if (!isNewer && LoadCache(library, path, definition.Ok() ? &mark : nullptr)) return library;
  if (!definition.Ok()) return library;
  library.saveCache = true;
  loadDefinition(library, path);
  if (library.saveCache) WriteCache(library, path, mark);
  return library;
}

// Tags of other libraries stay in the store, except for classes of the same name.
void Add(TagData& data, TagData library) {
  std::move(library.globals.begin(), library.globals.end(), std::back_inserter(data.globals));
  std::move(library.headers.begin(), library.headers.end(), std::back_inserter(data.headers));
  for (auto& [name, tagClass] : library.classes) data.classes[name] = std::move(tagClass);
  data.classCount += library.classCount;
  data.saveCache = library.saveCache;
  data.Changed();
}

}  // namespace

std::string CachePath(const std::string& definition) {
  std::string cache = definition;
  if (!cache.empty()) cache.back() = 'x';
  return cache;
}

bool definitionIsNewer(const std::string& path, const std::string& cache) {
  FileTimes times;
  const std::optional<FileTimes::Time> definition = times.Of(path);
  if (!definition) return false;
  const std::optional<FileTimes::Time> compiled = times.Of(cache);
  return !compiled || *definition > *compiled;
}

void loadDefinition(TagData& data, const std::string& path) {
  const mavro::FileText definition = mavro::ReadFileText(path);
  data.clear();
  if (definition.Ok() && TokensFit(definition.text))
    DefinitionReader(data, path).Read(definition.text);
}

void TagData::loadReference(const std::string& path) {
  if (loaded.contains(path)) return;
  if (fileName != path) theTagParser.logMessage("Loading", path);
  TagData library = ReadLibrary(path);
  for (HeaderRec& header : library.headers) header.path = FullHeaderPath(header.path, path);
  if (loaded.empty()) clear();
  Add(*this, std::move(library));
  names.push_back(std::make_shared<LibraryNames>(NamesPath(path)));
  loaded.insert(path);
}

}  // namespace zendry
