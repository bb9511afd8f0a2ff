#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "TempFolder.h"
#include "ZendryMakeRun.h"
#include "tags/LibraryNames.h"
#include "tags/TagData.h"

// The reference libraries that the build makes: what the store has of common classes, beside a list
// of their members that the compiler confirms.

namespace {

namespace fs = std::filesystem;
using zendry::TagClass;
using zendry::TagData;

constexpr double cLeastShare = 0.9;
constexpr int cDeepestBase = 17;

struct Row {
  std::string name;  // in the store
  std::string type;  // in a program
  std::string header;
  std::vector<std::string> members;
};

std::string Trimmed(const std::string& text) {
  const size_t start = text.find_first_not_of(' ');
  return start == std::string::npos ? ""
                                    : text.substr(start, text.find_last_not_of(' ') - start + 1);
}

std::vector<Row> Rows() {
  std::vector<Row> rows;
  std::ifstream list(REFERENCE_DATA "/standard-members.txt");
  for (std::string line; std::getline(list, line);) {
    if (line.empty() || line.front() == '#') continue;
    std::istringstream fields(line);
    std::string name, type, header, member;
    std::getline(fields, name, '|');
    std::getline(fields, type, '|');
    std::getline(fields, header, '|');
    Row row{Trimmed(name), Trimmed(type), Trimmed(header), {}};
    while (fields >> member) row.members.push_back(member);
    rows.push_back(std::move(row));
  }
  return rows;
}

// A class's members with those of its bases, as completion lists them.
void CollectMembers(TagData& data, const std::string& name, int depth,
                    std::set<std::string>& names) {
  const TagClass* found = depth < cDeepestBase ? data.findClass(name) : nullptr;
  if (!found) return;
  for (const auto& member : found->members) names.insert(member.name);
  std::istringstream bases(found->inheritance);
  for (std::string base; std::getline(bases, base, ',');)
    CollectMembers(data, base, depth + 1, names);
}

struct Share {
  size_t found = 0;
  std::string missing;
};

Share ShareOf(TagData& data, const Row& row) {
  std::set<std::string> names;
  CollectMembers(data, row.name, 0, names);
  Share share;
  for (const std::string& member : row.members) {
    if (names.contains(member))
      ++share.found;
    else
      share.missing += " " + member;
  }
  return share;
}

void ExpectShares(TagData& data) {
  for (const Row& row : Rows()) {
    EXPECT_NE(data.findClass(row.name), nullptr) << row.name;
    const Share share = ShareOf(data, row);
    EXPECT_GE(static_cast<double>(share.found),
              cLeastShare * static_cast<double>(row.members.size()))
        << row.name << " misses" << share.missing;
  }
}

struct Function {
  std::string space;  // empty for those outside of all namespaces
  std::string name;
};

std::vector<Function> Functions() {
  std::vector<Function> functions;
  std::ifstream list(REFERENCE_DATA "/standard-functions.txt");
  for (std::string line; std::getline(list, line);) {
    if (line.empty() || line.front() == '#') continue;
    std::istringstream fields(line);
    std::string space, bar;
    fields >> space >> bar;
    for (std::string name; fields >> name;) functions.push_back({space == "-" ? "" : space, name});
  }
  return functions;
}

// The definitions without their compiled tags.
std::string CopyDefinitions(const test::TempFolder& folder) {
  fs::copy(REFERENCES, folder.Path("Defs"), fs::copy_options::recursive);
  for (const char* name : {"stlref.tgx", "mavroref.tgx"}) fs::remove(folder.Path("Defs/") + name);
  return folder.Path("Defs/");
}

// Names a member of a class and of a second base alike: naming it is an error then.
std::string ProbeSource() {
  std::set<std::string> headers = {"type_traits"}, names;
  for (const Row& row : Rows()) {
    headers.insert(row.header);
    names.insert(row.members.begin(), row.members.end());
  }
  std::string text;
  for (const std::string& header : headers) text += "#include <" + header + ">\n";
  for (const std::string& name : names)
    text += "struct F_" + name + " { int " + name + "; };\ntemplate <class T> struct B_" + name +
            " : T, F_" + name + " {};\ntemplate <class T, class = void> constexpr bool has_" +
            name + " = true;\ntemplate <class T> constexpr bool has_" + name +
            "<T, std::void_t<decltype(&B_" + name + "<T>::" + name + ")>> = false;\n";
  for (const Row& row : Rows())
    for (const std::string& member : row.members)
      text += "static_assert(has_" + member + "<" + row.type + ">, \"" + row.name + "::" + member +
              "\");\n";
  return text + "struct Empty {};\nstatic_assert(!has_size<Empty>);\n";
}

TEST(Reference, ListOfCommonClasses_HoldsSixtyAndMore) {
  EXPECT_GE(Rows().size(), 60u);
}

TEST(Reference, ListedMembers_AreConfirmedByTheCompiler) {
  const test::TempFolder folder;
  const std::string source = folder.Write("probe.cpp", ProbeSource());
  const test::Ended ended =
      test::Program({"/usr/bin/g++", "-std=c++20", "-w", "-fsyntax-only", source}, folder.Path())
          .Wait();
  EXPECT_EQ(ended.status, 0) << ended.err.substr(0, 3000);
}

TEST(Reference, CompiledTags_AreReadAndHoldOverNinetyPercentOfEachClass) {
  TagData data;
  data.loadReference(REFERENCES "/stlref.tgd");
  EXPECT_TRUE(data.globals.empty());
  EXPECT_GT(data.headers.size(), 40u);
  ExpectShares(data);
}

TEST(Reference, Definition_ParsedAgain_HoldsOverNinetyPercentOfEachClass) {
  const test::TempFolder folder;
  TagData data;
  data.loadReference(CopyDefinitions(folder) + "stlref.tgd");
  ExpectShares(data);
}

TEST(Reference, Definitions_WorkWhereTheyAreMoved) {
  const test::TempFolder folder;
  fs::copy(REFERENCES, folder.Path("moved"), fs::copy_options::recursive);
  TagData data;
  data.loadReference(folder.Path("moved/stlref.tgd"));
  ASSERT_FALSE(data.headers.empty());
  EXPECT_TRUE(data.headers[0].path.starts_with(folder.Path("moved/"))) << data.headers[0].path;
  EXPECT_TRUE(fs::exists(data.headers[0].path));
}

TEST(Reference, Definition_NamesItsCompiler) {
  std::ifstream file(REFERENCES "/stlref.tgd");
  std::string line;
  std::getline(file, line);
  EXPECT_TRUE(line.starts_with("<library n=\"libstdc++ ")) << line;
}

TEST(Reference, ListedFunctions_AreConfirmedByTheCompiler) {
  std::string text;
  for (const char* name : {"c.c", "stl.cpp"}) {
    std::ifstream source(std::string(REFERENCE_SOURCES "/") + name);
    for (std::string line; std::getline(source, line);)
      if (line.starts_with("#") && !line.ends_with("include <stdatomic.h>")) text += line + "\n";
  }
  for (const Function& function : Functions())
    text += std::string("namespace from_") + (function.space.empty() ? "c" : "std") + " { using " +
            function.space + "::" + function.name + "; }\n";
  const test::TempFolder folder;
  const std::string source = folder.Write("probe.cpp", text);
  const test::Ended ended =
      test::Program({"/usr/bin/g++", "-std=c++20", "-w", "-fsyntax-only", source}, folder.Path())
          .Wait();
  EXPECT_EQ(ended.status, 0) << ended.err.substr(0, 3000);
}

TEST(Reference, ListedFunctions_AreAmongTheNames) {
  TagData data;
  data.loadReference(REFERENCES "/cref.tgd");
  data.loadReference(REFERENCES "/stlref.tgd");
  size_t count = 0;
  for (const Function& function : Functions()) {
    const std::string space = function.space.substr(function.space.rfind(':') + 1);
    std::vector<zendry::TagItem*> found;
    for (const auto& names : data.names) names->Find(found, space, function.name);
    const bool hasParameters = std::any_of(found.begin(), found.end(), [](const auto* item) {
      return item->signature.starts_with("(");
    });
    EXPECT_TRUE(hasParameters) << function.space << "::" << function.name;
    ++count;
  }
  EXPECT_GE(count, 250u);
  for (const char* name : {"tm", "stat", "timespec", "sockaddr_in", "pollfd", "dirent"})
    EXPECT_NE(data.findClass(name), nullptr) << name;
}

TEST(Reference, BothLibraries_StandInOneStore) {
  TagData data;
  data.loadReference(REFERENCES "/stlref.tgd");
  data.loadReference(REFERENCES "/mavroref.tgd");
  EXPECT_NE(data.findClass("vector"), nullptr);
  for (const char* name : {"object", "Form", "Button", "Edit", "ListView", "Action"})
    EXPECT_NE(data.findClass(name), nullptr) << name;
}

TEST(Reference, Digests_StayWithinTheParsersLimits) {
  for (const auto& entry : fs::recursive_directory_iterator(REFERENCES)) {
    if (!entry.is_regular_file() || entry.path().extension() == ".tgx") continue;
    std::ifstream file(entry.path());
    for (std::string line; std::getline(file, line);) EXPECT_LT(line.size(), 1024u) << entry.path();
  }
}

// Where ZENDRY_COVERAGE names a file, the table of docs/tags-coverage.md goes there.
TEST(Reference, Table_IsWrittenWhereItIsAskedFor) {
  const char* path = std::getenv("ZENDRY_COVERAGE");
  if (!path) GTEST_SKIP() << "nobody asked";
  TagData data;
  data.loadReference(REFERENCES "/stlref.tgd");
  std::ofstream table(path);
  table << "| class | members | in the store | share | missing |\n|---|---|---|---|---|\n";
  for (const Row& row : Rows()) {
    const Share share = ShareOf(data, row);
    const size_t count = row.members.size();
    table << "| `" << row.name << "` | " << count << " | " << share.found << " | "
          << (count ? share.found * 100 / count : 100) << " % |" << share.missing << " |\n";
  }
  EXPECT_TRUE(table.flush());
}

}  // namespace
