#pragma once

#include <algorithm>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

#include "base/FileReader.h"
#include "base/Shell.h"
#include "tags/TagData.h"
#include "tags/TagLine.h"
#include "tags/TagParser.h"

namespace test {

// Gives the parser a text that lies in memory.
class TextReader : public zendry::FileReader {
 public:
  explicit TextReader(std::string_view theText) : text(theText) {}
  ~TextReader() override { stream = nullptr; }

  int getc() override { return at < text.size() ? static_cast<unsigned char>(text[at++]) : -1; }
  void ungetc(int) override { --at; }
  mavro::FileResult open(const char*) override {
    at = 0;
    stream = this;
    return {};
  }
  void close() override { stream = nullptr; }
  size_t read(char* buffer, size_t size) override {
    const size_t count = std::min(std::min(size, text.size() - at), most);
    std::memcpy(buffer, text.data() + at, count);
    at += count;
    return count;
  }

  size_t most = 1 << 20;  // what is given at once

 private:
  std::string_view text;
  size_t at = 0;
};

// Keeps what the parser logs: texts with their details, a line each.
class TagLog : public zendry::OutputShell {
 public:
  TagLog() { zendry::theTagParser.shell = this; }
  ~TagLog() override { zendry::theTagParser.shell = nullptr; }
  void AppendOutput(std::string_view entry) override {
    const std::string_view lead = "\r\n------ ";
    text += entry.substr(lead.size(), entry.size() - lead.size() - 2);
    text += '\n';
  }
  void ClearOutput() override { text.clear(); }

  std::string text;
};

// The results of parsing a text.
struct TagRun {
  zendry::TagData store;
  std::string lines;  // a line of a tags file for each tag
  std::string log;
};

struct TagRunOptions {
  std::optional<zendry::Language> language;
  bool locals = false;
  size_t mostAtOnce = 1 << 20;
};

// Parses what the reader gives as a file of that name.
inline TagRun ParseTagsOf(zendry::FileReader& reader, const std::string& file,
                          const TagRunOptions& options = {}) {
  zendry::TagParser& parser = zendry::theTagParser;
  TagRun run;
  TagLog log;
  bool isHeader = false;
  const auto named = zendry::TagParser::languageOf(file, isHeader);
  const zendry::Language language =
      options.language.value_or(named.value_or(zendry::Language::cCpp));
  parser.language = options.language;
  parser.found = [&](const zendry::TagFacts& facts) {
    run.lines += zendry::TagLine(facts, "-", language) + '\n';
  };
  run.store.fileName = file;
  parser.parseBuffer(run.store, &reader, options.locals);
  parser.found = nullptr;
  parser.language = std::nullopt;
  run.log = log.text;
  return run;
}

// Parses `text` as a file of that name.
//
//   EXPECT_EQ(test::ParseTags("int a;").lines, "a\t-\t1;\"\tv\tline:1\ttyperef:int\n");
inline TagRun ParseTags(std::string_view text, const std::string& file = "a.cpp",
                        const TagRunOptions& options = {}) {
  TextReader reader(text);
  reader.most = options.mostAtOnce;
  return ParseTagsOf(reader, file, options);
}

// The tags alone: "KIND NAME" for each, with the scope before the name and the type after it,
// as in "v a:int; m S::x:int;".
inline std::string ShortTags(const std::string& lines) {
  std::string result;
  for (size_t at = 0; at < lines.size();) {
    const std::string line = lines.substr(at, lines.find('\n', at) - at);
    at += line.size() + 1;
    const size_t kind = line.find(";\"\t") + 3;
    std::string scope, type;
    for (size_t tab = line.find('\t', kind); tab != std::string::npos;) {
      const size_t next = line.find('\t', tab + 1);
      const std::string field = line.substr(tab + 1, next - tab - 1);
      const std::string key = field.substr(0, field.find(':'));
      const std::string value = field.substr(key.size() + 1);
      if (key == "typeref") type = ":" + value;
      if (key == "class" || key == "struct" || key == "union" || key == "enum" ||
          key == "namespace" || key == "interface" || key == "program")
        scope = value + "::";
      tab = next;
    }
    if (!result.empty()) result += ' ';
    result += line.substr(kind, 1) + ' ' + scope + line.substr(0, line.find('\t')) + type + ';';
  }
  return result;
}

// The short form of what a text gives.
inline std::string TagsOf(std::string_view text, const std::string& file = "a.cpp",
                          const TagRunOptions& options = {}) {
  return ShortTags(ParseTags(text, file, options).lines);
}

}  // namespace test
