#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <optional>
#include <string>
#include <vector>

#include "BytesDigest.h"
#include "FileText.h"
#include "LargeBlocks.h"
#include "RegularFile.h"
#include "SciImpl.h"
#include "SystemDialogs.h"
#include "TextCodec.h"
#include "UndoStep.h"

// Loads and saves the files of an editor. Bytes outside the encoding are kept as they are, so that
// unedited text is written back unchanged.

namespace mavro {

namespace {

constexpr size_t cChunk = 128 * 1024;
constexpr long cRoomToType = 1000;
constexpr long cFirstRoom = 1024 * 1024;
constexpr long cMoreRoom = 8;  // times the former size
// Larger texts are shown without styles and folds.
constexpr long cHugeBytes = 64L * 1024 * 1024;

constexpr Param cEolModes[] = {SC_EOL_CRLF, SC_EOL_CR, SC_EOL_LF};
constexpr int cEndModes = 4;  // more than there are
static_assert(static_cast<int>(LineEnding::cCrLf) == SC_EOL_CRLF &&
              static_cast<int>(LineEnding::cCr) == SC_EOL_CR &&
              static_cast<int>(LineEnding::cLf) == SC_EOL_LF);

// Fills the buffer from the file. Fewer bytes mean the end of the file, a negative number means a
// failure.
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

// A file read at once: its text, and the facts needed to make its bytes again.
struct WholeText : FileText {
  TextEncoding encoding = cPlainText;
  std::string oddByte = {};
};

WholeText ReadWhole(const std::string& path) {
  const FileText file = ReadFileText(path);
  if (!file.Ok()) return {file};
  const TextEncoding encoding = DetectEncoding(std::string_view(file.text).substr(0, cChunk));
  TextDecoder decoder(encoding);
  std::string text(decoder.Decode(file.text));
  text += decoder.Finish();
  return {{{}, std::move(text)}, encoding, decoder.oddByte};
}

// True for a byte of a UTF-8 character that is not its first.
bool IsTrailByte(char c) {
  return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

// The range of `before` to replace so that it becomes `after`: the start and end that both share
// stay, by whole characters.
ByteRange DifferingRange(std::string_view before, std::string_view after) {
  const auto front = std::mismatch(before.begin(), before.end(), after.begin(), after.end());
  auto start = static_cast<size_t>(front.first - before.begin());
  const bool splits = (start < before.size() && IsTrailByte(before[start])) ||
                      (start < after.size() && IsTrailByte(after[start]));
  while (splits && start > 0 && IsTrailByte(before[start - 1])) --start;
  if (splits && start > 0) --start;
  const auto back = std::mismatch(before.rbegin(), before.rend() - static_cast<ptrdiff_t>(start),
                                  after.rbegin(), after.rend() - static_cast<ptrdiff_t>(start));
  size_t end = before.size() - static_cast<size_t>(back.first - before.rbegin());
  while (end < before.size() && IsTrailByte(before[end])) ++end;
  return {start, end};
}

FirstLook LookOf(const SciEditor& editor, bool huge) {
  return {editor.codePage, editor.encoding, huge, editor.Send(SCI_GETMARGINWIDTHN)};
}

}  // namespace

// Reads the file into the empty text. Nothing if reading fails midway. Each chunk is looked at
// while it is in the processor's cache: a large text is not read again for its digest and its kind.
std::optional<LoadedText> SciEditor::Impl::FillFrom(int file, long size) {
  std::vector<char> buffer(cChunk);
  ssize_t count = ReadChunk(file, buffer);
  const auto chunk = [&] { return std::string_view(buffer.data(), static_cast<size_t>(count)); };
  if (count < 0) return {};
  BytesDigest digest;
  bool isAscii = true;
  Editor().encoding = DetectEncoding(chunk());
  TextDecoder decoder(static_cast<TextEncoding>(Editor().encoding));
  // Text that is not shown needs no room: it is reserved when more text comes.
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
    isAscii = isAscii && ClassifyBytes(text) == TextBytes::cAscii;
    folder.Take(text);
  };
  digest.Add(chunk());
  const std::string_view first = decoder.Decode(chunk());
  Send(SCI_SETEOLMODE, cEolModes[static_cast<int>(FirstLineEnding(first))]);
  take(first);
  if (size >= cLargeBytes) ShowFirstPart(size);
  while (static_cast<size_t>(count) == cChunk) {
    count = ReadChunk(file, buffer);
    if (count < 0 || taken > INT32_MAX - 4 * static_cast<long>(cChunk)) return {};
    digest.Add(chunk());
    take(decoder.Decode(chunk()));
  }
  take(decoder.Finish());
  folder.Finish();
  oddByte = decoder.oddByte;
  return LoadedText{digest.Value(), isAscii};
}

// The rest of a large text takes its time: until it is there the user sees the beginning.
void SciEditor::Impl::ShowFirstPart(long size) {
  firstPart.expectedLength = size;
  ClassifyText();
  Send(SCI_GOTOPOS, 0);
  if (!Editor().onFirstPart()) return;
  firstPart.shown = LookOf(Editor(), huge);
  Window()->SetPainting(NativeSci::Painting::cHeld);
}

void SciEditor::Impl::EndFirstPart(bool isRead) {
  if (!firstPart.shown) return;
  const bool looksSame = isRead && *firstPart.shown == LookOf(Editor(), huge);
  firstPart.shown.reset();
  Window()->SetPainting(looksSame ? NativeSci::Painting::cGoesOn
                                  : NativeSci::Painting::cGoesOnWithAll);
}

FileResult SciEditor::Impl::Load(const std::string& path) {
  SciEditor& editor = Editor();
  const RegularFile opened = OpenRegularFile(path);
  if (!hwnd || !opened.Ok()) {
    if (editor.reportMissing) Information("Could not open file \"" + path + "\"");
    if (opened.Ok()) return Unreadable(path);
    return opened;
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
  const LargeBlocks blocks;
  const std::optional<LoadedText> read = FillFrom(opened.file.Number(), opened.size);
  firstPart.expectedLength = 0;
  if (!read) {
    editor.encoding = encodingBefore;
    Send(SCI_CLEARALL);
    longLines = linesBefore;
    AddShown(before);
  } else {
    ConvertBytesToLetters();
  }
  standIns.Reset();
  const bool isAscii = read && read->isAscii && longLines.IsEmpty();
  ClassifyText(isAscii ? std::optional(TextBytes::cAscii) : std::nullopt);
  Send(SCI_SETUNDOCOLLECTION, 1);
  Send(SCI_SETMODEVENTMASK, told);
  ++changeCount;
  loaded = read;
  if (read) {
    loaded->changes = changeCount;
    editor.fileName = path;
    Send(SCI_EMPTYUNDOBUFFER);
    Send(SCI_SETSAVEPOINT);
    editor.dirty = false;
  }
  Send(SCI_GOTOPOS, 0);
  EndFirstPart(read.has_value());
  if (Length() >= cLargeBytes) {
    // The component's table of lines was made anew at each step of its growth.
    malloc_trim(0);
    // The styles are 0 where the text has not been painted.
    blocks.ReleaseZeroPages();
  }
  return read ? FileResult() : Unreadable(path);
}

// Replaces only the part that differs, so that the caret, marks and folds of the rest stay.
FileResult SciEditor::Impl::Reload(const std::string& path) {
  SciEditor& editor = Editor();
  const WholeText read = ReadWhole(path);
  if (!read.Ok()) return read;
  if (!hwnd || read.text.size() > static_cast<size_t>(INT32_MAX) / 2) return Unreadable(path);
  int encoding = read.encoding;
  const std::string shown = ShownForm(read.text, encoding);
  const ByteRange changed = DifferingRange(Bytes(), shown);
  const size_t behind = Bytes().size() - changed.end;
  const std::string_view replacement =
      std::string_view(shown).substr(changed.start, shown.size() - behind - changed.start);
  Send(SCI_SETREADONLY, 0);
  Send(SCI_SETTARGETRANGE, static_cast<Param>(changed.start), static_cast<Param>(changed.end));
  Send(SCI_REPLACETARGET, static_cast<Param>(replacement.size()),
       reinterpret_cast<Param>(replacement.data()));
  Send(SCI_SETEOLMODE, cEolModes[static_cast<int>(FirstLineEnding(read.text))]);
  editor.encoding = encoding;
  oddByte = read.oddByte;
  loaded.reset();
  ClassifyText();
  editor.fileName = path;
  Send(SCI_SETSAVEPOINT);
  return {};
}

// Nothing when the text holds what its encoding has no place for. A text that is its file's bytes
// is not copied, and one that is as it was loaded has the digest of the bytes that were read.
std::optional<size_t> SciEditor::Impl::FileDigest() {
  if (loaded && loaded->changes == changeCount) return loaded->digest;
  const auto encoding = static_cast<TextEncoding>(Editor().encoding);
  const bool isAsInFile = encoding == cPlainText || encoding == cUtf8Cookie;
  if (isAsInFile && standIns.Count() == 0) return DigestOfBytes(Bytes());
  const std::string whole = Editor().GetText();
  if (isAsInFile) return DigestOfBytes(whole);
  const std::optional<std::string> encoded = EncodeText(whole, encoding, oddByte);
  return encoded ? std::optional<size_t>(DigestOfBytes(*encoded)) : std::nullopt;
}

std::optional<size_t> SciEditor::TextDigest() const {
  return ItsImpl().FileDigest();
}

std::optional<size_t> SciEditor::DigestOfFile(const std::string& path) {
  const FileText file = ReadFileText(path);
  if (!file.Ok()) return {};
  return DigestOfBytes(file.text);
}

void SciEditor::Impl::AddShown(std::string_view text) {
  Send(SCI_APPENDTEXT, static_cast<Param>(text.size()), reinterpret_cast<Param>(text.data()));
}

// Only a UTF-8 text can have stand-ins, so bytes that are not UTF-8 are converted to letters.
void SciEditor::Impl::ConvertBytesToLetters() {
  SciEditor& editor = Editor();
  if (longLines.IsEmpty() || editor.encoding != cPlainText || KindOfBytes() != TextBytes::cOther)
    return;
  const std::string text = TextOfByteLetters(longLines.Unfold(Bytes()));
  editor.encoding = cByteLetters;
  longLines = {};
  Send(SCI_CLEARALL);
  AddShown(longLines.Fold(text));
}

// The kind of bytes in the text, including the lines that are not shown.
TextBytes SciEditor::Impl::KindOfBytes() const {
  TextBytes kind = ClassifyBytes(Bytes());
  for (int number = 0; number < longLines.End() && kind != TextBytes::cOther; ++number)
    if (const std::string* line = longLines.Kept(number))
      kind = std::max(kind, ClassifyBytes(*line));
  return kind;
}

// The bytes of a text that has come whole decide how it is shown. Stand-ins are in UTF-8.
void SciEditor::Impl::ClassifyText(std::optional<TextBytes> known) {
  SciEditor& editor = Editor();
  if (!known) known = standIns.Count() == 0 ? ClassifyBytes(Bytes()) : TextBytes::cUtf8;
  bytes = *known;
  huge = std::max<long>(Length(), firstPart.expectedLength) > cHugeBytes;
  const bool unicode = editor.encoding != cPlainText || bytes == TextBytes::cUtf8;
  editor.codePage = unicode ? SC_CP_UTF8 : 0;
  ApplyOptions();
}

// The shown form of a whole text, and the encoding to write it back with. Bytes that are shown as
// letters now stay letters: undo restores the letters.
std::string SciEditor::Impl::ShownForm(std::string_view whole, int& textEncoding) {
  std::string shown = longLines.Fold(whole);
  if (textEncoding != cPlainText) return shown;
  const TextBytes kind = ClassifyBytes(whole);
  const bool isInByteLetters = Editor().encoding == cByteLetters
                                   ? kind != TextBytes::cUtf8
                                   : kind == TextBytes::cOther && longLines.AreIn(shown);
  if (!isInByteLetters) return shown;
  textEncoding = cByteLetters;
  return longLines.Fold(TextOfByteLetters(whole));
}

void SciEditor::Impl::TakeText(std::string_view newText, int newEncoding,
                               std::string_view newOddByte) {
  SciEditor& editor = Editor();
  if (newEncoding < cPlainText || newEncoding > cByteLetters) newEncoding = cPlainText;
  const std::string shown = ShownForm(newText, newEncoding);
  Send(SCI_SETREADONLY, 0);
  Send(SCI_SELECTALL);
  PutText(shown);
  Send(SCI_SETEOLMODE, cEolModes[static_cast<int>(FirstLineEnding(newText))]);
  editor.encoding = newEncoding;
  oddByte = newOddByte;
  loaded.reset();
  ClassifyText();
  Send(SCI_GOTOPOS, 0);
}

FileResult SciEditor::Impl::Save(const std::string& path, SaveTidying tidying) {
  SciEditor& editor = Editor();
  if (!hwnd) return {"can't write " + path + ": the editor has no window"};
  if (!editor.IsReadOnly()) Tidy(tidying);
  const auto encoding = static_cast<TextEncoding>(editor.encoding);
  const std::string whole = standIns.Count() > 0 ? editor.GetText() : std::string();
  const std::string_view text = standIns.Count() > 0 ? std::string_view(whole) : Bytes();
  FileResult result;
  if (encoding == cPlainText || encoding == cUtf8Cookie) {
    result = SaveFileText(path, text);
  } else if (const auto encoded = EncodeText(text, encoding, oddByte)) {
    result = SaveFileText(path, *encoded);
  } else if (encoding == cByteLetters) {
    result.error = "can't write " + path + ": it holds letters that are no byte";
  } else {
    result.error = "can't write " + path + ": it holds bytes that " + editor.EncodingName() +
                   " has no letter for";
  }
  if (!result.Ok()) return result;
  editor.fileName = path;
  Send(SCI_SETSAVEPOINT);
  return result;
}

void SciEditor::Impl::Tidy(SaveTidying tidying) {
  if (!tidying.stripTrailing && !tidying.ensureLastLine) return;
  const UndoStep step(Editor());
  if (tidying.stripTrailing) {
    std::vector<ByteRange> ranges =
        TrailingBlanks(Bytes(), tidying.keepBreaks ? LineBreaks::cKept : LineBreaks::cNone);
    KeepRawLiterals(ranges);
    KeepBeforeCarets(ranges, tidying.keepCaretLines);
    Strip(ranges);
  }
  if (tidying.ensureLastLine) EnsureLastLine();
}

// Blanks in a literal of several lines belong to it. The text is styled as far as they reach.
void SciEditor::Impl::KeepRawLiterals(std::vector<ByteRange>& ranges) {
  const EditorLanguage* language = Editor().language;
  const bool mayHave = language && language->rawStyle && !huge && !ranges.empty() &&
                       Bytes().find("R\"") != std::string_view::npos;
  if (!mayHave) return;
  Send(SCI_COLOURISE, Send(SCI_GETENDSTYLED), static_cast<Param>(ranges.back().end));
  std::erase_if(ranges, [&](const ByteRange& range) {
    const int style = StyleAt(static_cast<int>(range.start));
    return style == language->rawStyle || style == language->rawStyle + language->leftOutStyles;
  });
}

// No caret moves: the blanks between a line's text and a caret stay, or all those of its line.
void SciEditor::Impl::KeepBeforeCarets(std::vector<ByteRange>& ranges, bool wholeLines) {
  std::vector<size_t> places;
  for (Param i = 0; i < Send(SCI_GETSELECTIONS); ++i)
    for (const unsigned end : {SCI_GETSELECTIONNCARET, SCI_GETSELECTIONNANCHOR})
      places.push_back(static_cast<size_t>(Send(end, i)));
  for (const size_t place : places) {
    const auto line = static_cast<size_t>(LineEnd(LineOf(static_cast<int>(place))));
    const auto range = std::lower_bound(ranges.begin(), ranges.end(), line,
                                        [](const ByteRange& r, size_t end) { return r.end < end; });
    if (range == ranges.end() || range->end != line) continue;
    range->start = wholeLines ? range->end : std::max(range->start, place);
  }
}

void SciEditor::Impl::StripLines() {
  if (Editor().IsReadOnly()) return;
  const auto [start, end] = Editor().Selection();
  const size_t first = start == end ? 0 : static_cast<size_t>(LineStart(LineOf(start)));
  const auto last = static_cast<size_t>(start == end ? Length() : LineEnd(LineOf(end)));
  std::vector<ByteRange> ranges = TrailingBlanks(Bytes(), LineBreaks::cNone);
  std::erase_if(ranges, [&](const ByteRange& r) { return r.start < first || r.end > last; });
  KeepRawLiterals(ranges);
  if (ranges.empty()) return;
  const UndoStep step(Editor());
  Strip(ranges);
}

// Goes from the end to the start, so that the positions of the remaining ranges stay valid.
void SciEditor::Impl::Strip(const std::vector<ByteRange>& ranges) {
  for (auto range = ranges.rbegin(); range != ranges.rend(); ++range) {
    Send(SCI_SETTARGETRANGE, static_cast<Param>(range->start), static_cast<Param>(range->end));
    if (range->start < range->end) SendText(SCI_REPLACETARGET, 0, "");
  }
}

void SciEditor::Impl::EnsureLastLine() {
  static constexpr const char* cEnds[] = {"\r\n", "\r", "\n"};
  const std::string_view text = Bytes();
  if (text.empty() || text.back() == '\n' || text.back() == '\r') return;
  const std::string_view end = cEnds[Send(SCI_GETEOLMODE)];
  Send(SCI_SETTARGETRANGE, Length(), Length());
  SendText(SCI_REPLACETARGET, static_cast<Param>(end.size()), end.data());
}

// The way of ending new lines is changed back with the lines: a token in the undo step says from
// which end to which.
void SciEditor::Impl::ConvertLineEnds(int mode) {
  if (Editor().IsReadOnly()) return;
  if (HasOtherLineEnds(Bytes(), static_cast<LineEnding>(mode))) {
    const UndoStep step(Editor());
    Send(SCI_CONVERTEOLS, mode);
    Send(SCI_ADDUNDOACTION, Send(SCI_GETEOLMODE) * cEndModes + mode);
  }
  Send(SCI_SETEOLMODE, mode);
}

void SciEditor::Impl::FollowLineEnds(const SciNotification& n) {
  const bool isUndone = (n.modification & SC_PERFORMED_UNDO) != 0;
  Send(SCI_SETEOLMODE, isUndone ? n.token / cEndModes : n.token % cEndModes);
}

}  // namespace mavro
