#include "TagsFile.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <initializer_list>
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

// What stands in front of a line's text in its block. The text is the name with its TAB, then all
// that follows the source.
struct LineHead {
  uint32_t source;
  uint32_t nameSize;
  size_t size;
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
  std::string_view Fields() const {
    const LineHead copy = Head();
    return {Text() + copy.nameSize, copy.size - copy.nameSize};
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

bool IsKeyLess(const SortedLine& a, const SortedLine& b) {
  return a.key < b.key;
}

// Orders lines as their texts are ordered. The sources are compared by their ranks.
class LineSorter {
 public:
  explicit LineSorter(const std::vector<uint32_t>& newRanks) : ranks(newRanks) {}

  bool AreSame(const SortedLine& a, const SortedLine& b) const {
    return a.Name() == b.Name() && Rank(a) == Rank(b) && a.Fields() == b.Fields();
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
    for (SortedLine& line : lines) line.key = KeyAt(line.Name(), from);
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
    return Rank(a) != Rank(b) ? Rank(a) < Rank(b) : a.Fields() < b.Fields();
  }

  // Lines of one name. The fields begin with the digits of the line's number.
  void SortPlaces(Lines lines) const {
    for (SortedLine& line : lines)
      line.key = uint64_t{Rank(line)} << 32 | KeyAt(line.Fields(), 0) >> 32;
    std::sort(lines.begin(), lines.end(), [](const SortedLine& a, const SortedLine& b) {
      return a.key != b.key ? a.key < b.key : a.Fields() < b.Fields();
    });
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
  AppendTagFields(block, tag, language);
  const LineHead head{static_cast<uint32_t>(sources.size() - 1), static_cast<uint32_t>(nameSize),
                      block.size() - text};
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
    writer.Write({line.Name(), sources[line.Head().source], line.Fields(), "\n"});
  }
  writer.End();
}

}  // namespace zendry
