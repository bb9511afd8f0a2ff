#include "build/BuildRecords.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <optional>
#include <set>
#include <utility>

#include "FileText.h"
#include "base/ParseInt.h"
#include "base/Paths.h"

namespace zendry {

namespace {

constexpr std::string_view cFirstLine = "zendry-build 1\n";
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
  if (text.find('\\') == text.npos) return std::string(text);
  std::string plain;
  for (size_t i = 0; i < text.size(); ++i) {
    const bool isEscape = text[i] == '\\' && i + 1 < text.size();
    if (isEscape) ++i;
    plain += isEscape && text[i] == 'n' ? '\n' : text[i];
  }
  return plain;
}

std::optional<InputFile> ReadInput(std::string_view text) {
  const auto time = TakeNumber<FileTimes::Time>(text);
  if (!time || !text.starts_with(' ')) return {};
  return InputFile{PlainText(text.substr(1)), *time};
}

std::string InputLine(const InputFile& input) {
  return Line('@', std::to_string(input.time) + " " + input.path);
}

std::string RecordLines(const std::string& product, const ProductRecord& record) {
  std::string inputs;
  for (const uint32_t input : record.inputs) inputs += std::to_string(input) + " ";
  return Line('+', product) + Line('$', record.command) + Line('<', inputs) + Line('=', "");
}

// Numbers, each with a blank after it, of inputs that are there.
bool ReadNumbers(std::string_view text, size_t inputCount, std::vector<uint32_t>& numbers) {
  while (!text.empty()) {
    const auto number = TakeNumber<uint32_t>(text);
    if (!number || *number >= inputCount || !text.starts_with(' ')) return false;
    numbers.push_back(*number);
    text.remove_prefix(1);
  }
  return true;
}

// Takes the lines of a journal one by one.
class JournalReader {
 public:
  // False for a line that can't be here.
  bool Take(char kind, std::string_view rest) {
    switch (kind) {
      case '@':
        return TakeInput(rest);
      case '-':
        journal.records.erase(PlainText(rest));
        open.reset();
        return true;
      case '+':
        product = PlainText(rest);
        open.emplace();
        return true;
      case '$':
        if (open) open->command = PlainText(rest);
        return open.has_value();
      case '<':
        return open && ReadNumbers(rest, journal.inputs.size(), open->inputs);
      case '=':
        return Close();
      default:
        return false;
    }
  }
  bool IsBetweenRecords() const { return !open; }

  BuildJournal journal;

 private:
  bool TakeInput(std::string_view text) {
    std::optional<InputFile> input = ReadInput(text);
    if (input) journal.inputs.push_back(std::move(*input));
    return input.has_value();
  }
  bool Close() {
    if (!open) return false;
    journal.records[product] = std::move(*open);
    ++journal.entries;
    open.reset();
    return true;
  }

  std::string product;
  std::optional<ProductRecord> open;  // the record whose lines come now
};

// Only compilers search for what they read.
bool IsCompiled(const std::string& product) {
  return product.ends_with(".o");
}

// With its "/"; "" for the current folder.
std::string_view FolderIn(std::string_view path) {
  return path.substr(0, path.rfind('/') + 1);
}

bool IsSearchedFor(const InputFile& input) {
  return input.time != InputFile::cNotRead && FileKind(input.path) != cCppSource &&
         FileKind(input.path) != cCSource;
}

// The rivals of the headers among the inputs that aren't inputs themselves. The folders are those
// of the command line, and those of the headers and the source, because a quoted name is first
// looked for beside its includer.
std::vector<std::string> RivalsOf(HeaderRivals& rivals, const std::string& product,
                                  const std::string& command,
                                  const std::vector<InputFile>& inputs) {
  std::vector<std::string> found;
  if (!IsCompiled(product)) return found;
  std::set<uint32_t> folders;
  std::set<std::string> known;
  for (const uint32_t folder : rivals.SearchedBy(command)) folders.insert(folder);
  for (const InputFile& input : inputs) {
    known.insert(rivals.Plain(input.path));
    if (input.time != InputFile::cNotRead) folders.insert(rivals.NumberOf(FolderIn(input.path)));
  }
  for (const InputFile& input : inputs) {
    if (!IsSearchedFor(input)) continue;
    for (const HeaderRivals::Rival& rival : rivals.Of(input.path))
      if (folders.contains(rival.folder) && known.insert(rival.path).second)
        found.push_back(rival.path);
  }
  return found;
}

}  // namespace

