#include <unistd.h>

#include <algorithm>
#include <cerrno>
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
constexpr long cFirstRoom = 1024 * 1024;
constexpr long cMoreRoom = 8;  // times what was there
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

}  // namespace

// Reads the file into the empty text. False when reading breaks off.
bool SciEditor::Impl::FillFrom(int file, long size) {
  std::vector<char> buffer(cChunk);
  ssize_t count = ReadChunk(file, buffer);
  const auto chunk = [&] { return std::string_view(buffer.data(), static_cast<size_t>(count)); };
  if (count < 0) return false;
  Editor().encoding = DetectEncoding(chunk());
  TextDecoder decoder(static_cast<TextEncoding>(Editor().encoding));
  // What is not shown needs no room: the component is told of more when it comes.
  long room = std::min(size, cFirstRoom);
  Send(SCI_ALLOCATE, room + cRoomToType);
  long taken = 0, shown = 0;
  LongLineFolder folder(longLines, [&](std::string_view text) {
    shown += static_cast<long>(text.size());
    if (shown > room && room < size) {
      room = std::min(size, std::max(room * cMoreRoom, shown));
      Send(SCI_ALLOCATE, room + cRoomToType);
    }
    AddShown(text);
  });
  const auto take = [&](std::string_view text) {
    taken += static_cast<long>(text.size());
    folder.Take(text);
  };
  const std::string_view first = decoder.Decode(chunk());
  Send(SCI_SETEOLMODE, cEolModes[static_cast<int>(FirstLineEnding(first))]);
  take(first);
  while (static_cast<size_t>(count) == cChunk) {
    count = ReadChunk(file, buffer);
    if (count < 0) return false;
    if (taken > INT32_MAX - 4 * static_cast<long>(cChunk)) return false;
    take(decoder.Decode(chunk()));
  }
  take(decoder.Finish());
  folder.Finish();
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
  const LongLines linesBefore = longLines;
  const int encodingBefore = editor.encoding;
  const Param told = Send(SCI_GETMODEVENTMASK);
  Send(SCI_SETMODEVENTMASK, 0);
  Send(SCI_SETREADONLY, 0);
  Send(SCI_SETUNDOCOLLECTION, 0);
  DropLineIndex();
  Send(SCI_CLEARALL);
  Send(SCI_MARKERDELETEALL, -1);
  ForgetLongLines();
  const bool read = FillFrom(opened.file.Number(), opened.size);
  if (!read) {
    editor.encoding = encodingBefore;
    Send(SCI_CLEARALL);
    longLines = linesBefore;
    AddShown(before);
  } else {
    SpellBytesAsLetters();
  }
  standIns.Reset();
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

void SciEditor::Impl::AddShown(std::string_view text) {
  Send(SCI_ADDTEXT, static_cast<Param>(text.size()), reinterpret_cast<Param>(text.data()));
}

// Only a text in UTF-8 has characters that are stand-ins: of bytes that are none, letters are made.
void SciEditor::Impl::SpellBytesAsLetters() {
  SciEditor& editor = Editor();
  if (longLines.IsEmpty() || editor.encoding != cPlainText || KindOfBytes() != TextBytes::cOther)
    return;
  const std::string text = TextOfByteLetters(longLines.Unfold(Bytes()));
  editor.encoding = cByteLetters;
  longLines = {};
  Send(SCI_CLEARALL);
  AddShown(longLines.Fold(text));
}

// What kind of bytes the text has, with the lines that are not shown.
TextBytes SciEditor::Impl::KindOfBytes() const {
  TextBytes kind = ClassifyBytes(Bytes());
  for (int number = 0; number < longLines.End() && kind != TextBytes::cOther; ++number)
    if (const std::string* line = longLines.Kept(number))
      kind = std::max(kind, ClassifyBytes(*line));
  return kind;
}

// How a text that has come whole is shown follows from its bytes.
void SciEditor::Impl::ClassifyText() {
  SciEditor& editor = Editor();
  bytes = standIns.Count() == 0 ? ClassifyBytes(Bytes()) : TextBytes::cUtf8;
  huge = Length() > cHugeBytes;
  const bool unicode = editor.encoding != cPlainText || bytes == TextBytes::cUtf8;
  editor.codePage = unicode ? SC_CP_UTF8 : 0;
  ApplyOptions();
}

void SciEditor::Impl::TakeText(std::string_view newText, int newEncoding,
                               std::string_view newOddByte) {
  SciEditor& editor = Editor();
  std::string shown = longLines.Fold(newText);
  if (newEncoding == cPlainText && longLines.AreIn(shown) &&
      ClassifyBytes(newText) == TextBytes::cOther) {
    newEncoding = cByteLetters;
    shown = longLines.Fold(TextOfByteLetters(newText));
  }
  Send(SCI_SELECTALL);
  PutText(shown);
  Send(SCI_SETEOLMODE, cEolModes[static_cast<int>(FirstLineEnding(newText))]);
  editor.encoding = newEncoding;
  oddByte = newOddByte;
  ClassifyText();
  Send(SCI_GOTOPOS, 0);
}

bool SciEditor::Impl::Save(const std::string& path, SaveTidying tidying) {
  SciEditor& editor = Editor();
  editor.saveError.clear();
  if (!hwnd) return false;
  if (tidying.stripTrailing) StripTrailing();
  if (tidying.ensureLastLine) EnsureLastLine();
  const auto encoding = static_cast<TextEncoding>(editor.encoding);
  const std::string whole = standIns.Count() > 0 ? editor.GetText() : std::string();
  const std::string_view text = standIns.Count() > 0 ? std::string_view(whole) : Bytes();
  if (encoding == cPlainText || encoding == cUtf8Cookie) {
    editor.saveError = SaveFileText(path, text).error;
  } else if (const auto encoded = EncodeText(text, encoding, oddByte)) {
    editor.saveError = SaveFileText(path, *encoded).error;
  } else if (encoding == cByteLetters) {
    editor.saveError = "can't write " + path + ": it holds letters that are no byte";
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
