#include "TagsFile.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <limits>
#include <numeric>
#include <span>

#include "tags/TagLine.h"

namespace zendry {
namespace {

// First lines of the file, sorted like the tags, by their bytes.
constexpr std::string_view cHead =
    "!_TAG_FILE_FORMAT\t2\t/extended format/\n"
    "!_TAG_FILE_SORTED\t1\t/0=unsorted, 1=sorted, 2=foldcase/\n"
    "!_TAG_PROGRAM_NAME\tzendry-tags\t//\n"
    "!_TAG_PROGRAM_VERSION\t" ZENDRY_VERSION "\t//\n";

constexpr size_t cBlock = 1 << 20, cRoomOfALine = 4096;
constexpr size_t cPart = 256 << 10;
constexpr size_t cFetched = 8, cCacheLine = 64;

// What stands in front of a line's text in its block. The text is the name with its TAB, the kind's
// letter, then the fields that follow the line's number.
struct LineHead {
  uint32_t source;
  int32_t number;
  uint32_t nameSize;
  uint32_t size;
};

// A line in its block, with eight bytes of what orders it as a number: most comparisons of a sort
// end there.
class SortedLine {
 public:
  explicit SortedLine(const char* newHead) : head(newHead) {}

  LineHead Head() const {
    LineHead copy;
    std::memcpy(&copy, head, sizeof copy);
    return copy;
  }
  const char* Text() const { return head + sizeof(LineHead); }
  std::string_view Name() const { return {Text(), Head().nameSize}; }
  char Kind() const { return Text()[Head().nameSize]; }
  std::string_view Fields() const {
    const LineHead copy = Head();
    return {Text() + copy.nameSize + 1, copy.size - copy.nameSize - 1};
  }

  // The text will be needed soon.
  void Fetch() const {
    __builtin_prefetch(head);
    __builtin_prefetch(head + cCacheLine);
  }

  uint64_t key = 0;

 private:
  const char* head;
};

using Lines = std::span<SortedLine>;

// Eight bytes of a text as a number that is in their order.
uint64_t KeyAt(std::string_view text, size_t at) {
  uint64_t key = 0;
  if (at + sizeof key <= text.size()) {
    std::memcpy(&key, text.data() + at, sizeof key);
    return std::endian::native == std::endian::little ? __builtin_bswap64(key) : key;
  }
  for (size_t i = at; i < at + sizeof key; ++i)
    key = key << 8 | (i < text.size() ? static_cast<unsigned char>(text[i]) : 0U);
  return key;
}

// What a line's number and the sign behind it begin with, as a number that is in the order of their
// bytes; four bits for a digit. Lines in which it is the same need a closer look.
uint32_t NumberKey(int32_t number) {
  constexpr uint32_t cSign = 11;  // more than any digit, as it is in ASCII
  char digits[16];
  const char* const end = std::to_chars(digits, digits + sizeof digits, number).ptr;
  uint32_t key = 0;
  for (int i = 0; i < 8; ++i)
    key = key << 4 | (digits + i < end ? static_cast<uint32_t>(digits[i] - '0') : cSign);
  return key;
}

bool IsKeyLess(const SortedLine& a, const SortedLine& b) {
  return a.key < b.key;
}

// Orders lines as their texts are ordered. The sources are compared by their ranks.
class LineSorter {
 public:
  explicit LineSorter(const std::vector<uint32_t>& newRanks) : ranks(newRanks) {}

  bool AreSame(const SortedLine& a, const SortedLine& b) const {
    return a.Head().number == b.Head().number && Rank(a) == Rank(b) && a.Name() == b.Name() &&
           a.Kind() == b.Kind() && a.Fields() == b.Fields();
  }

  // Lines whose names are the same up to `from`. Those that differ late, if at all, are few: they
  // are compared as they are, since a name may have megabytes.
  void Sort(Lines lines, size_t from = 0) const {
    constexpr size_t cMostByKeys = 64;
    if (from >= cMostByKeys) {
      std::sort(lines.begin(), lines.end(), [this](const SortedLine& a, const SortedLine& b) {
        const int order = a.Name().compare(b.Name());
        return order != 0 ? order < 0 : IsPlaceLess(a, b);
      });
      return;
    }
    for (size_t i = 0; i < lines.size(); ++i) {
      if (i + cFetched < lines.size()) lines[i + cFetched].Fetch();
      lines[i].key = KeyAt(lines[i].Name(), from);
    }
    std::sort(lines.begin(), lines.end(), IsKeyLess);
    for (size_t start = 0, end = 0; start < lines.size(); start = end) {
      while (end < lines.size() && lines[end].key == lines[start].key) ++end;
      if (end - start == 1) continue;
      const Lines same = lines.subspan(start, end - start);
      // The TAB behind a name is in no name: all that have it here end here.
      if (same.front().Name().size() <= from + sizeof SortedLine::key)
        SortPlaces(same);
      else
        Sort(same, from + sizeof SortedLine::key);
    }
  }

 private:
  uint32_t Rank(const SortedLine& line) const { return ranks[line.Head().source]; }

