#include "base/PassedBodies.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>
#include <utility>

#include "base/EditorText.h"

namespace zendry {

namespace {

using namespace std::string_view_literals;

constexpr int cBeforeLine = 4;  // bytes that show how the line before ends

// Lookups search the text for such lines, in bodies too, when the tags are new.
constexpr std::string_view cSearched = "namespace";

constexpr std::array<bool, 256> cPlain = [] {
  std::array<bool, 256> plain{};
  for (int c = ' '; c < 0xFF; ++c) plain[static_cast<size_t>(c)] = true;  // 0xFF ends a text
  plain['\t'] = true;
  for (const char c : "{}\"'/\\#?\x7F"sv) plain[static_cast<unsigned char>(c)] = false;
  return plain;
}();

bool IsPlain(std::string_view bytes) {
  return std::all_of(bytes.begin(), bytes.end(),
                     [](char c) { return cPlain[static_cast<unsigned char>(c)]; });
}

bool IsLineEnd(char c) {
  return c == '\n' || c == '\r';
}

// True if the next line is part of a line, which is given without its end.
bool IsSpliced(std::string_view line) {
  return line.ends_with('\\') || line.ends_with("?\?/");
}

// Beside such a byte another one can begin, end or escape something.
bool IsTouchy(char c) {
  return "\"'/\\?"sv.find(c) != std::string_view::npos;
}

// Characters that can't be in the delimiter of a raw string, nor in a number or a name.
constexpr std::string_view cRunEnds = " \t\v\f()\\";
constexpr std::string_view cRunEndsAndQuotes = " \t\v\f()\\\"'";

// True if the bytes before the change belong to a literal's quote: as a number or a delimiter do.
bool TouchesQuoteBefore(std::string_view before) {
  const size_t at = before.find_last_of(cRunEndsAndQuotes);
  return at != before.npos && cRunEnds.find(before[at]) == cRunEnds.npos;
}

// The same for the bytes after it: a prefix, a delimiter or a number may begin there.
bool TouchesQuoteAfter(std::string_view after) {
  const size_t at = after.find_first_of(cRunEndsAndQuotes);
  return at != after.npos && cRunEnds.find(after[at]) == cRunEnds.npos;
}

// True if plain characters between these two parts of a line don't change how it is read. A "#" may
// become a directive or is one, the lines after a comment that goes on may be directives too, and
// nothing is read after a byte 0.
bool IsPlainPlace(std::string_view before, std::string_view after) {
  if (!before.empty() && IsTouchy(before.back())) return false;
  if (!after.empty() && IsTouchy(after.front())) return false;
  if (TouchesQuoteBefore(before) || TouchesQuoteAfter(after)) return false;
  if (before.find_first_of("#\0"sv) != before.npos || after.find_first_of("#\0"sv) != after.npos)
    return false;
  return after.find("/*") == after.npos && !IsSpliced(after);
}

std::string Copied(const EditorText& text, int start, int end) {
  std::string copy(static_cast<size_t>(end - start), '\0');
  text.CopyRange(start, end, copy.data());
  return copy;
}

}  // namespace

void PassedBodies::Put(std::vector<TextPart> passed) {
  parts = std::move(passed);
  isPending = hasChanged = false;
  holds = true;
}

void PassedBodies::Lose() {
  parts.clear();
  isPending = holds = false;
  hasChanged = true;
}

void PassedBodies::WillChange(const EditorText& text, int start, int removed, int added) {
  if (!holds || (removed == 0 && added == 0)) return;
  hasChanged = true;
  LookAtPending(text);
  if (!holds) return;
  if (!MayChange(text, start, removed, added)) return Lose();
  const auto isBehind = [start](const TextPart& part) { return part.start > start; };
  const auto behind = std::find_if(parts.begin(), parts.end(), isBehind);
  std::prev(behind)->end += added - removed;
  for (auto part = behind; part != parts.end(); ++part) {
    part->start += added - removed;
    part->end += added - removed;
  }
}

bool PassedBodies::Hold(const EditorText& text) {
  LookAtPending(text);
  return holds;
}

// Looks at all that is known before the change: its place and what is removed.
bool PassedBodies::MayChange(const EditorText& text, int start, int removed, int added) {
  const auto behind =
      std::upper_bound(parts.begin(), parts.end(), start,
                       [](int at, const TextPart& part) { return at < part.start; });
  if (behind == parts.begin() || start + removed > std::prev(behind)->end) return false;
  if (removed > cLongestLine || added > cLongestLine) return false;
  const int first = std::max(0, start - cLongestLine - cBeforeLine);
  const int last = std::min(text.Length(), start + removed + cLongestLine + 1);
  const std::string around = Copied(text, first, last);
  const std::string_view all(around);
  const std::string_view ahead = all.substr(0, static_cast<size_t>(start - first));
  const std::string_view rest = all.substr(static_cast<size_t>(start + removed - first));
  const auto lineStart = std::find_if(ahead.rbegin(), ahead.rend(), IsLineEnd).base();
  const auto lineEnd = std::find_if(rest.begin(), rest.end(), IsLineEnd);
  const std::string_view before(lineStart, ahead.end());
  const std::string_view after(rest.begin(), lineEnd);
  const std::string_view gone = all.substr(ahead.size(), static_cast<size_t>(removed));
  const size_t length =
      before.size() + after.size() + static_cast<size_t>(std::max(removed, added));
  if (length > cLongestLine) return false;
  // Between the two bytes of a line end, or at a place where they come together.
  const bool isInLineEnd = ahead.ends_with('\r') && rest.starts_with('\n');
  if (isInLineEnd || !IsPlain(gone) || !IsPlainPlace(before, after)) return false;
  std::string_view lineBefore = ahead.substr(0, ahead.size() - before.size());
  if (lineBefore.ends_with('\n')) lineBefore.remove_suffix(1);
  if (lineBefore.ends_with('\r')) lineBefore.remove_suffix(1);
  const std::string_view line(before.data(), before.size() + gone.size() + after.size());
  if (IsSpliced(lineBefore) || line.find(cSearched) != line.npos) return false;
  pending = {start - static_cast<int>(before.size()), start, added, static_cast<int>(after.size())};
  isPending = true;
  return true;
}

// Looks at what the change has brought.
void PassedBodies::LookAtPending(const EditorText& text) {
  if (!std::exchange(isPending, false)) return;
  const int end = pending.start + pending.added;
  if (end + pending.after > text.Length()) return Lose();
  const std::string line = Copied(text, pending.line, end + pending.after);
  const auto first = static_cast<size_t>(pending.start - pending.line);
  const std::string_view added =
      std::string_view(line).substr(first, static_cast<size_t>(pending.added));
  if (!IsPlain(added) || line.find(cSearched) != line.npos) Lose();
}

}  // namespace zendry
