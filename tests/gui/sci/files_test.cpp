#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <random>

#include "EditorForm.h"
#include "FileFaults.h"
#include "Privileges.h"
#include "ScriptedDialogs.h"
#include "TempFolder.h"

namespace mavro {
namespace {

using test::EditorForm;
using test::RunEditor;

std::string Utf16(const std::u16string& units, bool big) {
  std::string bytes;
  for (const char16_t unit : units) {
    const char high = static_cast<char>(unit >> 8), low = static_cast<char>(unit);
    bytes += big ? high : low;
    bytes += big ? low : high;
  }
  return bytes;
}

struct EncodingCase {
  const char* name;
  std::string bytes;
  std::string text;
  int encoding;
  int codePage;
  const char* shown;
};

const EncodingCase cEncodings[] = {
    {"ascii", "int a;\n", "int a;\n", 0, 0, "UTF-8"},
    {"empty", "", "", 0, 0, "UTF-8"},
    {"utf8 without mark", "\xC3\xA4\n", "\xC3\xA4\n", 0, 65001, "UTF-8"},
    {"other bytes", "\xE4 \xFF\n", "\xE4 \xFF\n", 0, 0, "8 bit"},
    {"utf8 with mark", "\xEF\xBB\xBFx\n", "x\n", 3, 65001, "UTF-8 BOM"},
    {"bad utf8 with mark", "\xEF\xBB\xBF\xFF\xC3\n", "\xFF\xC3\n", 3, 65001, "UTF-8 BOM"},
    {"two marks", "\xEF\xBB\xBF\xEF\xBB\xBFx", "\xEF\xBB\xBFx", 3, 65001, "UTF-8 BOM"},
    {"cookie on line 1", "// coding: utf-8\n", "// coding: utf-8\n", 4, 65001, "UTF-8"},
    {"cookie on line 2", "//\n// coding=UTF-8\n", "//\n// coding=UTF-8\n", 4, 65001, "UTF-8"},
    {"cookie on line 3", "\n\n// coding: utf-8\n", "\n\n// coding: utf-8\n", 0, 0, "UTF-8"},
    {"utf16 big",
     Utf16(u"\xFEFF"
           u"a\xE4\n",
           true),
     "a\xC3\xA4\n", 1, 65001, "UTF-16 BE"},
    {"utf16 little",
     Utf16(u"\xFEFF"
           u"a\xE4\n",
           false),
     "a\xC3\xA4\n", 2, 65001, "UTF-16 LE"},
    {"utf16 pair", Utf16(u"\xFEFF\xD83D\xDE00", false), "\xF0\x9F\x98\x80", 2, 65001, "UTF-16 LE"},
    {"utf16 lone", Utf16(u"\xFEFF\xD83Dx\xDE00", true), "\xED\xA0\xBDx\xED\xB8\x80", 1, 65001,
     "UTF-16 BE"},
    {"utf16 odd",
     Utf16(u"\xFEFF"
           u"a",
           false) +
         "b",
     "a", 2, 65001, "UTF-16 LE"},
    {"utf16 only a mark", "\xFF\xFE", "", 2, 65001, "UTF-16 LE"},
    {"utf16 high at the end", Utf16(u"\xFEFF\xD83D", false), "\xED\xA0\xBD", 2, 65001, "UTF-16 LE"},
    {"nul", std::string("a\0b\n", 4), std::string("a\0b\n", 4), 0, 0, "UTF-8"},
};

// The number may come from a damaged file.
TEST(SciFiles, TakeText_NumberThatIsNoEncoding_IsPlainText) {
  test::TempFolder folder;
  EditorForm form;
  RunEditor(form, [&] {
    for (const int number : {-1, cByteLetters + 1, 255}) {
      form.editor.TakeText("\u00E4\n", number, "");
      EXPECT_EQ(form.editor.encoding, cPlainText) << number;
      EXPECT_EQ(form.editor.EncodingName(), "UTF-8");
      ASSERT_TRUE(form.editor.save(folder.Path("a")).Ok()) << number;
      EXPECT_EQ(folder.Read("a"), "\u00E4\n") << number;
    }
    form.editor.TakeText("\u00E4\n", cByteLetters, "");
    ASSERT_TRUE(form.editor.save(folder.Path("a")).Ok());
    EXPECT_EQ(folder.Read("a"), "\xE4\n");
  });
}

TEST(SciFiles, LoadAndSave_EachEncoding_GivesTheSameBytes) {
  test::TempFolder folder;
  EditorForm form;
  RunEditor(form, [&] {
    for (const EncodingCase& row : cEncodings) {
      const std::string path = folder.Write("a.cpp", row.bytes);
      ASSERT_TRUE(form.editor.load(path).Ok()) << row.name;
      EXPECT_EQ(form.editor.GetText(), row.text) << row.name;
      EXPECT_EQ(form.editor.encoding, row.encoding) << row.name;
      EXPECT_EQ(form.editor.codePage, row.codePage) << row.name;
      EXPECT_EQ(form.editor.Send(SCI_GETCODEPAGE), row.codePage) << row.name;
      EXPECT_EQ(form.editor.EncodingName(), row.shown) << row.name;
      EXPECT_FALSE(form.editor.dirty);
      EXPECT_EQ(form.editor.CaretPosition(), 0);
      EXPECT_EQ(form.editor.Send(SCI_CANUNDO), 0);
      EXPECT_EQ(form.editor.fileName, path);
      ASSERT_TRUE(form.editor.save(folder.Path("b.cpp")).Ok()) << row.name;
      EXPECT_EQ(folder.Read("b.cpp"), row.bytes) << row.name;
    }
  });
}

// Bytes that are read in several pieces; the last one ends within a character, or isn't ASCII
// alone.
TEST(SciFiles, TextDigest_IsThatOfTheFile_AsLongAsTheTextIs) {
  test::TempFolder folder;
  EditorForm form;
  RunEditor(form, [&] {
    const std::string lines = [] {
      std::string text;
      while (text.size() < 300000) text += "int a;\n";
      return text;
    }();
    const std::string files[] = {"",
                                 lines,
                                 lines + "\xC3\xA4",
                                 "\xE4" + lines,
                                 "\xEF\xBB\xBF" + lines,
                                 lines.substr(0, 128 * 1024 - 1) + "\xC3\xA4\n",
                                 Utf16(u"\xFEFFx\xD83D\n", false) + "b"};
    for (const std::string& bytes : files) {
      ASSERT_TRUE(form.editor.load(folder.Write("a", bytes)).Ok());
      const std::optional<size_t> digest = SciEditor::DigestOfFile(folder.Path("a"));
      EXPECT_EQ(form.editor.TextDigest(), digest);
      form.editor.Send(SCI_APPENDTEXT, 1, "x");
      EXPECT_NE(form.editor.TextDigest(), digest);
      ASSERT_TRUE(form.editor.save(folder.Path("b")).Ok());
      EXPECT_EQ(form.editor.TextDigest(), SciEditor::DigestOfFile(folder.Path("b")));
      form.editor.OnCommand(cSciUndo);
      EXPECT_EQ(form.editor.TextDigest(), digest);
      EXPECT_EQ(form.editor.codePage == SC_CP_UTF8,
                bytes.size() > 2 && bytes != lines && bytes[0] != '\xE4')
          << bytes.size();
    }
  });
}

TEST(SciFiles, Save_BytesThatUtf16HasNoLetterFor_IsRefusedInWords) {
  test::TempFolder folder;
  const std::string before = Utf16(
      u"\xFEFF"
      u"a",
      false);
  const std::string path = folder.Write("a.txt", before);
  EditorForm form;
  RunEditor(form, [&] {
    ASSERT_TRUE(form.editor.load(path).Ok());
    form.editor.Select(0, 0);
    form.editor.ReplaceSelection("\xFF");
    const std::string error = form.editor.save(path).error;
    EXPECT_NE(error.find("UTF-16 LE has no letter for"), std::string::npos) << error;
    EXPECT_TRUE(form.editor.dirty);
    EXPECT_EQ(folder.Read("a.txt"), before);
  });
}

std::string LineEndsOf(int seed, std::mt19937& random) {
  static const char* const cEnds[] = {"\n", "\r\n", "\r"};
  return cEnds[seed % 4 < 3 ? seed % 4 : random() % 3];
}

// A file as nobody would write it: odd bytes, mixed line ends, NUL, perhaps no last line end, a
// mark, UTF-16 with lone surrogates and an odd byte; every hundredth has a line of a megabyte.
std::string OddFile(int seed, std::mt19937& random) {
  std::string bytes;
  const int kind = seed % 5;
  const size_t lines = random() % 12;
  for (size_t line = 0; line < lines; ++line) {
    for (unsigned n = random() % 30; n > 0; --n)
      bytes += static_cast<char>(kind == 0 ? random() % 256 : 32 + random() % 95);
    if (seed % 100 == 7 && line == 0) bytes.append(1 << 20, 'x');
    bytes += LineEndsOf(seed, random);
  }
  if (random() % 2) bytes += "no line end";
  if (kind == 1) bytes += "\xC3\xA4\xE4\xB8\x96\xF0\x9F\x98\x80";
  if (kind == 2) bytes = "\xEF\xBB\xBF" + bytes + "\xFF\xC3";
  if (kind < 3) return bytes;
  std::u16string units = u"\xFEFF";
  for (const char c : bytes) units += static_cast<char16_t>(static_cast<unsigned char>(c));
  for (unsigned n = random() % 8; n > 0; --n)
    units += static_cast<char16_t>(0xD800 + random() % 0x800);
  return Utf16(units, kind == 3) + (random() % 3 ? "" : "z");
}

// A place between two characters of the text, its ends included.
int PlaceToType(const std::string& text, std::mt19937& random) {
  size_t place = random() % (text.size() + 1);
  while (place > 0 && place < text.size() && (text[place] & 0xC0) == 0x80) --place;
  return static_cast<int>(place);
}

// How many UTF-16 units stand for the first bytes of a text in UTF-8.
size_t UnitsBefore(const std::string& text, size_t end) {
  size_t units = 0;
  for (size_t i = 0; i < end; ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if ((byte & 0xC0) != 0x80) units += byte >= 0xF0 ? 2 : 1;
  }
  return units;
}

// The bytes of a file in which a "Q" was typed at a place of its text.
std::string WithLetter(std::string bytes, const std::string& text, size_t place, int encoding) {
  const size_t mark = ByteOrderMark(static_cast<TextEncoding>(encoding)).size();
  if (encoding != cUtf16Big && encoding != cUtf16Little) return bytes.insert(mark + place, "Q");
  const std::string letter = encoding == cUtf16Big ? std::string("\0Q", 2) : std::string("Q\0", 2);
  return bytes.insert(mark + 2 * UnitsBefore(text, place), letter);
}

TEST(SciFiles, OneLetterTyped_ChangesThatLetterAndNothingElse_In1000Files) {
  std::mt19937 random(1);
  test::TempFolder folder;
  EditorForm form;
  form.editor.options->smartIndent = false;
  RunEditor(form, [&] {
    for (int seed = 0; seed < 1000; ++seed) {
      const std::string before = OddFile(seed, random);
      const std::string path = folder.Write("a.txt", before);
      ASSERT_TRUE(form.editor.load(path).Ok()) << seed;
      const std::string text = form.editor.GetText();
      const std::string shown = form.editor.GetRange(0, form.editor.Length());
      const int place = seed % 4 ? PlaceToType(shown, random) : 0;
      form.editor.Select(0, place);
      const size_t caret = form.editor.SelectedText().size();
      form.editor.Select(place, place);
      form.Type("Q");
      ASSERT_TRUE(form.editor.dirty) << seed;
      ASSERT_TRUE(form.editor.save(path).Ok()) << seed;
      ASSERT_FALSE(form.editor.dirty) << seed;
      ASSERT_TRUE(folder.Read("a.txt") == WithLetter(before, text, caret, form.editor.encoding))
          << "file " << seed << ", letter " << caret;
    }
  });
}

TEST(SciFiles, LineEnds_TheFirstOne_IsTyped) {
  const std::pair<const char*, const char*> cases[] = {
      {"a\r\nb\n", "CR LF"}, {"a\nb\r\n", "LF"}, {"a\rb", "CR"}, {"a", "LF"}, {"", "LF"}};
  test::TempFolder folder;
  EditorForm form;
  RunEditor(form, [&] {
    for (const auto& [bytes, name] : cases) {
      ASSERT_TRUE(form.editor.load(folder.Write("a", bytes)).Ok());
      EXPECT_EQ(form.editor.LineEndName(), name) << bytes;
    }
  });
}

TEST(SciFiles, Load_WhatIsNoFile_IsRefusedAndNothingChanges) {
  test::TempFolder folder;
  const std::string fifo = folder.Path("fifo");
  ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
  EditorForm form;
  RunEditor(form, [&] {
    form.Fill("kept");
    for (const std::string& path :
         {folder.Path("missing"), folder.Path(), fifo, std::string("/dev/zero"), std::string()}) {
      EXPECT_FALSE(form.editor.load(path).Ok()) << path;
      EXPECT_EQ(form.editor.GetText(), "kept") << path;
    }
  });
}

TEST(SciFiles, Load_Missing_SaysSoWhenAsked) {
  test::ScriptedDialogs dialogs;
  EditorForm form;
  RunEditor(form, [&] {
    EXPECT_FALSE(form.editor.load("/no/such").Ok());
    EXPECT_TRUE(dialogs.texts.empty());
    form.editor.reportMissing = true;
    EXPECT_FALSE(form.editor.load("/no/such").Ok());
    ASSERT_EQ(dialogs.texts.size(), 1u);
    EXPECT_NE(dialogs.texts[0].find("Could not open file \"/no/such\""), std::string::npos);
  });
}

TEST(SciFiles, Load_NoRightToRead_IsRefused) {
  test::TempFolder folder;
  const std::string path = folder.Write("a", "x");
  chmod(path.c_str(), 0);
  EditorForm form;
  RunEditor(form, [&] {
    const test::WithoutRights user;
    EXPECT_FALSE(form.editor.load(path).Ok());
  });
}

// A file below /proc reports no size: the bytes read count, as for a file that grows or shrinks.
TEST(SciFiles, Load_SizeThatIsNotTrue_ReadsWhatIsThere) {
  EditorForm form;
  RunEditor(form, [&] {
    ASSERT_TRUE(form.editor.load("/proc/self/status").Ok());
    EXPECT_EQ(form.editor.GetText().substr(0, 5), "Name:");
  });
}

TEST(SciFiles, Load_ASecondFile_ReplacesTheFirstWhole) {
  test::TempFolder folder;
  EditorForm form;
  RunEditor(form, [&] {
    ASSERT_TRUE(form.editor.load(folder.Write("a", "\xEF\xBB\xBFone\r\n")).Ok());
    form.editor.ToggleBookmark(0);
    form.editor.OnCommand(cSciReadOnly);
    ASSERT_TRUE(form.editor.load(folder.Write("b", "two\n")).Ok());
    EXPECT_EQ(form.editor.GetText(), "two\n");
    EXPECT_EQ(form.editor.encoding, 0);
    EXPECT_EQ(form.editor.Send(SCI_MARKERGET, 0), 0);
    EXPECT_EQ(form.editor.Send(SCI_GETREADONLY), 0);
  });
}

struct SaveCase {
  const char* before;
  bool strip;
  bool ensure;
  const char* after;
};

TEST(SciFiles, Save_StripAndLastLine_EachOption) {
  const SaveCase cases[] = {
      {"a \t\nb  ", false, false, "a \t\nb  "},
      {"a \t\nb  ", true, false, "a\nb"},
      {"a \t\nb  ", true, true, "a\nb\n"},
      {"a\r\nb", false, true, "a\r\nb\r\n"},
      {"a\n", false, true, "a\n"},
      {"", true, true, ""},
      {"  \n\t", true, false, "\n"},
      {"x \r\ny\t\rz ", true, false, "x\r\ny\rz"},
  };
  test::TempFolder folder;
  EditorForm form;
  RunEditor(form, [&] {
    for (const SaveCase& row : cases) {
      const std::string path = folder.Write("a", row.before);
      ASSERT_TRUE(form.editor.load(path).Ok());
      ASSERT_TRUE(form.editor.save(path, {row.strip, row.ensure}).Ok());
      EXPECT_EQ(folder.Read("a"), row.after);
      EXPECT_FALSE(form.editor.dirty);
    }
  });
}

struct CaretCase {
  const char* before;  // "[" and "]" are the ends of the selection
  SaveTidying tidying;
  const char* after;
};

TEST(SciFiles, Save_Stripping_MovesNoCaret) {
  const CaretCase cases[] = {
      {"a \nb []  \nc ", {.stripTrailing = true}, "a\nb []\nc"},
      {"a \nb  []\nc ", {.stripTrailing = true}, "a\nb  []\nc"},
      {"a \nb[]  \nc ", {.stripTrailing = true}, "a\nb[]\nc"},
      {"a [ \nb  ] \nc ", {.stripTrailing = true}, "a [\nb  ]\nc"},
      {"a \n []  \nc ", {.stripTrailing = true, .keepCaretLines = true}, "a\n []  \nc"},
      {"a \nb[]", {.stripTrailing = true, .ensureLastLine = true}, "a\nb[]\n"},
      {"a \n[b]", {.ensureLastLine = true}, "a \n[b]\n"},
      {"a  \nb[] ", {.stripTrailing = true, .keepBreaks = true}, "a  \nb[]"},
  };
  test::TempFolder folder;
  EditorForm form;
  RunEditor(form, [&] {
    for (const CaretCase& row : cases) {
      std::string text = row.before;
      const size_t start = text.find('[');
      text.erase(start, 1);
      const size_t end = text.find(']');
      text.erase(end, 1);
      ASSERT_TRUE(form.editor.load(folder.Write("a", text)).Ok());
      for (int line = 0; line < form.editor.LineCount(); ++line) form.editor.ToggleBookmark(line);
      const int lines = form.editor.LineCount();
      form.editor.Select(static_cast<int>(start), static_cast<int>(end));
      const auto top = form.editor.Send(SCI_GETFIRSTVISIBLELINE);
      ASSERT_TRUE(form.editor.save(folder.Path("a"), row.tidying).Ok());
      std::string shown = form.editor.GetText();
      const auto [first, last] = form.editor.Selection();
      shown.insert(static_cast<size_t>(last), "]").insert(static_cast<size_t>(first), "[");
      EXPECT_EQ(shown, row.after) << row.before;
      EXPECT_EQ(form.editor.Send(SCI_GETFIRSTVISIBLELINE), top);
      for (int line = 0; line < lines; ++line)
        EXPECT_TRUE(form.editor.Send(SCI_MARKERGET, static_cast<std::uintptr_t>(line)) & 2) << line;
      form.editor.OnCommand(cSciUndo);
      EXPECT_EQ(form.editor.GetText(), text) << "one step";
    }
  });
}

TEST(SciFiles, Save_OfAReadOnlyText_ChangesNothing) {
  test::TempFolder folder;
  EditorForm form;
  RunEditor(form, [&] {
    ASSERT_TRUE(form.editor.load(folder.Write("a", "a ")).Ok());
    form.editor.SetReadOnly(true);
    ASSERT_TRUE(form.editor.save(folder.Path("a"), {true, true}).Ok());
    EXPECT_EQ(folder.Read("a"), "a ");
  });
}

TEST(SciFiles, Save_Stripping_IsOneStepBack) {
  test::TempFolder folder;
  EditorForm form;
  RunEditor(form, [&] {
    const std::string path = folder.Write("a", "a \nb \nc \n");
    ASSERT_TRUE(form.editor.load(path).Ok());
    ASSERT_TRUE(form.editor.save(path, {.stripTrailing = true}).Ok());
    form.editor.OnCommand(cSciUndo);
    EXPECT_EQ(form.editor.GetText(), "a \nb \nc \n");
    EXPECT_TRUE(form.editor.dirty);
  });
}

TEST(SciFiles, Save_EverySystemCallFailing_OldOrNewContentAndStillDirty) {
  test::TempFolder folder;
  EditorForm form;
  RunEditor(form, [&] {
    const std::string path = folder.Write("a", "old  \n");
    bool hit = true;
    for (int call = 1; hit; ++call) {
      folder.Write("a", "old  \n");
      ASSERT_TRUE(form.editor.load(path).Ok());
      form.editor.ReplaceSelection("new ");
      test::FileFaults faults(call, ENOSPC);
      const bool saved = form.editor.save(path, {.stripTrailing = true}).Ok();
      hit = faults.hit;
      EXPECT_EQ(form.editor.GetText(), "new old\n") << "the stripped text stays";
      EXPECT_EQ(form.editor.dirty, !saved) << call;
      const std::string content = folder.Read("a");
      EXPECT_TRUE(content == "new old\n" || (!saved && content == "old  \n")) << call;
      ASSERT_LT(call, 200);
    }
  });
}

TEST(SciFiles, Save_FolderAsTarget_IsRefused) {
  test::TempFolder folder;
  EditorForm form;
  RunEditor(form, [&] {
    form.Fill("a ");
    form.editor.ReplaceSelection("x");
    EXPECT_FALSE(form.editor.save(folder.Path(), {.stripTrailing = true}).Ok());
    EXPECT_EQ(form.editor.GetText(), "xa") << "stripped all the same";
    EXPECT_TRUE(form.editor.dirty);
  });
}

TEST(SciFiles, ForeignLetters_TypedIntoAscii_AreUtf8) {
  test::TempFolder folder;
  EditorForm form;
  RunEditor(form, [&] {
    const std::string path = folder.Write("a", "int a;\n");
    ASSERT_TRUE(form.editor.load(path).Ok());
    EXPECT_EQ(form.editor.codePage, 0);
    QTest::sendKeyEvent(QTest::Click, test::WidgetOf(form.editor), Qt::Key_unknown,
                        QStringLiteral("\u00E4"), Qt::NoModifier);
    EXPECT_EQ(form.editor.codePage, 65001);
    EXPECT_EQ(form.editor.encoding, 0);
    ASSERT_TRUE(form.editor.save(path).Ok());
    EXPECT_EQ(folder.Read("a"), "\xC3\xA4int a;\n");
  });
}

TEST(SciFiles, ForeignLetters_TypedIntoOtherBytes_AreOneByte) {
  test::TempFolder folder;
  EditorForm form;
  RunEditor(form, [&] {
    const std::string path = folder.Write("a", "\xFF\n");
    ASSERT_TRUE(form.editor.load(path).Ok());
    QTest::sendKeyEvent(QTest::Click, test::WidgetOf(form.editor), Qt::Key_unknown,
                        QStringLiteral("\u00E4"), Qt::NoModifier);
    ASSERT_TRUE(form.editor.save(path).Ok());
    EXPECT_EQ(folder.Read("a"), "\xE4\xFF\n");
  });
}

TEST(SciFiles, HugeText_IsShownWithoutStylesAndFolds) {
  test::TempFolder folder;
  std::string bytes;
  while (bytes.size() <= 64u << 20) bytes += "int function(int a) { return a; }  // a line of it\n";
  const std::string path = folder.Write("huge.cpp", bytes);
  EditorForm form;
  form.editor.options->foldMargin = true;
  RunEditor(form, [&] {
    form.editor.OnCommand(cSciWrapLines);
    ASSERT_TRUE(form.editor.load(path).Ok());
    EXPECT_TRUE(form.editor.IsHuge());
    EXPECT_EQ(form.editor.Send(SCI_GETLEXER), 1);
    EXPECT_EQ(form.editor.Send(SCI_GETMARGINWIDTHN, 2), 0);
    EXPECT_EQ(form.editor.Send(SCI_GETWRAPMODE), 0);
    form.editor.OnCommand(cSciWrapLines);
    EXPECT_EQ(form.editor.Send(SCI_GETWRAPMODE), 0);
    ASSERT_TRUE(form.editor.load(folder.Write("a.cpp", "int a;\n")).Ok());
    EXPECT_FALSE(form.editor.IsHuge());
    EXPECT_EQ(form.editor.Send(SCI_GETLEXER), 3);
    EXPECT_EQ(form.editor.Send(SCI_GETMARGINWIDTHN, 2), 20);
  });
}

TEST(SciFiles, HiddenCharacters_AreWiderThanNothing) {
  test::TempFolder folder;
  EditorForm form;
  RunEditor(form, [&] {
    ASSERT_TRUE(form.editor.load(folder.Write("a", "a\u200B\u202Eb\u00ADc\u2066\n")).Ok());
    form.Settle();
    const auto x = [&](int position) {
      return form.editor.Send(SCI_POINTXFROMPOSITION, 0, static_cast<std::intptr_t>(position));
    };
    EXPECT_GT(x(4) - x(1), 10) << "zero width space";
    EXPECT_GT(x(7) - x(4), 10) << "right to left override";
    EXPECT_GT(x(10) - x(8), 10) << "soft hyphen";
    EXPECT_GT(x(14) - x(11), 10) << "isolate";
  });
}

}  // namespace
}  // namespace mavro
