#include "WindresScript.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace zendry {
namespace {

using namespace std::string_literals;

// The one line of a script as "TYPE id-or-name: bytes" or "TYPE id-or-name <file>", the resources
// separated by "; ", or the error.
std::string Text(const ResourceList& list) {
  if (!list.error.empty()) return list.error;
  std::string text;
  for (const Resource& resource : list.resources) {
    if (!text.empty()) text += "; ";
    text += resource.type + " " +
            (resource.name.empty() ? std::to_string(resource.id) : resource.name) +
            (resource.file.empty() ? ": " + resource.bytes : " <" + resource.file + ">");
  }
  return text;
}

std::string Read(std::string_view script) {
  return Text(ReadScript(script, "a.rc"));
}

// The bytes of inline data.
std::string Data(const std::string& items) {
  const ResourceList list = ReadScript("1 RCDATA {" + items + "}", "a.rc");
  return list.error.empty() ? list.resources.at(0).bytes : list.error;
}

struct ScriptRow {
  const char* name;
  std::string script, result;
};

void PrintTo(const ScriptRow& row, std::ostream* out) {
  *out << row.name;
}

std::string RowName(const testing::TestParamInfo<ScriptRow>& row) {
  return row.param.name;
}

struct Statement : testing::TestWithParam<ScriptRow> {};

TEST_P(Statement, ReadScript_GivesTheResources) {
  EXPECT_EQ(Read(GetParam().script), GetParam().result);
}

const ScriptRow cStatements[] = {
    {"nothing", "", ""},
    {"icon_of_a_file", "100 ICON \"app.ico\"", "ICON 100 <app.ico>"},
    {"bitmap_of_a_file", "1 BITMAP \"bar.bmp\"", "BITMAP 1 <bar.bmp>"},
    {"file_without_quotes", "1 ICON pictures/3d-app.ico\n2 ICON b.ico",
     "ICON 1 <pictures/3d-app.ico>; ICON 2 <b.ico>"},
    {"file_with_a_blank", "1 ICON \"my app.ico\"", "ICON 1 <my app.ico>"},
    {"backslashes_of_a_path", "1 ICON \"res\\\\new\\app.ico\"", "ICON 1 <res/new/app.ico>"},
    {"number_like_file", "1 ICON 99999999999.ico", "ICON 1 <99999999999.ico>"},
    {"type_of_the_user", "1 PNG \"a.png\"", "PNG 1 <a.png>"},
    {"type_in_small_letters", "1 png \"a.png\"", "PNG 1 <a.png>"},
    {"type_in_quotes", "1 \"png\" \"a.png\"", "PNG 1 <a.png>"},
    {"type_by_number", "1 24 \"app.manifest\"", "MANIFEST 1 <app.manifest>"},
    {"unknown_type_number", "1 300 \"a\"", "#300 1 <a>"},
    {"name_as_id", "logo PNG \"a.png\"", "PNG logo <a.png>"},
    {"name_in_quotes", "\"the logo\" PNG \"a.png\"", "PNG the logo <a.png>"},
    {"name_beyond_ascii", "größe PNG \"a.png\"", "PNG größe <a.png>"},
    {"name_that_begins_with_a_digit", "3d PNG \"a.png\"", "PNG 3d <a.png>"},
    {"case_of_names_matters", "a X \"f\"\nA X \"f\"", "X a <f>; X A <f>"},
    {"hexadecimal_id", "0x480001 PNG \"a.png\"", "PNG 4718593 <a.png>"},
    {"octal_id", "010 PNG \"a.png\"", "PNG 8 <a.png>"},
    {"expression_as_id", "(100+5)*2 PNG \"a.png\"", "PNG 210 <a.png>"},
    {"id_zero", "0 PNG \"a.png\"", "PNG 0 <a.png>"},
    {"largest_id", "0xFFFFFFFF PNG \"a.png\"", "PNG 4294967295 <a.png>"},
    {"attributes_of_memory", "1 ICON LOADONCALL MOVEABLE DISCARDABLE \"a.ico\"", "ICON 1 <a.ico>"},
    {"attributes_before_data", "1 RCDATA PURE PRELOAD {\"x\"}", "RCDATA 1: x"},
    {"options_before_data", "1 RCDATA LANGUAGE 9, 1 CHARACTERISTICS 4 VERSION 2 BEGIN \"x\" END",
     "RCDATA 1: x"},
    {"inline_data_in_words", "1 RCDATA BEGIN \"x\" END", "RCDATA 1: x"},
    {"inline_data_in_braces", "1 RCDATA {\"x\"}", "RCDATA 1: x"},
    {"inline_data_of_a_users_type", "1 TEXT {\"x\"}", "TEXT 1: x"},
    {"empty_inline_data", "1 RCDATA {}", "RCDATA 1: "},
    {"words_in_small_letters", "1 rcdata begin \"x\" end", "RCDATA 1: x"},
    {"strings", "STRINGTABLE BEGIN 1, \"one\" 2 \"two\", END",
     "STRINGTABLE 1: one; STRINGTABLE 2: two"},
    {"strings_in_parts", "STRINGTABLE {1, \"on\" \"e\"}", "STRINGTABLE 1: one"},
    {"strings_with_attributes", "STRINGTABLE DISCARDABLE LANGUAGE 7, 1 {1 \"x\"}",
     "STRINGTABLE 1: x"},
    {"two_string_tables", "STRINGTABLE {1 \"x\"} STRINGTABLE {2 \"y\"}",
     "STRINGTABLE 1: x; STRINGTABLE 2: y"},
    {"wide_string_is_utf8_too", "STRINGTABLE {1 L\"\\x20AC\"}", "STRINGTABLE 1: €"},
    {"language_of_the_script", "LANGUAGE 9, 1\n1 X \"f\"", "X 1 <f>"},
    {"directives_left_over", "#pragma code_page(65001)\n1 X \"f\"", "X 1 <f>"},
};
INSTANTIATE_TEST_SUITE_P(Windres, Statement, testing::ValuesIn(cStatements), RowName);

struct InlineData : testing::TestWithParam<ScriptRow> {};

TEST_P(InlineData, ReadScript_GivesTheBytes) {
  EXPECT_EQ(Data(GetParam().script), GetParam().result);
}

const ScriptRow cData[] = {
    {"numbers_take_16_bits", "1, 0x1234", "\x01\0\x34\x12"s},
    {"numbers_with_l_take_32_bits", "1L, 0x12345678l", "\x01\0\0\0\x78\x56\x34\x12"s},
    {"zero_with_l", "0L", "\0\0\0\0"s},
    {"negative_numbers", "-1, -2L", "\xFF\xFF\xFE\xFF\xFF\xFF"s},
    {"one_long_operand_makes_all_long", "1L|2", "\x03\0\0\0"s},
    {"operators", "6/2, 7&3, ~0, 1|4, 5-3, 2*(3+4)", "\x03\0\x03\0\xFF\xFF\x05\0\x02\0\x0E\0"s},
    {"constants_by_name", "VOS_NT_WINDOWS32L",
     "a.rc:1: expected a number, a text or END instead "
     "of \"VOS_NT_WINDOWS32L\""},
    {"texts_have_no_zero_at_the_end", "\"ab\"", "ab"},
    {"texts_and_numbers", "\"a\", 1, \"b\"", "a\x01\0b"s},
    {"commas_may_be_missing", "\"a\" \"b\"", "ab"},
    {"comma_at_the_end", "\"a\",", "a"},
    {"letters_escaped", R"("\a\b\f\n\r\t\v\\\"\'")", "\a\b\f\n\r\t\v\\\"'"},
    {"hexadecimal_escape_takes_two_digits", R"("\x41\xfff")",
     "A\xFF"
     "f"},
    {"octal_escape_takes_three_digits", R"("\101\0\1777")", "A\0\1777"s},
    {"unknown_escape_stays", R"("\q\x")", R"(\q\x)"},
    {"doubled_quote", R"("say ""hi""")", R"(say "hi")"},
    {"utf8_stays", "\"ä€\"", "ä€"},
    {"any_byte_stays", "\"\xFF\"", "\xFF"},
    {"wide_text_is_utf16", "L\"aä€\"", "a\0\xE4\0\xAC\x20"s},
    {"wide_text_beyond_16_bits", "L\"\xF0\x9F\x98\x80\"", "\x3D\xD8\x00\xDE"s},
    {"wide_escape_takes_four_digits", R"(L"\x20AC0")",
     "\xAC\x20"
     "0\0"s},
    {"wide_half_pair", R"(L"\xD800")", "\x00\xD8"s},
};
INSTANTIATE_TEST_SUITE_P(Windres, InlineData, testing::ValuesIn(cData), RowName);

struct Broken : testing::TestWithParam<ScriptRow> {};

TEST_P(Broken, ReadScript_SaysWhere) {
  EXPECT_EQ(Read(GetParam().script), GetParam().result);
}

const ScriptRow cBroken[] = {
    {"id_alone", "\n1", "a.rc:2: expected a type instead of the end of the script"},
    {"type_alone", "1 ICON",
     "a.rc:1: expected BEGIN or a file's name instead of the end of the script"},
    {"sign_as_id", ", ICON \"a\"", "a.rc:1: expected an id or a name instead of \",\""},
    {"end_without_begin", "END", "a.rc:1: expected an id or a name instead of \"END\""},
    {"file_name_not_closed", "1 ICON \"a.ico\n", "a.rc:1: the text has no closing quote"},
    {"file_name_empty", "1 ICON \"\"", "a.rc:1: the file's name is empty"},
    {"text_not_closed", "1 RCDATA {\n\"abc}", "a.rc:2: the text has no closing quote"},
    {"text_ends_in_a_backslash", "1 RCDATA {\"abc\\", "a.rc:1: the text has no closing quote"},
    {"data_not_closed", "1 RCDATA { 1,\n2,",
     "a.rc:2: expected a number, a text or END instead of the end of the script"},
    {"word_in_data", "1 RCDATA { foo }",
     "a.rc:1: expected a number, a text or END instead of \"foo\""},
    {"number_too_large", "1 RCDATA { 0x100000000 }", "a.rc:1: the number 0x100000000 is too large"},
    {"number_needs_32_bits", "1 RCDATA { 65536 }",
     "a.rc:1: 65536 needs 32 bits: write it with an L"},
    {"division_by_zero", "1 RCDATA { 1/0 }", "a.rc:1: division by zero"},
    {"result_too_large", "1 RCDATA { 0xFFFFFFFF*0xFFFFFFFF }", "a.rc:1: the result is too large"},
    {"parenthesis_not_closed", "1 RCDATA { (1 }", "a.rc:1: expected ')' instead of \"}\""},
    {"operand_missing", "1 RCDATA { 1+ }", "a.rc:1: expected a number instead of \"}\""},
    {"negative_id", "-1 ICON \"a\"", "a.rc:1: an id is 0 to 4294967295"},
    {"wide_text_not_utf8", "1 RCDATA { L\"\xFF\" }", "a.rc:1: the text is no UTF-8"},
    {"string_without_text", "STRINGTABLE { 1 }",
     "a.rc:1: expected a text in quotes instead of \"}\""},
    {"string_without_id", "STRINGTABLE { \"a\" }", "a.rc:1: expected a number instead of \"a\""},
    {"string_table_without_begin", "STRINGTABLE 1 \"a\"", "a.rc:1: expected BEGIN instead of 1"},
    {"string_table_not_closed", "STRINGTABLE {",
     "a.rc:1: expected a number instead of the end of the script"},
    {"dialog", "1 DIALOG 0,0,1,1 {}",
     "a.rc:1: DIALOG resources have no meaning here; forms are made by classes"},
    {"language_without_comma", "LANGUAGE 9 1", "a.rc:1: expected ',' instead of 1"},
    {"twice", "1 ICON \"a\"\n\n1 icon \"b\"",
     "a.rc:3: ICON 1 is there already\na.rc:1: here it is for the first time"},
    {"name_twice", "x ICON \"a\"\nx ICON \"b\"",
     "a.rc:2: ICON \"x\" is there already\na.rc:1: here it is for the first time"},
    {"string_twice", "STRINGTABLE {1 \"a\"\n1 \"b\"}",
     "a.rc:2: STRINGTABLE 1 is there already\na.rc:1: here it is for the first time"},
    {"nul_in_a_name", "\"a\\0\" ICON \"a\"", "a.rc:1: a name holds no NUL"},
};
INSTANTIATE_TEST_SUITE_P(Windres, Broken, testing::ValuesIn(cBroken), RowName);

TEST(WindresScript, ReadScript_LineMarkers_SayWhereALineComesFrom) {
  const std::string script =
      "# 0 \"top.rc\"\n# 1 \"dir/my \\\"part\\\".h\" 1\n\n1 ICON \"a\"\n# 7 \"top.rc\" 2\n1 ICON "
      "\"b\"\n";
  EXPECT_EQ(Read(script),
            "top.rc:7: ICON 1 is there already\n"
            "dir/my \"part\".h:2: here it is for the first time");
}

TEST(WindresScript, ReadScript_DeeplyNestedExpression_IsRefusedInWords) {
  EXPECT_EQ(Data(std::string(100000, '(') + "1"), "a.rc:1: the expression is nested too deeply");
  EXPECT_EQ(Data(std::string(100000, '~') + "1"), "a.rc:1: the expression is nested too deeply");
}

// 10,000 resources and the last one refused: look-ups of what is there take no time to speak of.
TEST(WindresScript, ReadScript_ManyResources_AreAllKept) {
  std::string script;
  for (int i = 0; i < 10000; ++i) script += std::to_string(i) + " RCDATA {1}\n";
  EXPECT_EQ(ReadScript(script, "a.rc").resources.size(), 10000u);
}

constexpr std::string_view cVersionBlock =
    "VS_VERSION_INFO VERSIONINFO\n"
    "FILEVERSION 1,2,3,4 PRODUCTVERSION 5,6 FILEFLAGSMASK VS_FFI_FILEFLAGSMASK\n"
    "FILEFLAGS VS_FF_DEBUG|VS_FF_PRERELEASE FILEOS VOS_NT_WINDOWS32 FILETYPE VFT_APP\n"
    "BEGIN\n"
    "  BLOCK \"StringFileInfo\" BEGIN BLOCK \"040904E4\" BEGIN\n"
    "    VALUE \"Name\", \"Me\"\n"
    "  END END\n"
    "  BLOCK \"VarFileInfo\" BEGIN VALUE \"Translation\", 0x409, 1252 END\n"
    "END\n";

std::string Wide(std::string_view ascii) {
  std::string wide;
  for (char c : ascii) wide += c + "\0"s;
  return wide + "\0\0"s;
}

TEST(WindresScript, VersionBlock_HoldsTheFixedNumbersAndTheTexts) {
  const ResourceList list = ReadScript(cVersionBlock, "a.rc");
  ASSERT_EQ(list.error, "");
  const Resource& resource = list.resources.at(0);
  EXPECT_EQ(resource.type, "VERSIONINFO");
  EXPECT_EQ(resource.id, 1u);
  const std::string& bytes = resource.bytes;
  EXPECT_EQ(bytes.substr(0, 6), std::string({static_cast<char>(bytes.size()),
                                             static_cast<char>(bytes.size() >> 8), 52, 0, 0, 0}));
  EXPECT_EQ(bytes.substr(6, 32), Wide("VS_VERSION_INFO"));
  EXPECT_EQ(bytes.substr(40, 28),
            "\xBD\x04\xEF\xFE\0\0\x01\0\x02\0\x01\0\x04\0\x03\0\x06\0\x05\0\0\0\0\0\x3F\0\0\0"s);
  EXPECT_EQ(bytes.substr(68, 12), "\x03\0\0\0\x04\0\x04\0\x01\0\0\0"s);
  EXPECT_NE(bytes.find(Wide("Name") + Wide("Me")), std::string::npos);
  EXPECT_NE(bytes.find(Wide("Translation") + "\0\0"s + "\x09\x04\xE4\x04"s), std::string::npos);
}

const ScriptRow cBrokenVersions[] = {
    {"version_without_block", "1 VERSIONINFO",
     "a.rc:1: expected BEGIN instead of the end of the script"},
    {"version_part_too_large", "1 VERSIONINFO FILEVERSION 70000",
     "a.rc:1: a part of a version is 0 to 65535"},
    {"version_block_not_closed", "1 VERSIONINFO { BLOCK \"a\" {",
     "a.rc:1: expected BLOCK, VALUE or END instead of the end of the script"},
    {"version_block_without_name", "1 VERSIONINFO { BLOCK {",
     "a.rc:1: expected a name in quotes instead of \"{\""},
    {"version_word", "1 VERSIONINFO { NAME }",
     "a.rc:1: expected BLOCK, VALUE or END instead of \"NAME\""},
    {"version_text_not_utf8", "1 VERSIONINFO { VALUE \"a\", \"\xFF\" }",
     "a.rc:1: the text is no UTF-8"},
};
INSTANTIATE_TEST_SUITE_P(WindresVersion, Broken, testing::ValuesIn(cBrokenVersions), RowName);

TEST(WindresScript, VersionBlock_NestedTooDeeply_IsRefused) {
  std::string script = "1 VERSIONINFO {";
  for (int i = 0; i < 20; ++i) script += "BLOCK \"a\" {";
  EXPECT_EQ(Read(script), "a.rc:1: blocks are nested too deeply");
}

TEST(WindresScript, VersionBlock_LongerThanItsLengthField_IsRefused) {
  const std::string text(40000, 'x');
  EXPECT_EQ(Read("1 VERSIONINFO { VALUE \"a\", \"" + text + "\" }"),
            "a.rc:1: the version block is longer than 64 KB");
}

}  // namespace
}  // namespace zendry
