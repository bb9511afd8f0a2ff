#include <CLI/CLI.hpp>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "CppTokens.h"
#include "DigestWriter.h"
#include "FileText.h"
#include "LibraryReader.h"
#include "base/XmlTag.h"
#include "tags/LibraryNames.h"
#include "tags/TagData.h"

// make-reference: writes the definition of a reference library, digests of its headers in the same
// folder, its compiled tags, and its names that are in no class. Runs in the build. Its input is
// the preprocessed text of a source that includes the library's headers.

using namespace zendry;

namespace {

struct Options {
  std::string expanded;
  std::string definition;
  std::string folder;
  std::string space;
  std::vector<std::string> leftOut;
  bool withProtected = false;
  int firstId = 1;
};

class Definition {
 public:
  Definition(const Options& options, const ExpandedSource& source)
      : options(options), source(source) {}

  bool Write() {
    Library library =
        ReadLibrary(source.tokens, options.space, options.leftOut, options.withProtected);
    AddMacros(library);
    std::error_code error;
    std::filesystem::remove_all(Folder() / options.folder, error);
    std::filesystem::create_directories(Folder() / options.folder, error);
    Line("library", VersionName(), options.folder, -1);
    Line("options", "", "", -1, "-x");
    for (const DigestPart& part : WriteDigest(library))
      if (part.header >= 0 && !WritePart(part)) return false;
    return Save(NamesPath(options.definition), WriteNames(library, options.space)) &&
           Save(options.definition, text) && WriteCache();
  }

 private:
  void AddMacros(Library& library) const {
    for (const ExpandedMacro& macro : source.macros) {
      if (macro.name.starts_with('_')) continue;
      LibraryName name{LibraryName::cMacro, "", true, {}};
      name.member.name = macro.name;
      if (!macro.parameters.empty()) {
        name.member.kind = LibraryMember::cFunction;
        name.member.parameters = {{CppToken::Kind::cWord, macro.parameters, -1}};
      }
      library.names.push_back(std::move(name));
    }
  }

  // The compiler's name: the quoted text in the source itself.
  std::string VersionName() const {
    std::string name;
    for (const CppToken& token : source.tokens)
      if (token.header < 0 && token.kind == CppToken::Kind::cLiteral && token.text.size() > 2)
        name += token.text.substr(1, token.text.size() - 2);
    return name;
  }

  bool WritePart(const DigestPart& part) {
    std::string file = source.headers[static_cast<size_t>(part.header)];
    const std::string name = file;
    if (part.header == lastHeader)
      file += "-" + std::to_string(++partOfHeader);
    else
      partOfHeader = 1;
    lastHeader = part.header;
    Line("header", name, file == name ? "" : file, options.firstId + count++);
    return Save((Folder() / options.folder / file).string(), part.text);
  }

  bool WriteCache() const {
    std::string cache = options.definition;
    cache.back() = 'x';
    std::error_code error;
    std::filesystem::remove(cache, error);
    TagData().loadReference(options.definition);
    if (mavro::FileExists(cache)) return true;
    std::fprintf(stderr, "make-reference: %s was not written\n", cache.c_str());
    return false;
  }

  std::filesystem::path Folder() const {
    return std::filesystem::path(options.definition).parent_path();
  }

  void Line(const char* element, const std::string& name, const std::string& path, int id,
            const std::string& switches = "") {
    XmlTag tag;
    tag.begin(element, 0, XmlTag::Ends::cAtOnce);
    tag.set(name, switches, path, "", id);
    tag.write(text);
  }

  static bool Save(const std::string& path, const std::string& content) {
    const mavro::FileResult result = mavro::SaveFileText(path, content);
    if (!result.Ok())
      std::fprintf(stderr, "make-reference: %s: %s\n", path.c_str(), result.error.c_str());
    return result.Ok();
  }

  const Options& options;
  const ExpandedSource& source;
  std::string text;
  int count = 0;
  int lastHeader = -1;
  int partOfHeader = 1;
};

}  // namespace

int main(int argc, char** argv) {
  Options options;
  CLI::App app("Writes the definition of a reference library and its compiled tags.",
               "make-reference");
  app.add_option("EXPANDED", options.expanded, "what the compiler made of the headers")->required();
  app.add_option("DEFINITION", options.definition, "the definition file (.tgd)")->required();
  app.add_option("--folder", options.folder, "of the digests, beside the definition")->required();
  app.add_option("--namespace", options.space, "of the library; without it C's");
  app.add_option("--leave-out", options.leftOut, "inner namespaces");
  app.add_flag("--protected", options.withProtected, "take protected members too");
  app.add_option("--first-id", options.firstId, "of the headers");
  CLI11_PARSE(app, argc, argv);
  const mavro::FileText expanded = mavro::ReadFileText(options.expanded);
  if (!expanded.Ok()) {
    std::fprintf(stderr, "make-reference: %s can't be read\n", options.expanded.c_str());
    return 1;
  }
  const ExpandedSource source = SplitTokens(expanded.text);
  return Definition(options, source).Write() ? 0 : 1;
}
