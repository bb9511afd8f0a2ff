#pragma once

#include <algorithm>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "TagRun.h"
#include "TextInMemory.h"
#include "tags/TagParser.h"

namespace test {

// Types into a text as somebody would who wants to break its tags, and compares them after each
// change that they are said to outlive with those of a fresh parse.
//
//   test::RandomTyping typing(source, "a.cpp", 7);
//   for (int i = 0; i < 100; ++i) ASSERT_EQ(typing.Step(), "");
class RandomTyping {
 public:
  RandomTyping(std::string source, const std::string& name, unsigned seed)
      : editor(std::move(source), name), original(editor.text), random(seed) {
    Parse();
  }

  // Makes one change. Says what is different if the tags should have changed and are kept.
  std::string Step() {
    if (++steps % cStepsFromOriginal == 0) {
      editor.text = original;
      Parse();
    }
    const std::string before = editor.text;
    std::string told;
    for (int changes = 1 + Below(7) / 6; changes > 0; --changes) told += Change();
    if (!editor.bodies.Hold(editor)) {
      Parse();
      return {};
    }
    ++kept;
    const TagRun fresh = ParseTags(Read(), editor.path);
    if (Told(fresh) == Told(tags)) return {};
    return told + "\nbefore:\n" + before + "\nkept:\n" + Told(tags) + "\nfresh:\n" + Told(fresh);
  }

  int Kept() const { return kept; }

 private:
  static constexpr int cStepsFromOriginal = 60;

  int Below(int limit) {
    return limit < 1 ? 0 : static_cast<int>(random() % (unsigned(limit) + 1));
  }
  int Length() const { return static_cast<int>(editor.text.size()); }

  static std::string Told(const TagRun& run) {
    std::string told = run.lines + run.log;
    for (const zendry::IncludeRec& include : run.store.includes) told += include.name + '\n';
    return told;
  }

  // A byte 0xFF is the end of a text to who reads an editor.
  std::string Read() const { return editor.text.substr(0, editor.text.find('\xFF')); }

  void Parse() {
    tags = ParseTags(Read(), editor.path);
    editor.bodies.Put(zendry::theTagParser.gaveUp ? std::vector<zendry::TextPart>()
                                                  : zendry::theTagParser.bodies.Take());
  }

  int Place() {
    const auto& parts = editor.bodies.Parts();
    const int kind = Below(9);
    if (kind < 6 && !parts.empty()) {
      const zendry::TextPart& part = parts[static_cast<size_t>(Below(int(parts.size()) - 1))];
      return part.start + Below(part.end - part.start);
    }
    if (kind == 9) return Below(Length());
    constexpr std::string_view cNear = "{}()\"'/*\\#?\n:.";
    const size_t at = editor.text.find(cNear[static_cast<size_t>(Below(int(cNear.size()) - 1))],
                                       static_cast<size_t>(Below(Length())));
    if (at == std::string::npos) return Below(Length());
    return std::clamp(static_cast<int>(at) + Below(6) - 3, 0, Length());
  }

  std::string Added() {
    constexpr std::string_view cTyped = "abRLu8x01._ ;,=-+&|![]()<>%:~^@$*\t";
    constexpr std::string_view cWords[] = {
        "R",    "u8R",  "->",        "*/",         "/*", "//",     "#",    "'",    "\"",
        "\\",   "?\?/", "?\?>",      "{",          "}",  "\n",     "\r",   "\r\n", "#if 0\n",
        "0'1",  "'h",   "\\\n",      "#define A ", "%:", "<%",     "\xC3", "?",    "R\"x(",
        ")x\"", "\xD3", "\n#else\n", "\xFF",       "/",  "#endif", "{}",   "x"};
    const int kind = Below(19);
    if (kind == 0) return std::string(static_cast<size_t>(Below(1100)), 'x');
    if (kind == 1) return std::string(1, '\0');
    if (kind < 6) return std::string(cWords[static_cast<size_t>(Below(std::size(cWords) - 1))]);
    std::string typed;
    for (int length = 1 + Below(3); length > 0; --length)
      typed += cTyped[static_cast<size_t>(Below(int(cTyped.size()) - 1))];
    return typed;
  }

