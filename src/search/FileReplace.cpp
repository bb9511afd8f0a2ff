#include "search/FileReplace.h"

#include <memory>
#include <optional>
#include <utility>

#include "FileText.h"
#include "TextCodec.h"
#include "base/DiskStamp.h"
#include "base/TextDigest.h"

namespace zendry {

namespace {

// A file's bytes as text, and what is needed to make bytes of a text again.
struct DecodedFile {
  explicit DecodedFile(const std::string& bytes) : encoding(mavro::DetectEncoding(bytes)) {
    mavro::TextDecoder decoder(encoding);
    text = decoder.Decode(bytes);
    text += decoder.Finish();
    oddByte = decoder.oddByte;
  }
  std::optional<std::string> BytesOf(std::string_view other) const {
    return mavro::EncodeText(other, encoding, oddByte);
  }

  mavro::TextEncoding encoding;
  std::string text;
  std::string oddByte;
};

std::string Replaced(std::string_view text, const TextScan::Hits& hits, size_t length,
                     std::string_view with) {
  std::string replaced;
  replaced.reserve(text.size() + hits.starts.size() * with.size());
  size_t at = 0;
  for (const size_t start : hits.starts) {
    replaced.append(text, at, start - at).append(with);
    at = start + length;
  }
  return replaced.append(text.substr(at));
}

// What will become of one file.
struct Change {
  std::string newBytes;
  size_t hits = 0, missed = 0;
  std::string error;
};

Change ChangeOf(const std::string& path, const std::string& oldBytes, const TextScan& scan,
                std::string_view with) {
  const DecodedFile decoded(oldBytes);
  const TextScan::Hits hits = scan.AllHits(decoded.text);
  Change change{{}, hits.starts.size(), hits.missed, {}};
  if (change.hits == 0) return change;
  auto bytes = decoded.BytesOf(Replaced(decoded.text, hits, scan.Term().text.size(), with));
  if (bytes)
    change.newBytes = *std::move(bytes);
  else
    change.error = path + ": its encoding has no letter for the new text";
  return change;
}

constexpr size_t cMostKept = 64 << 20;  // bytes of new texts that wait for being written

// The replacement of all files, in its steps.
class Replacement {
 public:
  Replacement(const TextScan& itsScan, std::string_view itsText, OpenTexts& itsOpen,
              ReplaceSum& itsSum)
      : scan(itsScan), with(itsText), open(itsOpen), sum(itsSum) {}

  // Pass 1: notes the old bytes and the digest of the new ones.
  void Plan(const std::string& path) {
    OpenText* text = open.At(path);
    if (text) return PlanOpen(path, *text);
    mavro::FileText old = mavro::ReadFileText(path);
    if (!old.Ok()) return Fail(old.error);
    Change change = ChangeOf(path, old.text, scan, with);
    if (!change.error.empty()) return Fail(change.error);
    if (IsWriteProtected(path)) return Fail(path + ": may not be written");
    if (change.hits == 0) {
      sum.missed += change.missed;
      return;
    }
    const uint64_t digest = DigestOf(change.newBytes);
    Note({path, std::move(old.text), digest}, std::make_unique<Change>(std::move(change)));
  }

  // Pass 2: changes the file at this index, if it still is as planned. True if it has another text
  // now.
  bool CarryOut(size_t index) {
    const ReplacedFile& file = files[index];
    OpenText* text = open.At(file.path);
    if (text) return CarryOutOpen(file, *text);
    const mavro::FileText now = mavro::ReadFileText(file.path);
    if (!now.Ok()) return Fail(now.error), false;
    if (now.text != file.oldBytes)
      return Fail(file.path + ": was changed by another program"), false;
    const std::unique_ptr<Change> kept = std::move(changes[index]);
    const Change change = kept ? std::move(*kept) : ChangeOf(file.path, now.text, scan, with);
    const mavro::FileResult saved = mavro::SaveFileText(file.path, change.newBytes);
    if (!saved.Ok()) return Fail(saved.error), mavro::ReadFileText(file.path).text != now.text;
    Count(change.hits, change.missed);
    return true;
  }

  std::vector<ReplacedFile> files;

 private:
  void Fail(const std::string& why) { sum.failed.push_back(why); }
  void Count(size_t hits, size_t missed) {
    sum.hits += hits;
    sum.missed += missed;
    ++sum.files;
  }

