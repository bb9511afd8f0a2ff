#include "help/HelpPage.h"

#include <gmock/gmock.h>

#include "RtfReader.h"

namespace zendry {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

HelpIndex IndexOf(std::string_view bytes) {
  HelpIndex index;
  index.Read(bytes);
  return index;
}

// The titles of the page's entries, as the reader of rich text finds them.
std::vector<std::string> Titles(const HelpPage& page) {
  std::vector<std::string> titles;
  for (const mavro::RtfParagraph& paragraph : mavro::ReadRtf(page.rtf).paragraphs)
    for (const mavro::RtfRun& run : paragraph.runs)
      if (run.style.halfPoints == 28) titles.push_back(run.text);
  return titles;
}

std::vector<std::string> TitlesFor(std::string_view bytes, const HelpQuestion& question) {
  return Titles(search(IndexOf(bytes), question, 5000));
}

TEST(HelpEscape, BracesBackslashesAndNewlines) {
  EXPECT_EQ(EscapedForRtf("a{b}c\\d"), "a\\{b\\}c\\\\d");
  EXPECT_EQ(EscapedForRtf("a\n"), "a\\line");
  EXPECT_EQ(EscapedForRtf("\n{\n\n"), "\\line\\{\\line\\line");
  EXPECT_EQ(EscapedForRtf("a\nb\n1\n-\n x"), "a\\line b\\line 1\\line -\\line  x");
}

TEST(HelpPage, NothingFound_IsHeaderAndFooter) {
  const HelpPage page = search(HelpIndex(), {"", "x", ""}, 5000);
  EXPECT_FALSE(page.found);
  EXPECT_FALSE(page.foundAliases);
  EXPECT_EQ(page.rtf,
            "{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0\\fswiss\\fcharset238 Arial CE;}{\\f1\\fswiss"
            "\\fcharset238 Phonetic;}{\\f2\\fswiss\\fcharset238 Arial CE;}{\\f4\\fswiss\\fcharset"
            "238 Arial CE;}{\\f5\\fswiss\\fcharset238 Arial CE;}}\n{\\colortbl \\red0\\green0"
            "\\blue0;\\red0\\green0\\blue200;\\red180\\green0\\blue0;\\red255\\green200\\blue64;"
            "\\red0\\green180\\blue0;\\red0\\green0\\blue0;\\red255\\green0\\blue255;}\n"
            "\\viewkind4\\uc1\\pard\\f0\\fs24\n\\ulnone\\par}");
}

TEST(HelpPage, WholeEntry) {
  const HelpIndex index = IndexOf("#-m@name\n@b:B\n@t:T\n@p:P\n@r:R\nbody");
  std::string rtf;
  writeEntry(rtf, index.Topics()[0], index.Source(index.Topics()[0]), 4321);
  EXPECT_EQ(
      rtf,
      "\\par\\trowd\\trql\\trgaph108\\trrh600\\trleft36\\clbrdrt\\brdrdb\\clbrdrl\\brdrth"
      "\\clbrdrb\\brdrsh\\brdrs\\clbrdrr\\brdrdb\\clcbpat3\\clvertalc\\cellx4321\\pard\\intbl "
      "{\\f0\\fs28\\cf0 name}\\cell\\pard\\intbl \\row\\pard\\line{\\f1\\cf1\\i B}"
      "\\line{\\f2\\cf2 T}\\line{\\f2\\cf4 P}\\line{\\f2\\cf5 R}"
      "\\line\\par\\pard {\\f1\\cf0\\i body}");
}

TEST(HelpPage, EntryWithoutTexts_HasTitleAndAnEmptyBody) {
  const HelpIndex index = IndexOf("#-name");
  std::string rtf;
  writeEntry(rtf, index.Topics()[0], nullptr, 100);
  EXPECT_THAT(rtf, HasSubstr("\\row\\pard\\line\\line\\par\\pard {\\f1\\cf0\\i }"));
}

TEST(HelpPage, Word_IsComparedExactly) {
  constexpr std::string_view cIndex = "#-m@open\n#-m@Open\n#-m@open2\n#-n@open\n#-open\n";
  EXPECT_THAT(TitlesFor(cIndex, {"", "open", ""}), ElementsAre("open", "open", "open"));
  EXPECT_THAT(TitlesFor(cIndex, {"m", "open", ""}), ElementsAre("open"));
  EXPECT_THAT(TitlesFor(cIndex, {"m", "", ""}), ElementsAre("open", "Open", "open2"));
  EXPECT_THAT(TitlesFor(cIndex, {"M", "open", ""}), ElementsAre());
  EXPECT_EQ(TitlesFor(cIndex, {}).size(), 5u);
}

TEST(HelpPage, WordInTwoFiles_GivesTwoRows) {
  HelpIndex index;
  index.Read("#-fcntl.h@open\nthe call");
  index.Read("#-fstream@open\nthe stream");
  EXPECT_THAT(Titles(search(index, {"", "open", ""}, 5000)), ElementsAre("open", "open"));
}

// The bodies of the page's entries in their order.
std::string Bodies(const HelpPage& page) {
  std::string bodies;
  constexpr std::string_view cBody = "{\\f1\\cf0\\i ";
  for (size_t at = page.rtf.find(cBody); at != std::string::npos; at = page.rtf.find(cBody, at + 1))
    bodies += page.rtf[at + cBody.size()];
  return bodies;
}

TEST(HelpPage, ClassAtTheCaret_GoesFirst) {
  const HelpIndex index =
      IndexOf("#-a::List@add\n1\n#-Map@add\n2\n#-b::Set@add\n3\n#=b::Set b::Group\nx\n#-add\n4\n");
  const auto bodies = [&index](const char* first) {
    return Bodies(search(index, {"", "add", first}, 5000));
  };
  EXPECT_EQ(bodies(""), "1234");
  EXPECT_EQ(bodies("Set"), "3124");
  EXPECT_EQ(bodies("x::Set<int>"), "3124");
  EXPECT_EQ(bodies("Group"), "3124");
  EXPECT_EQ(bodies("Other"), "1234");
}

TEST(HelpPage, NamespaceBeforeTheWord_GoesFirst) {
  const HelpIndex index = IndexOf("#-Bar@max\n1\n#=algorithm@max algorithm@std::max\n2\n");
  EXPECT_EQ(Bodies(search(index, {"", "max", "std"}, 5000)), "21");
  EXPECT_EQ(Bodies(search(index, {"", "max", "other"}, 5000)), "12");
}

TEST(HelpPage, Alias_ShowsTheTextUnderItsOwnTitle) {
  const HelpIndex index = IndexOf("#=a b\n@b:Brief\nText");
  const HelpPage page = search(index, {"", "b", ""}, 5000);
  EXPECT_THAT(Titles(page), ElementsAre("b"));
  EXPECT_THAT(page.rtf, HasSubstr("{\\f1\\cf1\\i Brief}"));
  EXPECT_THAT(page.rtf, HasSubstr("{\\f1\\cf0\\i Text}"));
}

TEST(HelpPage, ReferenceToNothing_ShowsTheTitle) {
  const HelpPage page = search(IndexOf("#-a\n$7"), {"", "a", ""}, 5000);
  EXPECT_THAT(Titles(page), ElementsAre("a"));
  EXPECT_THAT(page.rtf, HasSubstr("{\\f1\\cf0\\i }"));
}

TEST(HelpPage, FoundAliases_SaysIfMoreThanFirstRecordsWereFound) {
  const HelpIndex index = IndexOf("#=a b\nText\n#-c\nC");
  EXPECT_TRUE(search(index, {"", "a", ""}, 1).found);
  EXPECT_FALSE(search(index, {"", "a", ""}, 1).foundAliases);
  EXPECT_TRUE(search(index, {"", "b", ""}, 1).foundAliases);
  EXPECT_TRUE(search(index, {}, 1).foundAliases);
}

TEST(HelpPage, RtfInAnEntry_StaysText) {
  const HelpPage page = search(IndexOf("#-}{\\b\n@b:}}}\n{\\rtf1 \\par \\u65?"), {}, 5000);
  std::string shown;
  const mavro::RtfText text = mavro::ReadRtf(page.rtf);
  for (const mavro::RtfParagraph& paragraph : text.paragraphs)
    for (const mavro::RtfRun& run : paragraph.runs) shown += run.text;
  EXPECT_TRUE(text.complete);
  EXPECT_THAT(shown, HasSubstr("}{\\b"));
  EXPECT_THAT(shown, HasSubstr("}}}"));
  EXPECT_THAT(shown, HasSubstr("{\\rtf1 \\par \\u65?"));
}

TEST(NotFoundPage, SaysSoAndOffersLinks) {
  const mavro::RtfText text = mavro::ReadRtf(NotFoundPage("pr{", "", {"printf", "operator<<"}));
  std::string shown;
  for (const mavro::RtfParagraph& paragraph : text.paragraphs) {
    for (const mavro::RtfRun& run : paragraph.runs) shown += run.text;
    shown += '\n';
  }
  EXPECT_TRUE(text.complete);
  EXPECT_EQ(shown, "pr{ is in none of the indexes.\n\nNear to it:\nprintf\noperator<<\n");
  EXPECT_THAT(text.links, ElementsAre("help:0", "help:1"));
}

TEST(NotFoundPage, NamesTheModuleThatWasSearched) {
  EXPECT_THAT(NotFoundPage("x", "stdio.h", {}), HasSubstr("is not in \\b stdio.h\\b0 ."));
}

TEST(NotFoundPage, Links_AreNumbered) {
  EXPECT_EQ(NumberOfHelpLink("help:2"), 2);
  EXPECT_EQ(NumberOfHelpLink("help:"), -1);
  EXPECT_EQ(NumberOfHelpLink("help:2x"), -1);
  EXPECT_EQ(NumberOfHelpLink("http://2"), -1);
}

}  // namespace
}  // namespace zendry
