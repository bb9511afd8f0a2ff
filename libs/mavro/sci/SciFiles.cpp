#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <optional>
#include <string>
#include <vector>

#include "FileText.h"
#include "RegularFile.h"
#include "SciImpl.h"
#include "SystemDialogs.h"
#include "TextCodec.h"

// Files in and out of an editor. Bytes that the encoding doesn't speak of are kept as they are, so
// that what wasn't edited is written back unchanged.

namespace mavro {

namespace {

constexpr size_t cChunk = 128 * 1024;
constexpr long cRoomToType = 1000;
// Larger texts are shown without styles and folds.
constexpr long cHugeBytes = 64L * 1024 * 1024;

constexpr Param cEolModes[] = {SC_EOL_CRLF, SC_EOL_CR, SC_EOL_LF};

// Fills the buffer as far as the file goes: fewer bytes are its end, less than none is a failure.
ssize_t ReadChunk(int file, std::vector<char>& buffer) {
  size_t filled = 0;
  while (filled < buffer.size()) {
    const ssize_t count = read(file, buffer.data() + filled, buffer.size() - filled);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return -1;
    if (count == 0) break;
    filled += static_cast<size_t>(count);
  }
  return static_cast<ssize_t>(filled);
}

// A file read at once: its text, and what its bytes are made of it by.
struct WholeText {
  std::string text;
  TextEncoding encoding;
  std::string oddByte;
};

std::optional<WholeText> ReadWhole(const std::string& path) {
  const std::optional<std::string> content = ReadFileText(path);
  if (!content) return {};
  const TextEncoding encoding = DetectEncoding(std::string_view(*content).substr(0, cChunk));
  TextDecoder decoder(encoding);
  std::string text(decoder.Decode(*content));
  text += decoder.Finish();
  return WholeText{std::move(text), encoding, decoder.oddByte};
}

size_t Digest(std::string_view text, TextEncoding encoding, const std::string& oddByte) {
  const std::hash<std::string_view> hash;
  return hash(text) ^ (hash(oddByte) << 1) ^ static_cast<size_t>(encoding);
}

// What of `before` gives way when it becomes `after`: what both begin and end with stays.
ByteRange DifferingRange(std::string_view before, std::string_view after) {
  const auto front = std::mismatch(before.begin(), before.end(), after.begin(), after.end());
  const auto start = static_cast<size_t>(front.first - before.begin());
  const auto back = std::mismatch(before.rbegin(), before.rend() - static_cast<ptrdiff_t>(start),
                                  after.rbegin(), after.rend() - static_cast<ptrdiff_t>(start));
  return {start, before.size() - static_cast<size_t>(back.first - before.rbegin())};
}

}  // namespace

// Reads the file into the empty text. False when reading breaks off.
bool SciEditor::Impl::FillFrom(int file, long size) {
  std::vector<char> buffer(cChunk);
  ssize_t count = ReadChunk(file, buffer);
  const auto chunk = [&] { return std::string_view(buffer.data(), static_cast<size_t>(count)); };
  if (count < 0) return false;
  Editor().encoding = DetectEncoding(chunk());
  TextDecoder decoder(static_cast<TextEncoding>(Editor().encoding));
  const auto add = [this](std::string_view text) {
    Send(SCI_ADDTEXT, static_cast<Param>(text.size()), reinterpret_cast<Param>(text.data()));
  };
  Send(SCI_ALLOCATE, size + cRoomToType);
  const std::string_view first = decoder.Decode(chunk());
  Send(SCI_SETEOLMODE, cEolModes[static_cast<int>(FirstLineEnding(first))]);
  add(first);
  while (static_cast<size_t>(count) == cChunk) {
    count = ReadChunk(file, buffer);
    if (count < 0) return false;
    if (Length() > INT32_MAX - 4 * static_cast<int>(cChunk)) return false;
    add(decoder.Decode(chunk()));
  }
  add(decoder.Finish());
  oddByte = decoder.oddByte;
  return true;
}

bool SciEditor::Impl::Load(const std::string& path) {
  SciEditor& editor = Editor();
  const RegularFile opened = OpenRegularFile(path);
  if (!hwnd || !opened.file.IsOpen()) {
    if (editor.reportMissing) Information("Could not open file \"" + path + "\"");
    return false;
  }
  const std::string before(Bytes());
  const int encodingBefore = editor.encoding;
  const Param told = Send(SCI_GETMODEVENTMASK);
  Send(SCI_SETMODEVENTMASK, 0);
  Send(SCI_SETREADONLY, 0);
  Send(SCI_SETUNDOCOLLECTION, 0);
  DropLineIndex();
  Send(SCI_CLEARALL);
  Send(SCI_MARKERDELETEALL, -1);
  const bool read = FillFrom(opened.file.Number(), opened.size);
  if (!read) {
    editor.encoding = encodingBefore;
    Window()->SetText(before);
  }
  ClassifyText();
  Send(SCI_SETUNDOCOLLECTION, 1);
  Send(SCI_SETMODEVENTMASK, told);
  ++changeCount;
  if (read) {
    editor.fileName = path;
    Send(SCI_EMPTYUNDOBUFFER);
    Send(SCI_SETSAVEPOINT);
    editor.dirty = false;
  }
  Send(SCI_GOTOPOS, 0);
  return read;
}

// Only what differs is replaced, so that the caret, marks and folds of the rest stay.
bool SciEditor::Impl::Reload(const std::string& path) {
  SciEditor& editor = Editor();
  const std::optional<WholeText> read = ReadWhole(path);
  if (!hwnd || !read || read->text.size() > static_cast<size_t>(INT32_MAX) / 2) return false;
  const std::string& text = read->text;
  const ByteRange changed = DifferingRange(Bytes(), text);
  const size_t behind = Bytes().size() - changed.end;
  const std::string_view replacement =
      std::string_view(text).substr(changed.start, text.size() - behind - changed.start);
  Send(SCI_SETREADONLY, 0);
  Send(SCI_SETTARGETRANGE, static_cast<Param>(changed.start), static_cast<Param>(changed.end));
  SendText(SCI_REPLACETARGET, static_cast<Param>(replacement.size()), replacement.data());
  Send(SCI_SETEOLMODE, cEolModes[static_cast<int>(FirstLineEnding(text))]);
  editor.encoding = read->encoding;
  oddByte = read->oddByte;
  ClassifyText();
  editor.fileName = path;
  Send(SCI_SETSAVEPOINT);
  return true;
}

size_t SciEditor::Impl::TextDigest() const {
  return Digest(Bytes(), static_cast<TextEncoding>(Editor().encoding), oddByte);
}

size_t SciEditor::TextDigest() const {
  return ItsImpl().TextDigest();
}

std::optional<size_t> SciEditor::DigestOfFile(const std::string& path) {
  const std::optional<WholeText> read = ReadWhole(path);
  if (!read) return {};
  return Digest(read->text, read->encoding, read->oddByte);
}

// How a text that has come whole is shown follows from its bytes.
void SciEditor::Impl::ClassifyText() {
  SciEditor& editor = Editor();
  bytes = ClassifyBytes(Bytes());
  huge = Length() > cHugeBytes;
  const bool unicode = editor.encoding != cPlainText || bytes == TextBytes::cUtf8;
  editor.codePage = unicode ? SC_CP_UTF8 : 0;
  ApplyOptions();
}

void SciEditor::Impl::TakeText(std::string_view newText, int newEncoding,
                               std::string_view newOddByte) {
  SciEditor& editor = Editor();
  Send(SCI_SELECTALL);
  editor.ReplaceSelection(newText);
  Send(SCI_SETEOLMODE, cEolModes[static_cast<int>(FirstLineEnding(newText))]);
  editor.encoding = newEncoding;
  oddByte = newOddByte;
  ClassifyText();
  Send(SCI_GOTOPOS, 0);
}

bool SciEditor::Impl::Save(const std::string& path, bool stripTrailing, bool ensureLastLine) {
  SciEditor& editor = Editor();
  editor.saveError.clear();
  if (!hwnd) return false;
  if (stripTrailing) StripTrailing();
  if (ensureLastLine) EnsureLastLine();
  const auto encoding = static_cast<TextEncoding>(editor.encoding);
  if (encoding == cPlainText || encoding == cUtf8Cookie) {
    editor.saveError = SaveFileText(path, Bytes()).error;
  } else if (const auto encoded = EncodeText(Bytes(), encoding, oddByte)) {
    editor.saveError = SaveFileText(path, *encoded).error;
  } else {
    editor.saveError = "can't write " + path + ": it holds bytes that " + editor.EncodingName() +
                       " has no letter for";
  }
  if (!editor.saveError.empty()) return false;
  editor.fileName = path;
  Send(SCI_SETSAVEPOINT);
  return true;
}

// From the end, so that the places of what is still to go stay.
void SciEditor::Impl::StripTrailing() {
  const std::vector<ByteRange> ranges = TrailingBlanks(Bytes());
  if (ranges.empty()) return;
  Send(SCI_BEGINUNDOACTION);
  for (auto range = ranges.rbegin(); range != ranges.rend(); ++range) {
    Send(SCI_SETTARGETRANGE, static_cast<Param>(range->start), static_cast<Param>(range->end));
    SendText(SCI_REPLACETARGET, 0, "");
  }
  Send(SCI_ENDUNDOACTION);
}

void SciEditor::Impl::EnsureLastLine() {
  static constexpr const char* cEnds[] = {"\r\n", "\r", "\n"};
  const std::string_view text = Bytes();
  if (text.empty() || text.back() == '\n' || text.back() == '\r') return;
  SendText(SCI_INSERTTEXT, Length(), cEnds[Send(SCI_GETEOLMODE)]);
}

}  // namespace mavro
