#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "Shortest.h"
#include "base/EditorText.h"
#include "project/Project.h"

// tag_store_bench [DEFINITION]
//
// The cost of the tags of a project: loading one of 1,000 files with 300,000 lines, parsed in
// whole; parsing an edited file of 5,000 lines again from its editor, for which the limit is 5 ms;
// memory per tag. With the definition file of a reference library, also how long its compiled tags
// take.

namespace {

constexpr int cFiles = 1000;
constexpr int cLines = 300;
constexpr int cEditedLines = 5000;
constexpr double cLimit = 5;

using bench::Shortest;

void Check(bool ok, const char* step) {
  bench::Check(ok, "tag_store_bench", step);
}

constexpr int cPartLines = 60;
constexpr int cPaddingLines = 31;

// Source text as people write it: classes with members, functions with bodies, macros, comments.
std::string SourceText(int number, int lines) {
  std::string text = "#include <string>\n#include \"file" + std::to_string(number + 1) + ".h\"\n";
  for (int i = 0; (i + 1) * cPartLines <= lines; ++i) {
    const std::string name = "Part" + std::to_string(number) + "_" + std::to_string(i);
    text += "// Keeps what belongs to " + name + " together.\nclass " + name +
            " : public Base {\n public:\n  explicit " + name + "(int newCount);\n" +
            "  const std::string& Name() const { return name; }\n  void Add(int value);\n\n"
            " private:\n  std::string name;\n  std::vector<int> values;\n  int count = 0;\n};\n\n"
            "#define LIMIT_" +
            name + " 100\n\n" + name + "::" + name +
            "(int newCount) : count(newCount) {\n  values.reserve(10);\n}\n\nvoid " + name +
            "::Add(int value) {\n  if (value > LIMIT_" + name +
            ") return;\n  for (int i = 0; i < value; ++i) {\n    values.push_back(i);\n  }\n";
    for (int k = 0; k < cPaddingLines; ++k)
      text += "  count += values[" + std::to_string(k) + "] * 2;  // weighs \"each\" of them\n";
    text += "}\n\nstatic int helper" + std::to_string(i) + "(int a, int b) { return a + b; }\n";
  }
  return text;
}

class MemoryEditor : public zendry::EditorText {
 public:
  std::string Path() const override { return path; }
  int Length() const override { return static_cast<int>(text.size()); }
  void CopyRange(int start, int end, char* to) const override {
    std::copy(text.begin() + start, text.begin() + end, to);
  }
  std::string path, text;
};

std::string WriteProject(const std::string& folder) {
  std::ofstream project(folder + "/big.zpj");
  project << "<src>\n";
  for (int i = 0; i < cFiles; ++i) {
    const std::string name = "file" + std::to_string(i) + (i % 4 ? ".cpp" : ".h");
    std::ofstream(folder + "/" + name) << SourceText(i, cLines);
    project << "\t<file name=\"" << name << "\"/>\n";
  }
  project << "</src>\n<opt>\n</opt>\n";
  return folder + "/big.zpj";
}

size_t TagCount(const zendry::TagData& data) {
  size_t count = data.globals.size();
  for (const auto& [name, tagClass] : data.classes) count += 1 + tagClass.members.size();
  return count;
}

void MeasureLoad(const std::string& folder) {
  const std::string path = WriteProject(folder);
  zendry::Project project;
  const size_t before = mallinfo2().uordblks;
  Check(project.Load(path).Ok(), "loading");
  const size_t used = mallinfo2().uordblks - before;
  size_t tags = 0;
  for (const auto& file : project.Files()) tags += TagCount(file->tags);
  const double load = Shortest([&] {
    project.Clear();
    Check(project.Load(path).Ok(), "loading");
  });
  std::printf("project of %d files, %d lines: load %.3f s, %zu tags, %zu bytes for each\n", cFiles,
              cFiles * cLines, load / 1000, tags, used / std::max<size_t>(tags, 1));
}

double MeasureEdited() {
  zendry::Project project;
  MemoryEditor editor;
  editor.path = "/p/edited.cpp";
  editor.text = SourceText(1, cEditedLines);
  zendry::TagData module;
  module.fileName = editor.path;
  const double parse = Shortest([&] { project.parseModule(module, &editor); });
  const size_t tags = TagCount(module);
  Check(tags > 500, "parsing");
  std::printf("edited file of %d lines, %zu bytes, %zu tags: %.2f ms, limit %.0f ms\n",
              cEditedLines, editor.text.size(), tags, parse, cLimit);
  return parse;
}

void MeasureReference(const std::string& definition) {
  size_t tags = 0;
  const double load = Shortest([&] {
    zendry::TagData library;
    library.loadReference(definition);
    tags = TagCount(library);
  });
  std::printf("%s: %zu tags in %.2f ms\n", definition.c_str(), tags, load);
}

}  // namespace

int main(int argc, char* argv[]) {
  std::string folder = (std::filesystem::temp_directory_path() / "tag-bench-XXXXXX").string();
  Check(mkdtemp(folder.data()) != nullptr, "making a folder");
  MeasureLoad(folder);
  std::filesystem::remove_all(folder);
  const double parse = MeasureEdited();
  if (argc > 1) MeasureReference(argv[1]);
  return parse > cLimit ? 1 : 0;
}