  bool IsPlaceLess(const SortedLine& a, const SortedLine& b) const {
    const uint64_t first = PlaceKey(a), second = PlaceKey(b);
    return first != second ? first < second : IsRestLess(a, b);
  }

  // Lines of one name.
  void SortPlaces(Lines lines) const {
    for (SortedLine& line : lines) line.key = PlaceKey(line);
    std::sort(lines.begin(), lines.end(), [](const SortedLine& a, const SortedLine& b) {
      return a.key != b.key ? a.key < b.key : IsRestLess(a, b);
    });
  }

  uint64_t PlaceKey(const SortedLine& line) const {
    return uint64_t{Rank(line)} << 32 | NumberKey(line.Head().number);
  }

  static bool IsRestLess(const SortedLine& a, const SortedLine& b) {
    const TagPlace first(a.Head().number, a.Kind()), second(b.Head().number, b.Kind());
    const int order = first.Text().compare(second.Text());
    return order != 0 ? order < 0 : a.Fields() < b.Fields();
  }

  const std::vector<uint32_t>& ranks;
};

// The places of the sources in their order; the same for a source that was named twice.
std::vector<uint32_t> RanksOf(const std::vector<std::string>& sources) {
  std::vector<uint32_t> order(sources.size());
  std::iota(order.begin(), order.end(), 0U);
  std::sort(order.begin(), order.end(),
            [&](uint32_t a, uint32_t b) { return sources[a] < sources[b]; });
  std::vector<uint32_t> ranks(sources.size());
  uint32_t rank = 0;
  for (size_t i = 0; i < order.size(); ++i) {
    if (i > 0 && sources[order[i]] != sources[order[i - 1]]) ++rank;
    ranks[order[i]] = rank;
  }
  return ranks;
}

// Gathers small pieces into parts.
class PartWriter {
 public:
  explicit PartWriter(const mavro::TakePart& newTake) : take(newTake), part(cPart, '\0') {}

  bool IsWanted() const { return isWanted; }

  void Write(std::initializer_list<std::string_view> pieces) {
    size_t size = 0;
    for (const std::string_view piece : pieces) size += piece.size();
    if (size > part.size() - used) MakeRoom(size);
    for (const std::string_view piece : pieces) {
      std::memcpy(part.data() + used, piece.data(), piece.size());
      used += piece.size();
    }
  }

  void End() {
    isWanted = isWanted && take(std::string_view(part).substr(0, used));
    used = 0;
  }

 private:
  void MakeRoom(size_t size) {
    End();
    if (size > part.size()) part.resize(size);
  }

  const mavro::TakePart& take;
  std::string part;
  size_t used = 0;
  bool isWanted = true;
};

std::vector<SortedLine> LinesOf(const std::deque<std::string>& blocks, size_t count) {
  std::vector<SortedLine> lines;
  lines.reserve(count);
  for (const std::string& block : blocks)
    for (const char* at = block.data(); at != block.data() + block.size();) {
      lines.emplace_back(at);
      at += sizeof(LineHead) + lines.back().Head().size;
    }
  return lines;
}

}  // namespace

void TagsFile::BeginSource(std::string_view name) {
  sources.push_back(EscapedForTags(name) + '\t');
}

void TagsFile::Add(const TagFacts& tag, Language language) {
  if (blocks.empty() || blocks.back().size() + cRoomOfALine > cBlock) {
    blocks.emplace_back();
    blocks.back().reserve(cBlock);
  }
  std::string& block = blocks.back();
  const size_t start = block.size(), text = start + sizeof(LineHead);
  block.append(sizeof(LineHead), '\0');
  AppendTagName(block, tag);
  const size_t nameSize = block.size() - text;
  block += tag.kind;
  AppendTagFields(block, tag, language);
  // Nobody could read such a line.
  if (block.size() - text > std::numeric_limits<uint32_t>::max()) return block.resize(start);
  const LineHead head{static_cast<uint32_t>(sources.size() - 1), tag.lineNumber,
                      static_cast<uint32_t>(nameSize), static_cast<uint32_t>(block.size() - text)};
  std::memcpy(block.data() + start, &head, sizeof head);
  ++count;
}

void TagsFile::Pass(const mavro::TakePart& take) const {
  const std::vector<uint32_t> ranks = RanksOf(sources);
  const LineSorter sorter(ranks);
  std::vector<SortedLine> lines = LinesOf(blocks, count);
  sorter.Sort(lines);
  PartWriter writer(take);
  writer.Write({cHead});
  for (size_t i = 0; i < lines.size() && writer.IsWanted(); ++i) {
    // Lines that are neighbours here come from places far apart.
    if (i + cFetched < lines.size()) lines[i + cFetched].Fetch();
    const SortedLine& line = lines[i];
    if (i > 0 && sorter.AreSame(lines[i - 1], line)) continue;
    const LineHead head = line.Head();
    writer.Write({line.Name(), sources[head.source], TagPlace(head.number, line.Kind()).Text(),
                  line.Fields(), "\n"});
  }
  writer.End();
}

}  // namespace zendry