  // What an editor does: it removes, inserts, or does one after the other.
  std::string Change() {
    const int place = Place();
    const int kind = Below(3);
    const int removed = kind == 0 ? 0 : std::min(Below(kind == 1 ? 1 : 5), Length() - place);
    const std::string added = kind == 1 ? "" : Added();
    if (Below(1) == 0) {
      Replace(place, removed, added);
    } else {
      Replace(place, removed, "");
      Replace(place, 0, added);
    }
    return "at " + std::to_string(place) + ", " + std::to_string(removed) + " bytes by \"" + added +
           "\"\n";
  }

  void Replace(int place, int removed, const std::string& added) {
    editor.bodies.WillChange(editor, place, removed, static_cast<int>(added.size()));
    editor.text.replace(static_cast<size_t>(place), static_cast<size_t>(removed), added);
  }

  TextInMemory editor;
  const std::string original;
  std::mt19937 random;
  TagRun tags;
  int steps = 0;
  int kept = 0;
};

// A source whose functions hold all that makes bodies hard to pass over.
inline std::string NastySource(unsigned seed) {
  constexpr std::string_view cLines[] = {"  part.x = 1;",
                                         "  call(\"a\\\"b{\", 'c', '\\'');",
                                         "  s = R\"x(a { \" ' )y\" )x\";",
                                         "  s = u8R\"(first {",
                                         "  still } )\"; t = LR\"d-e(}})d-e\";",
                                         "  a = 1'000'000 + 0x1'f;",
                                         "  b = 'hff + 'd12;",
                                         "  // it's a { comment",
                                         "  // a long comment \\",
                                         "  /* { */ c = 2; /* a",
                                         "  */ d = 3;",
                                         "  x */ # define HIDDEN 1",
                                         "  y /* open",
                                         "*/ #define HIDDEN 2",
                                         "  x ?\\?/",
                                         "  x \\",
                                         "  #define HIDDEN 3",
                                         "#define IN_BODY(a) \\",
                                         "    a.b { \\",
                                         "#if 0",
                                         "#ifdef A",
                                         "#else",
                                         "#endif",
                                         "# define B /* over",
                                         "  lines */ after",
                                         "  if (a) {",
                                         "  }",
                                         "  f([&] { return g<a>(b); });",
                                         "  q = a ? b : c ?\?/ d ?\?> e;",
                                         "  using namespace one;",
                                         "FOO",
                                         "  struct Local { int m; } l;",
                                         "  text = \"over \\",
                                         "  lines { \";",
                                         "  #",
                                         "  \\",
                                         "",
                                         "  \xC3\xA4 = \xD3;"};
  constexpr std::string_view cHeads[] = {"void f%(int a) {",
                                         "A%::A%() : a(1), b{2} {",
                                         "TEST_F(A, b%) {",
                                         "struct S% { int a; void g() { a.",
                                         "int f%(a, b) int a; int b; {",
                                         "int v%[] = {",
                                         "namespace n% { int h() {",
                                         "MACRO(x // (\n) void k%() {",
                                         "auto l% = [] {",
                                         "#define M%(a) { a",
                                         "class C% EXPORT(x) { C%() { }",
                                         "int w%() { return 1; } int y(",
                                         "enum E% { eA, eB };"};
  constexpr std::string_view cEnds[] = {"}", "};", "} }", "}}", "} int z;", ""};
  constexpr std::string_view cLineEnds[] = {"\n", "\n", "\r\n", "\r"};
  std::mt19937 random(seed);
  const auto pick = [&random](const auto& list) { return list[random() % std::size(list)]; };
  const bool isMixed = random() % 4 == 0;
  const std::string_view own = pick(cLineEnds);
  std::string source;
  const auto add = [&](std::string_view line) {
    source += line;
    source += isMixed ? pick(cLineEnds) : own;
  };
  for (int function = 0; function < 8; ++function) {
    std::string head(pick(cHeads));
    for (size_t at = head.find('%'); at != head.npos; at = head.find('%'))
      head.replace(at, 1, std::to_string(function));
    add(head);
    for (unsigned lines = random() % 8; lines > 0; --lines) add(pick(cLines));
    add(pick(cEnds));
  }
  return source;
}

}  // namespace test
