#include "search/FileSearch.h"

#include <algorithm>

#include "FileBuffer.h"
#include "TextCodec.h"
#include "base/ToolColumns.h"

namespace zendry {

namespace {

constexpr size_t cMostShown = 0x4000;  // bytes of a line

struct MissedLine {
  size_t file = 0;
  size_t line = 0;
  int column = 0;
  std::string text;
};

std::string_view Shown(std::string_view line, std::string& copy) {
  line = line.substr(0, cMostShown);
  const auto isControl = [](char c) { return static_cast<unsigned char>(c) < ' '; };
  if (std::none_of(line.begin(), line.end(), isControl)) return line;
  copy.assign(line);
  std::replace_if(copy.begin(), copy.end(), isControl, ' ');
  return copy;
}

// A search in progress.
class Search {
 public:
  Search(const std::vector<std::string>& itsPaths, const LineTerm& term, OpenTexts& itsOpen,
         SearchListener& itsListener)
      : paths(itsPaths), scan(term), open(itsOpen), listener(itsListener) {}

  SearchSum Run() {
    for (size_t i = 0; i < paths.size(); ++i) {
      sum.isStopped = !listener.GoesOn(i, paths.size());
      if (sum.isStopped) break;
      SearchFile(i);
    }
    sum.missed = missed.size() + missedNotListed;
    if (sum.missed > 0) listener.MissedFollow(sum.missed);
    for (const MissedLine& one : missed)
      listener.Found(paths[one.file], one.line, one.column, one.text);
    return sum;
  }

 private:
  void SearchFile(size_t file) {
    if (const OpenText* text = open.At(paths[file])) return SearchText(file, text->Whole());
    if (!buffer.Read(paths[file]).Ok()) {
      ++sum.unread;
      return;
    }
    const std::string_view bytes = buffer.Text();
    const mavro::TextEncoding encoding = mavro::DetectEncoding(bytes.substr(0, 3));
    if (encoding == mavro::cPlainText) return SearchText(file, bytes);
    mavro::TextDecoder decoder(encoding);
    std::string text(decoder.Decode(bytes));
    text += decoder.Finish();
    SearchText(file, text);
  }

  void SearchText(size_t file, std::string_view text) {
    const size_t before = sum.lines;
    scan.EachLine(text, [&](const LineHit& hit) {
      ++sum.lines;
      const bool isListed = listed < cMostListed;
      if (!isListed) sum.isCut = true;
      if (!isListed) missedNotListed += hit.isMissed;
      if (!isListed) return true;
      ++listed;
      const std::string_view shown = Shown(hit.text, copy);
      const int column = ColumnOfByte(hit.text, hit.start);
      if (hit.isMissed)
        missed.push_back({file, hit.line, column, std::string(shown)});
      else
        listener.Found(paths[file], hit.line, column, shown);
      return true;
    });
    sum.files += sum.lines > before;
  }

  const std::vector<std::string>& paths;
  const TextScan scan;
  OpenTexts& open;
  SearchListener& listener;
  mavro::FileBuffer buffer;
  std::vector<MissedLine> missed;
  size_t listed = 0, missedNotListed = 0;
  std::string copy;
  SearchSum sum;
};

}  // namespace

SearchSum SearchFiles(const std::vector<std::string>& paths, const LineTerm& term, OpenTexts& open,
                      SearchListener& listener) {
  return Search(paths, term, open, listener).Run();
}

}  // namespace zendry