BuildJournal ReadJournal(std::string_view text) {
  JournalReader reader;
  if (!text.starts_with(cFirstLine)) return {};
  text.remove_prefix(cFirstLine.size());
  bool isGood = true;
  while (isGood && !text.empty()) {
    const size_t end = text.find('\n');
    isGood = end != text.npos && end >= 2 && text[1] == ' ' &&
             reader.Take(text[0], text.substr(2, end - 2));
    text.remove_prefix(isGood ? end + 1 : 0);
  }
  reader.journal.isWhole = isGood && reader.IsBetweenRecords();
  return std::move(reader.journal);
}

std::string WriteJournal(const BuildJournal& journal) {
  std::string inputs, records;
  std::map<uint32_t, uint32_t> numbers;
  for (const auto& [product, record] : journal.records) {
    ProductRecord renumbered{record.command, {}};
    for (const uint32_t old : record.inputs) {
      const auto [number, isNew] = numbers.emplace(old, numbers.size());
      if (isNew) inputs += InputLine(journal.inputs[old]);
      renumbered.inputs.push_back(number->second);
    }
    records += RecordLines(product, renumbered);
  }
  return std::string(cFirstLine) + inputs + records;
}

void BuildRecords::Open(const std::string& folder) {
  path = folder.empty() ? cRecordsName : folder + "/" + cRecordsName;
  states.clear();
  if (!rivals.IsCurrent()) {
    rivals = {};
    hasRivals.clear();
  }
  if (const DiskStamp onDisk = ReadDiskStamp(path); !onDisk.exists || onDisk != stamp) {
    stamp = onDisk;
    Read();
  }
  const bool isLong =
      size > cWorthRewriting && journal.entries > cMostEntries * (journal.records.size() + 1);
  if (stamp.exists && (!journal.isWhole || isLong)) Rewrite();
}

void BuildRecords::Read() {
  const mavro::FileText file = mavro::ReadFileText(path);
  if (!file.Ok()) stamp = {};
  journal = ReadJournal(file.text);
  size = file.text.size();
  numbers.clear();
  hasRivals.clear();
}

const ProductRecord* BuildRecords::Find(const std::string& product) const {
  const auto found = journal.records.find(product);
  return found == journal.records.end() ? nullptr : &found->second;
}

bool BuildRecords::HasAllReadFiles(const std::string& product) const {
  const ProductRecord* record = Find(product);
  return record && std::ranges::any_of(record->inputs, [this](uint32_t input) {
           return journal.inputs[input] == cAllReadFiles;
         });
}

void BuildRecords::Drop(const std::string& product) {
  hasRivals.clear();
  journal.records.erase(product);
  Append(Line('-', product));
}

void BuildRecords::Add(const std::string& product, const std::string& command,
                       const std::vector<InputFile>& inputs) {
  hasRivals.clear();
  ProductRecord record{command, {}};
  std::string text;
  for (const InputFile& input : inputs) record.inputs.push_back(NumberOf(input, text));
  for (const std::string& rival : RivalsOf(rivals, product, command, inputs))
    record.inputs.push_back(NumberOf({rival, InputFile::cNotRead}, text));
  Append(text + RecordLines(product, record));
  journal.records[product] = std::move(record);
}

// The number of an input; a new one gets its line in `text`.
uint32_t BuildRecords::NumberOf(const InputFile& input, std::string& text) {
  if (numbers.empty())
    for (const InputFile& known : journal.inputs)
      numbers.emplace(std::pair(known.path, known.time), numbers.size());
  const auto [number, isNew] =
      numbers.emplace(std::pair(input.path, input.time), journal.inputs.size());
  if (isNew) {
    journal.inputs.push_back(input);
    text += InputLine(input);
  }
  return number->second;
}

