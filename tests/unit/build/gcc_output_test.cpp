#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <sstream>

#include "Golden.h"
#include "build/OutputParser.h"

namespace zendry {
namespace {

constexpr const char* cFolder = TEST_DATA "/gcc";

// Recordings of the real tools, "NAME.KIND.gcc-VERSION.txt".
std::vector<std::string> Recordings() {
  std::vector<std::string> paths;
  for (const auto& entry : std::filesystem::directory_iterator(cFolder))
    if (entry.path().extension() == ".txt") paths.push_back(entry.path().string());
  std::sort(paths.begin(), paths.end());
  return paths;
}

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

LineMeaning Read(CompileLines& state, const std::string& path, const std::string& line) {
  if (path.find(".link.") != std::string::npos) return ReadLinkLine(line);
  if (path.find(".archive.") != std::string::npos) return ReadArchiveLine(line);
  return ReadCompileLine(state, line);
}

// The rows that the lines give, one a line as "file|line|text", and the counts.
std::string RowsOf(const std::string& path, const std::vector<std::string>& lines) {
  CompileLines state;
  std::vector<std::string> rows;
  int errors = 0, warnings = 0;
  for (const std::string& line : lines) {
    const LineMeaning meaning = Read(state, path, line);
    errors += meaning.severity == LineMeaning::cError;
    warnings += meaning.severity == LineMeaning::cWarning;
    const ErrorRow& row = meaning.row;
    if (meaning.kind == LineMeaning::cNewRow)
      rows.push_back(row.file + "|" + std::to_string(row.line) + "|" + row.text);
    if (meaning.kind == LineMeaning::cAppendToLastRow && !rows.empty()) rows.back() += row.text;
  }
  std::string text;
  for (const std::string& row : rows) text += row + "\n";
  return text + "errors " + std::to_string(errors) + ", warnings " + std::to_string(warnings) +
         "\n";
}

class GccOutput : public testing::TestWithParam<std::string> {};

TEST_P(GccOutput, GivesItsRows) {
  const std::string& path = GetParam();
  EXPECT_TRUE(test::MatchesGolden(path + ".rows", RowsOf(path, Lines(test::ReadData(path)))));
}

// Whatever a broken pipe leaves of a line must do no harm.
TEST_P(GccOutput, CutAtEachByte_IsRead) {
  const std::string text = test::ReadData(GetParam());
  for (size_t length = 0; length < std::min<size_t>(text.size(), 2000); ++length)
    EXPECT_FALSE(RowsOf(GetParam(), Lines(text.substr(0, length))).empty());
}

std::string TestName(const testing::TestParamInfo<std::string>& info) {
  std::string name = std::filesystem::path(info.param).stem().string();
  for (char& c : name)
    if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
  return name;
}

INSTANTIATE_TEST_SUITE_P(Recorded, GccOutput, testing::ValuesIn(Recordings()), TestName);

}  // namespace
}  // namespace zendry
