#include "search/ReplaceJournal.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <tuple>

#include "FileText.h"
#include "base/TextDigest.h"

namespace zendry {

namespace {

constexpr std::string_view cHead = "zendry-replace 1\n";
constexpr std::string_view cTail = "end\n";

// Takes a number and the character after it.
std::optional<uint64_t> TakeField(std::string_view& rest, char after) {
  uint64_t number = 0;
  const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), number);
  if (error != std::errc() || end == rest.data() + rest.size() || *end != after) return {};
  rest.remove_prefix(static_cast<size_t>(end - rest.data()) + 1);
  return number;
}

std::optional<std::string> TakeBytes(std::string_view& rest, uint64_t length) {
  if (length > rest.size()) return {};
  std::string taken(rest.substr(0, length));
  rest.remove_prefix(length);
  return taken;
}

enum class Restored { cDone, cNotNeeded, cRefused, cFailed };

Restored Restore(const ReplacedFile& file, OpenTexts& open, std::string& error) {
  if (OpenText* text = open.At(file.path)) {
    const std::optional<std::string> now = text->Bytes();
    if (now && *now == file.oldBytes) return Restored::cNotNeeded;
    if (!now || DigestOf(*now) != file.newDigest) return Restored::cRefused;
    error = text->WhyFixed();
    if (!error.empty()) return Restored::cFailed;
    text->TakeBytes(file.oldBytes);
    return Restored::cDone;
  }
  const mavro::FileText now = mavro::ReadFileText(file.path);
  if (!now.Ok() && now.isMissing) return Restored::cRefused;
  if (now.Ok() && now.text == file.oldBytes) return Restored::cNotNeeded;
  if (now.Ok() && DigestOf(now.text) != file.newDigest) return Restored::cRefused;
  error = now.Ok() ? mavro::SaveFileText(file.path, file.oldBytes).error : now.error;
  return error.empty() ? Restored::cDone : Restored::cFailed;
}

}  // namespace

std::string WriteReplaceJournal(const std::vector<ReplacedFile>& files) {
  size_t length = 0;
  for (const ReplacedFile& file : files) length += file.path.size() + file.oldBytes.size() + 64;
  std::string journal(cHead);
  journal.reserve(length + cHead.size() + cTail.size());
  for (const ReplacedFile& file : files) {
    journal += std::to_string(file.path.size()) + " " + std::to_string(file.oldBytes.size()) + " " +
               std::to_string(file.newDigest) + "\n";
    journal.append(file.path).append(file.oldBytes);
  }
  return journal.append(cTail);
}

std::optional<std::vector<ReplacedFile>> ReadReplaceJournal(std::string_view bytes) {
  if (!bytes.starts_with(cHead)) return {};
  bytes.remove_prefix(cHead.size());
  std::vector<ReplacedFile> files;
  while (bytes != cTail) {
    const auto pathLength = TakeField(bytes, ' ');
    const auto oldLength = pathLength ? TakeField(bytes, ' ') : std::nullopt;
    const auto digest = oldLength ? TakeField(bytes, '\n') : std::nullopt;
    auto path = digest ? TakeBytes(bytes, *pathLength) : std::nullopt;
    auto old = path ? TakeBytes(bytes, *oldLength) : std::nullopt;
    if (!old) return {};
    files.push_back({*std::move(path), *std::move(old), *digest});
  }
  return files;
}

mavro::FileResult ReplaceUndo::Begin(const std::vector<ReplacedFile>& files) {
  mavro::FileResult kept = store.Keep(lastId + 1, WriteReplaceJournal(files));
  if (kept.Ok()) ids.push_back(++lastId);
  return kept;
}

// If the shorter journal can't be written, the longer one does no harm.
void ReplaceUndo::KeepOnly(const std::vector<ReplacedFile>& files) {
  if (ids.empty()) return;
  if (!files.empty()) {
    std::ignore = store.Keep(ids.back(), WriteReplaceJournal(files));
    return;
  }
  store.Drop(ids.back());
  ids.pop_back();
}

// A journal all of whose files are refused again makes place for the one before it.
UndoneReplace ReplaceUndo::Undo(OpenTexts& open) {
  UndoneReplace undone;
  for (size_t i = ids.size(); i-- > 0 && undone.restored == 0;) {
    UndoneReplace one = UndoOne(ids[i], open);
    const bool isDone = one.refused.empty() && one.failed.empty();
    if (isDone) store.Drop(ids[i]);
    undone.wasThereOne = true;
    undone.restored += one.restored;
    std::move(one.refused.begin(), one.refused.end(), std::back_inserter(undone.refused));
    std::move(one.failed.begin(), one.failed.end(), std::back_inserter(undone.failed));
    if (isDone) ids.erase(ids.begin() + static_cast<ptrdiff_t>(i));
    if (isDone) break;
  }
  return undone;
}

UndoneReplace ReplaceUndo::UndoOne(int id, OpenTexts& open) {
  UndoneReplace undone;
  const auto files = ReadReplaceJournal(store.Read(id));
  if (!files) {
    undone.failed.push_back("The old texts can't be read");
    return undone;
  }
  std::vector<ReplacedFile> remaining;
  for (const ReplacedFile& file : *files) {
    std::string error;
    const Restored restored = Restore(file, open, error);
    if (restored == Restored::cDone) ++undone.restored;
    if (restored == Restored::cRefused) undone.refused.push_back(file.path);
    if (restored == Restored::cFailed) undone.failed.push_back(error);
    if (restored == Restored::cRefused || restored == Restored::cFailed) remaining.push_back(file);
  }
  // The journal as it is says the same: files that have their old bytes need nothing.
  if (!remaining.empty() && remaining.size() < files->size())
    std::ignore = store.Keep(id, WriteReplaceJournal(remaining));
  return undone;
}

bool ReplaceUndo::TakeLeft() {
  const std::vector<int> left = store.Left();
  ids.insert(ids.begin(), left.begin(), left.end());
  return !left.empty();
}

void ReplaceUndo::Forget() {
  for (const int id : ids) store.Drop(id);
  ids.clear();
}

}  // namespace zendry