// In one write. Nothing is synced: after a crash of the machine the products may be as old as the
// records. If another program builds into the folder at the same time, neither knows what the other
// makes of its products.
void BuildRecords::Append(const std::string& text) {
  stamp = {};
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_NOFOLLOW | O_CLOEXEC, 0666);
  if (file < 0) return;
  if (lseek(file, 0, SEEK_END) != static_cast<off_t>(size)) {
    close(file);
    return Forget();
  }
  const std::string bytes = size == 0 ? std::string(cFirstLine) + text : text;
  // A part that could be written is a cut end, which the next Open takes off.
  const ssize_t written = write(file, bytes.data(), bytes.size());
  if (written > 0) size += static_cast<size_t>(written);
  close(file);
  if (written == static_cast<ssize_t>(bytes.size())) NoteStamp();
}

// What is known is what the file says, unless somebody else has written to it by now.
void BuildRecords::NoteStamp() {
  stamp = ReadDiskStamp(path);
  if (stamp.size != static_cast<int64_t>(size)) stamp = {};
}

void BuildRecords::Forget() {
  journal = {};
  numbers.clear();
  states.clear();
  Rewrite();
}

void BuildRecords::Rewrite() {
  const std::string text = WriteJournal(journal);
  journal = ReadJournal(text);
  numbers.clear();
  states.clear();
  hasRivals.clear();
  size = mavro::SaveFileText(path, text).Ok() ? text.size() : 0;
  if (size == 0) unlink(path.c_str());
  NoteStamp();
}

BuildRecords::InputState BuildRecords::StateOf(uint32_t input, FileTimes& times) {
  if (states.size() < journal.inputs.size()) states.resize(journal.inputs.size());
  InputState& state = states[input];
  if (state != InputState::cUnknown) return state;
  if (journal.inputs[input].time == InputFile::cNotRead) return state = InputState::cSame;
  const std::optional<FileTimes::Time> now = times.Of(journal.inputs[input].path);
  return state = !now                                 ? InputState::cGone
                 : *now == journal.inputs[input].time ? InputState::cSame
                                                      : InputState::cChanged;
}

Staleness BuildRecords::Check(FileTimes& times, const std::string& product,
                              const std::string& command) {
  const ProductRecord* record = Find(product);
  if (!record) return {true, "it is not known how " + product + " was made"};
  if (record->command != command) return {true, "the command line of " + product + " has changed"};
  for (const uint32_t input : record->inputs) {
    const InputState state = StateOf(input, times);
    if (state == InputState::cGone) return {true, journal.inputs[input].path + " is gone"};
    if (state == InputState::cChanged)
      return {true, journal.inputs[input].path + " has changed since it was read"};
  }
  if (const std::string rival = NewRival(product, *record); !rival.empty())
    return {true, rival + " may be read now instead of another header"};
  return {};
}

void BuildRecords::LookForRivals() {
  for (const auto& [product, record] : journal.records)
    if (IsCompiled(product)) rivals.SearchedBy(record.command);
  for (const InputFile& input : journal.inputs)
    if (input.time != InputFile::cNotRead) rivals.NumberOf(FolderIn(input.path));
  for (const InputFile& input : journal.inputs)
    hasRivals.push_back(IsSearchedFor(input) && !rivals.Of(input.path).empty());
}

// Most headers have no rival in any folder, so that most records are passed at once.
std::string BuildRecords::NewRival(const std::string& product, const ProductRecord& record) {
  if (!IsCompiled(product)) return "";
  if (hasRivals.size() < journal.inputs.size()) LookForRivals();
  if (std::ranges::none_of(record.inputs, [this](uint32_t input) { return hasRivals[input]; }))
    return "";
  std::vector<InputFile> inputs;
  for (const uint32_t input : record.inputs) inputs.push_back(journal.inputs[input]);
  const std::vector<std::string> found = RivalsOf(rivals, product, record.command, inputs);
  return found.empty() ? "" : found.front();
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
