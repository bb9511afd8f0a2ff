#include "build/BuildRecords.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

#include "FileText.h"

namespace zendry {

namespace {

constexpr std::string_view cHeader = "zendry-build 1\n";
constexpr size_t cWorthRewriting = 1 << 16;  // bytes; smaller files are left as they grow
constexpr size_t cMostEntries = 4;           // for each record in force

// A line of the file is a letter, a blank and a text without newlines.
std::string Line(char kind, std::string_view text) {
  std::string line = {kind, ' '};
  for (const char c : text) {
    if (c == '\\')
      line += "\\\\";
    else if (c == '\n')
      line += "\\n";
    else
      line += c;
  }
  return line + '\n';
}

std::string PlainText(std::string_view text) {
  std::string plain;
  for (size_t i = 0; i < text.size(); ++i) {
    const bool isEscape = text[i] == '\\' && i + 1 < text.size();
    if (isEscape) ++i;
    plain += isEscape && text[i] == 'n' ? '\n' : text[i];
  }
  return plain;
}

std::optional<InputFile> ReadInput(std::string_view text) {
  InputFile input;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), input.time);
  const size_t digits = static_cast<size_t>(end - text.data());
  if (error != std::errc() || digits >= text.size() || text[digits] != ' ') return {};
  input.path = PlainText(text.substr(digits + 1));
  return input;
}

std::string DropText(const std::string& product) {
  return Line('-', product);
}

}  // namespace

BuildRecords::Journal BuildRecords::Read(std::string_view text) {
  Journal journal;
  if (!text.starts_with(cHeader)) return journal;
  text.remove_prefix(cHeader.size());
  std::string product;
  std::optional<ProductRecord> open;  // the record whose lines come now
  while (!text.empty()) {
    const size_t end = text.find('\n');
    if (end == text.npos || end < 2 || text[1] != ' ') return journal;
    const char kind = text[0];
    const std::string_view rest = text.substr(2, end - 2);
    text.remove_prefix(end + 1);
    if (kind == '-') {
      journal.records.erase(PlainText(rest));
      open.reset();
    } else if (kind == '+') {
      product = PlainText(rest);
      open.emplace();
    } else if (kind == '$' && open) {
      open->command = PlainText(rest);
    } else if (kind == '<' && open) {
      std::optional<InputFile> input = ReadInput(rest);
      if (!input) return journal;
      open->inputs.push_back(std::move(*input));
    } else if (kind == '=' && open) {
      journal.records[product] = std::move(*open);
      ++journal.entries;
      open.reset();
    } else {
      return journal;
    }
  }
  journal.isWhole = !open;
  return journal;
}

std::string BuildRecords::Write(const std::string& product, const ProductRecord& record) {
  std::string text = Line('+', product) + Line('$', record.command);
  for (const InputFile& input : record.inputs)
    text += Line('<', std::to_string(input.time) + " " + input.path);
  return text + Line('=', "");
}

void BuildRecords::Open(const std::string& folder) {
  path = folder.empty() ? cRecordsName : folder + "/" + cRecordsName;
  const mavro::FileText file = mavro::ReadFileText(path);
  Journal journal = Read(file.text);
  records = std::move(journal.records);
  const bool isLong =
      file.text.size() > cWorthRewriting && journal.entries > cMostEntries * (records.size() + 1);
  if (file.Ok() && (!journal.isWhole || isLong)) Rewrite();
}

const ProductRecord* BuildRecords::Find(const std::string& product) const {
  const auto found = records.find(product);
  return found == records.end() ? nullptr : &found->second;
}

void BuildRecords::Drop(const std::string& product) {
  records.erase(product);
  Append(DropText(product));
}

void BuildRecords::Add(const std::string& product, ProductRecord record) {
  Append(Write(product, record));
  records[product] = std::move(record);
}

// In one write, so that two programs that build into one folder don't mix their lines. Nothing is
// synced: after a crash of the machine the products may be as old as the records.
void BuildRecords::Append(const std::string& text) {
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_NOFOLLOW | O_CLOEXEC, 0666);
  if (file < 0) return;
  const bool isNew = lseek(file, 0, SEEK_END) == 0;
  const std::string bytes = isNew ? std::string(cHeader) + text : text;
  // A part that could be written is a cut end, which the next Open takes off.
  [[maybe_unused]] const ssize_t written = write(file, bytes.data(), bytes.size());
  close(file);
}

void BuildRecords::Rewrite() {
  std::string text(cHeader);
  for (const auto& [product, record] : records) text += Write(product, record);
  if (!mavro::SaveFileText(path, text).Ok()) unlink(path.c_str());
}

Staleness BuildRecords::Check(FileTimes& times, const std::string& product,
                              const std::string& command) const {
  const ProductRecord* record = Find(product);
  if (!record) return {true, "it is not known how " + product + " was made"};
  if (record->command != command) return {true, "the command line of " + product + " has changed"};
  for (const InputFile& input : record->inputs) {
    const std::optional<FileTimes::Time> now = times.Of(input.path);
    if (!now) return {true, input.path + " is gone"};
    if (*now != input.time) return {true, input.path + " has changed since it was read"};
  }
  return {};
}

// A blank, "#" or ":" of a name has a backslash before it, and backslashes before that are doubled;
// other backslashes stand for themselves. "$" is doubled. A backslash at the end of a line joins it
// to the next.
std::vector<std::string> ReadMakeRule(std::string_view rule) {
  std::vector<std::string> files;
  const size_t targetEnd = rule.find(": ");
  if (targetEnd == rule.npos) return files;
  std::string file;
  const auto finish = [&] {
    if (!file.empty()) files.push_back(std::exchange(file, ""));
  };
  for (size_t i = targetEnd + 1; i < rule.size(); ++i) {
    const size_t afterSlashes = std::min(rule.find_first_not_of('\\', i), rule.size());
    const size_t slashes = afterSlashes - i;
    const char next = afterSlashes < rule.size() ? rule[afterSlashes] : '\n';
    const bool isSpecial = next == ' ' || next == '\t' || next == '#' || next == ':';
    const bool isEscaped = isSpecial && slashes % 2 == 1;
    const bool joinsLines = next == '\n' && slashes > 0;
    file.append(isSpecial ? slashes / 2 : slashes - (joinsLines ? 1 : 0), '\\');
    i = afterSlashes;
    if (!isEscaped && (next == ' ' || next == '\t' || next == '\n')) {
      finish();
      continue;
    }
    if (next == '$' && i + 1 < rule.size() && rule[i + 1] == '$') ++i;
    file += next;
  }
  finish();
  return files;
}

}  // namespace zendry
