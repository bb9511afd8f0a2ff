#include "build/OutputParser.h"

#include <gtest/gtest.h>

#include <vector>

namespace zendry {
namespace {

// The meaning of all lines together: one text per row, and the counts.
struct Reading {
  std::vector<std::string> rows;
  int errors = 0;
  int warnings = 0;

  void Take(const LineMeaning& meaning) {
    if (meaning.severity == LineMeaning::cError) ++errors;
    if (meaning.severity == LineMeaning::cWarning) ++warnings;
    const ErrorRow& row = meaning.row;
    if (meaning.kind == LineMeaning::cNewRow)
      rows.push_back(row.file + "|" + std::to_string(row.line) + "|" + row.text);
    if (meaning.kind == LineMeaning::cAppendToLastRow && !rows.empty()) rows.back() += row.text;
  }
};

Reading Compile(const std::vector<std::string>& lines) {
  Reading reading;
  CompileLines state;
  for (const std::string& line : lines) reading.Take(ReadCompileLine(state, line));
  return reading;
}

Reading Link(const std::string& line) {
  Reading reading;
  reading.Take(ReadLinkLine(line));
  return reading;
}

using Rows = std::vector<std::string>;

TEST(CompilerOutput, drive_letter_in_front) {
  const Reading reading = Compile({"C:/p/a.cpp:12: error: x"});
  EXPECT_EQ(reading.rows, Rows{"C:/p/a.cpp|12|error: x"});
  EXPECT_EQ(reading.errors, 1);
}

TEST(CompilerOutput, in_function_without_number) {
  EXPECT_EQ(Compile({"a.cpp: In function 'int f()':"}).rows, Rows{});
}

TEST(CompilerOutput, sixth_digit) {
  EXPECT_EQ(Compile({"a.cpp:123456: error"}).rows, Rows{});
  EXPECT_EQ(Compile({"a.cpp:12345: error"}).rows, Rows{"a.cpp|12345|error"});
}

TEST(CompilerOutput, two_notes_at_one_place_come_with_the_next_row) {
  const Reading reading = Compile({"a.cpp:3: error: one ", "a.cpp:3: note: two ",
                                   "a.cpp:3: note: three ", "b.cpp:4: error: four"});
  EXPECT_EQ(reading.rows,
            (Rows{"a.cpp|3|error: one ", "b.cpp|4|error: four note: two  note: three "}));
  EXPECT_EQ(reading.errors, 2);
}

TEST(CompilerOutput, first_note_of_a_place_has_its_own_row) {
  EXPECT_EQ(Compile({"a.cpp:3: note: x", "a.cpp:4: note: y", "b.cpp:4: note: z"}).rows,
            (Rows{"a.cpp|3|note: x", "a.cpp|4|note: y", "b.cpp|4|note: z"}));
}

TEST(CompilerOutput, error_at_the_same_place_has_its_own_row) {
  EXPECT_EQ(Compile({"a.cpp:3: error: x", "a.cpp:3: warning: y"}).rows,
            (Rows{"a.cpp|3|error: x", "a.cpp|3|warning: y"}));
}

TEST(CompilerOutput, indented_by_two_blanks_extends_the_last_row) {
  EXPECT_EQ(Compile({"a.cpp:3: error: x", "  more", "\t more"}).rows,
            Rows{"a.cpp|3|error: x  more\t more"});
}

TEST(CompilerOutput, indented_before_any_row_is_nothing) {
  EXPECT_EQ(Compile({"    from a.cpp:3:"}).rows, Rows{});
}

TEST(CompilerOutput, indented_by_one_blank_is_a_line_like_others) {
  EXPECT_EQ(Compile({" a.cpp:3: error: x"}).rows, Rows{" a.cpp|3|error: x"});
}

TEST(CompilerOutput, blank_behind_the_first_letter_is_part_of_the_path) {
  EXPECT_EQ(Compile({"a b.cpp:3: error: x"}).rows, Rows{"a b.cpp|3|error: x"});
}

TEST(CompilerOutput, column_is_passed_over) {
  const Reading reading = Compile({"a.cpp:12:5: error: x", "a.cpp:13:123456: warning: y"});
  EXPECT_EQ(reading.rows, (Rows{"a.cpp|12|error: x", "a.cpp|13|warning: y"}));
  EXPECT_EQ(reading.errors, 1);
  EXPECT_EQ(reading.warnings, 1);
}

TEST(CompilerOutput, column_is_kept_for_the_caret) {
  CompileLines state;
  EXPECT_EQ(ReadCompileLine(state, "a.cpp:12:5: error: x").row.column, 5);
  EXPECT_EQ(ReadCompileLine(state, "a.cpp:13: error: x").row.column, 0);
  EXPECT_EQ(ReadCompileLine(state, "a.cpp:14:999999: error: x").row.column, 999999);
  EXPECT_EQ(ReadCompileLine(state, "a.cpp:15:1234567: error: x").row.column, 0);
  EXPECT_EQ(ReadCompileLine(state, "a.cpp:16: 5: x").row.column, 0);
}

TEST(CompilerOutput, digits_that_are_no_column) {
  EXPECT_EQ(Compile({"a.cpp:12: 5: x"}).rows, Rows{"a.cpp|12|5: x"});
  EXPECT_EQ(Compile({"a.cpp:12:5 apples"}).rows, Rows{"a.cpp|12| apples"});
}

TEST(CompilerOutput, warning_in_a_file_named_error) {
  const Reading reading = Compile({"error.cpp:3:1: warning: error of the user"});
  EXPECT_EQ(reading.errors, 0);
  EXPECT_EQ(reading.warnings, 1);
}

TEST(CompilerOutput, path_with_spaces) {
  EXPECT_EQ(Compile({"my dir/a b.cpp:3:1: error: x"}).rows, Rows{"my dir/a b.cpp|3|error: x"});
}

TEST(CompilerOutput, included_from) {
  EXPECT_EQ(Compile({"In file included from a.h:1,",
                     "                 from a.cpp:2:", "In file included from a.cpp:2:"})
                .rows,
            Rows{});
}

TEST(CompilerOutput, include_chain_comes_after_the_error_it_explains) {
  EXPECT_EQ(Compile({"a.cpp:1: error: x", "In file included from b.h:1,",
                     "                 from b.cpp:2:", "c.h:5:1: error: y"})
                .rows,
            (Rows{"a.cpp|1|error: x", "c.h|5|error: y from b.cpp:2:"}));
  EXPECT_EQ(Compile({"a.cpp:1: error: x", "  from here on"}).rows,
            (Rows{"a.cpp|1|error: x  from here on"}));
}

TEST(CompilerOutput, endless_chain_of_includes_is_cut) {
  std::vector<std::string> lines(10'000, "                 from a.h:1,");
  lines.push_back("a.h:1: error: x");
  EXPECT_LT(Compile(lines).rows.at(0).size(), 1100u);
}

TEST(CompilerOutput, names_with_a_colon_or_blanks_in_front_are_known) {
  Reading reading;
  CompileLines state;
  state.unusualNames = {"a:7:b.cpp", "  c.cpp"};
  for (const char* line : {"a:7:b.cpp:3:1: error: x", "  c.cpp:4: warning: y", "  c.cppx"})
    reading.Take(ReadCompileLine(state, line));
  EXPECT_EQ(reading.rows, (Rows{"a:7:b.cpp|3|error: x", "  c.cpp|4|warning: y  c.cppx"}));
}

TEST(CompilerOutput, first_letters_decide) {
  const Reading reading = Compile(
      {"a.cpp:1: blunder", "a.cpp:2: omen", "a.cpp:3: fatal error: x", "a.cpp:4: Error: x"});
  EXPECT_EQ(reading.errors, 1);
  EXPECT_EQ(reading.warnings, 1);
  EXPECT_EQ(reading.rows.size(), 4u);
}

TEST(CompilerOutput, three_characters_are_plain) {
  const Reading reading = Compile({"a.cpp:1: err", "a.cpp:2: erro"});
  EXPECT_EQ(reading.errors, 1);
  EXPECT_EQ(reading.rows.size(), 2u);
}

TEST(CompilerOutput, broken_lines_are_nothing) {
  EXPECT_EQ(Compile({"", ":", "::", "a", "ab:", "ab:1", "ab:1:", "ab:1: ", "ab:12:5:", "ab:12:5: ",
                     "ab::x", "no colon at all", "a:b", std::string(3, '\0')})
                .rows,
            Rows{});
}

TEST(CompilerOutput, words_instead_of_a_number_are_line_zero) {
  EXPECT_EQ(Compile({"tool:x: text"}).rows, Rows{"tool|0|text"});
}

TEST(CompilerOutput, a_megabyte_in_one_line) {
  const std::string text(1 << 20, 'e');
  EXPECT_EQ(Compile({"a.cpp:1: " + text}).rows, Rows{"a.cpp|1|" + text});
}

TEST(CompilerOutput, bytes_stay_as_the_tool_wrote_them) {
  EXPECT_EQ(Compile({"\xff.cpp:1: error: \x1b[1m\xe4"}).rows,
            Rows{"\xff.cpp|1|error: \x1b[1m\xe4"});
}

TEST(LinkerOutput, library_not_found_is_a_row_that_is_not_counted) {
  const Reading reading = Link("ld: cannot find -lx");
  EXPECT_EQ(reading.rows, Rows{"LINKER|0|ld: cannot find -lx"});
  EXPECT_EQ(reading.errors, 0);
}

TEST(LinkerOutput, without_colon_is_nothing) {
  EXPECT_EQ(Link("undefined reference to x").rows, Rows{});
}

TEST(LinkerOutput, undefined_reference_names_the_object) {
  const Reading reading = Link("/usr/bin/ld:a.o:a.cpp: undefined reference to `f()'");
  EXPECT_EQ(reading.rows, Rows{"a.o|0|LINKER: a.o:a.cpp: undefined reference to `f()'"});
  EXPECT_EQ(reading.errors, 1);
}

TEST(LinkerOutput, undefined_reference_without_second_colon_names_the_rest) {
  EXPECT_EQ(Link("x: undefined reference to f").rows,
            Rows{" undefined reference to f|0|LINKER:  undefined reference to f"});
}

TEST(LinkerOutput, undefined_reference_before_the_colon_is_not_one) {
  EXPECT_EQ(Link("undefined reference: x").errors, 0);
}

TEST(LinkerOutput, lines_of_the_linker_in_a_compilers_run) {
  for (const char* line : {"/usr/bin/ld: a.o: x", "ld: x", "collect2: error: x",
                           "a.c:(.text+0x9): undefined reference to `f'"})
    EXPECT_TRUE(IsLinkerLine(line)) << line;
  for (const char* line : {"a.c:3: error: x", "fold: x", "", "ld", "build/ldx: y"})
    EXPECT_FALSE(IsLinkerLine(line)) << line;
}

TEST(LinkerOutput, place_of_a_source) {
  const auto place = [](std::string_view line) {
    const LinePlace found = PlaceInLinkLine(line);
    return std::string(found.file) + "|" + std::to_string(found.line);
  };
  EXPECT_EQ(place("/usr/bin/ld: /p/a.cpp:5: undefined reference to `f()'"), "/p/a.cpp|5");
  EXPECT_EQ(place("/p/a.cpp:12345: undefined reference to `f()'"), "/p/a.cpp|12345");
  EXPECT_EQ(place("/p/a.cpp:123456: undefined"), "|0");
  EXPECT_EQ(place("a.cpp:(.text+0x5): undefined reference to `f()'"), "|0");
  EXPECT_EQ(place("ld: a.o: in function `main':"), "|0");
  EXPECT_EQ(place("a.cpp:5"), "|0");
  EXPECT_EQ(place(":5: x"), "|0");
  EXPECT_EQ(place("ld::"), "|0");
}

TEST(LinkerOutput, source_before_an_offset) {
  EXPECT_EQ(SourceInLinkLine("/usr/bin/ld: a.c:(.text+0x9): undefined reference to `f'"), "a.c");
  EXPECT_EQ(SourceInLinkLine("src/a b.c:(.text+0x9): undefined reference to `f'"), "src/a b.c");
  EXPECT_EQ(SourceInLinkLine("/usr/bin/ld: a.o: in function `f(int)':"), "");
  EXPECT_EQ(SourceInLinkLine(":(.text+0x9)"), "");
  EXPECT_EQ(SourceInLinkLine(""), "");
}

TEST(ArchiverOutput, only_lines_that_speak_of_an_error_are_rows) {
  Reading reading;
  reading.Take(ReadArchiveLine("ar: creating p.a"));
  reading.Take(ReadArchiveLine("ar: internal error"));
  EXPECT_EQ(reading.rows, Rows{"AR: |0|ar: internal error"});
  EXPECT_EQ(reading.errors, 0);
}

}  // namespace
}  // namespace zendry