  // New texts beyond the limit are made again when they are written.
  void Note(ReplacedFile file, std::unique_ptr<Change> change) {
    if (change && kept + change->newBytes.size() > cMostKept) change.reset();
    if (change) kept += change->newBytes.size();
    files.push_back(std::move(file));
    changes.push_back(std::move(change));
  }

  std::vector<TextEdit> EditsOf(const TextScan::Hits& hits) const {
    std::vector<TextEdit> edits;
    edits.reserve(hits.starts.size());
    for (const size_t start : hits.starts)
      edits.push_back({start, scan.Term().text.size(), std::string(with)});
    return edits;
  }

  // The new bytes are those that the edits will make: hits in lines that aren't shown stay.
  void PlanOpen(const std::string& path, OpenText& text) {
    if (const std::string why = text.WhyFixed(); !why.empty()) return Fail(path + ": " + why);
    std::optional<std::string> old = text.Bytes();
    if (!old) return Fail(path + ": its encoding has no letter for its text");
    const std::string shown = text.Shown();
    const bool isAllShown = shown == text.Whole();
    const Change change = ChangeOf(path, *old, scan, with);
    if (!change.error.empty()) return Fail(change.error);
    if (change.hits > 0)
      Note({path, *std::move(old), isAllShown ? DigestOf(change.newBytes) : 0}, nullptr);
  }

  // The user can type between the passes.
  bool CarryOutOpen(const ReplacedFile& file, OpenText& text) {
    if (const std::string why = text.WhyFixed(); !why.empty())
      return Fail(file.path + ": " + why), false;
    if (text.Bytes() != file.oldBytes) return Fail(file.path + ": was changed meanwhile"), false;
    const TextScan::Hits whole = scan.AllHits(text.Whole());
    const TextScan::Hits hits = scan.AllHits(text.Shown());
    text.Apply(EditsOf(hits));
    Count(hits.starts.size(), whole.missed + whole.starts.size() - hits.starts.size());
    return true;
  }

  const TextScan& scan;
  const std::string_view with;
  OpenTexts& open;
  ReplaceSum& sum;
  std::vector<std::unique_ptr<Change>> changes;  // of `files`
  size_t kept = 0;                               // bytes in them
};

// Carries out what is planned. The journal keeps the files that may have been changed.
void CarryOutAll(Replacement& replacement, ReplaceSum& sum, ReplaceUndo& undo, size_t planned,
                 const ReplaceGoesOn& goesOn) {
  const size_t count = replacement.files.size();
  std::vector<ReplacedFile> touched;
  for (size_t i = 0; i < count; ++i) {
    ReplacedFile& file = replacement.files[i];
    if (goesOn && !goesOn(file.path, planned + i, planned + count)) {
      sum.untouched = count - i;
      break;
    }
    if (replacement.CarryOut(i)) touched.push_back(std::move(file));
  }
  if (touched.size() < count) undo.KeepOnly(touched);
}

}  // namespace

FileHits CountHits(const std::string& path, const TextScan& scan, OpenTexts& open) {
  TextScan::Hits hits;
  if (const OpenText* text = open.At(path)) {
    hits = scan.AllHits(text->Whole());
  } else if (const mavro::FileText file = mavro::ReadFileText(path); file.Ok()) {
    hits = scan.AllHits(DecodedFile(file.text).text);
  }
  return {path, hits.starts.size(), hits.missed};
}

ReplaceSum ReplaceInFiles(const std::vector<std::string>& paths, const TextScan& scan,
                          std::string_view with, OpenTexts& open, ReplaceUndo& undo,
                          const ReplaceGoesOn& goesOn) {
  ReplaceSum sum;
  Replacement replacement(scan, with, open, sum);
  for (size_t i = 0; i < paths.size(); ++i) {
    if (goesOn && !goesOn(paths[i], i, 2 * paths.size())) {
      sum.whyNothing = "Stopped, nothing is replaced";
      return sum;
    }
    replacement.Plan(paths[i]);
  }
  if (replacement.files.empty()) return sum;
  if (const mavro::FileResult kept = undo.Begin(replacement.files); !kept.Ok()) {
    sum.whyNothing = "The old texts can't be kept: " + kept.error;
    return sum;
  }
  CarryOutAll(replacement, sum, undo, paths.size(), goesOn);
  return sum;
}

}  // namespace zendry
