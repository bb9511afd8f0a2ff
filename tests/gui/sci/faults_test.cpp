#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cstring>
#include <thread>

#include "EditorForm.h"
#include "Privileges.h"
#include "ScriptedDialogs.h"
#include "TempFolder.h"

// Files that other editors stumble over: targets without right to write, lines without end, sizes
// that change while they are read.

namespace mavro {
namespace {

namespace fs = std::filesystem;
using test::EditorForm;
using test::RunEditor;

struct SaveOptions {
  bool strip;
  bool ensure;
  const char* text;  // of the editor after the save, whether it worked or not
};

constexpr SaveOptions cSaveOptions[] = {{false, false, "Qa \t\nb "},
                                        {true, false, "Qa\nb"},
                                        {false, true, "Qa \t\nb \n"},
                                        {true, true, "Qa\nb\n"}};

TEST(SciFaults, Save_TargetWithoutWriteRight_EachOption_KeepsTheTextAndDirty) {
  const test::TempFolder folder;
  fs::permissions(folder.Path(), fs::perms::all);  // replacing the file would be allowed
  EditorForm form;
  RunEditor(form, [&] {
    for (const SaveOptions& row : cSaveOptions) {
      const std::string path = folder.Write("a.txt", "a \t\nb ");
      ASSERT_EQ(chmod(path.c_str(), 0444), 0);
      ASSERT_TRUE(form.editor.load(path).Ok());
      form.Type("Q");
      {
        const test::WithoutRights user;
        EXPECT_EQ(form.editor.save(path, {row.strip, row.ensure}).error,
                  "can't write " + path + ": Permission denied")
            << row.text;
      }
      EXPECT_EQ(form.editor.GetText(), row.text);
      EXPECT_TRUE(form.editor.dirty);
      EXPECT_EQ(folder.Read("a.txt"), "a \t\nb ");
      ASSERT_EQ(chmod(path.c_str(), 0644), 0);
      EXPECT_TRUE(form.editor.save(path, {row.strip, row.ensure}).Ok());
      EXPECT_EQ(folder.Read("a.txt"), row.text);
      EXPECT_FALSE(form.editor.dirty);
      EXPECT_EQ(folder.Names(), std::vector<std::string>{"a.txt"});
    }
  });
}

// Text that was read and not changed stays clean when writing it fails.
TEST(SciFaults, Save_CleanTextThatCantBeWritten_StaysClean) {
  const test::TempFolder folder;
  EditorForm form;
  RunEditor(form, [&] {
    ASSERT_TRUE(form.editor.load(folder.Write("a.txt", "a\n")).Ok());
    EXPECT_FALSE(form.editor.save(folder.Path()).Ok());
    EXPECT_FALSE(form.editor.dirty);
    EXPECT_EQ(form.editor.fileName, folder.Path("a.txt"));
  });
}

struct LongLineCase {
  const char* name;
  size_t bytes;
  const char* part;
  const char* lineEnd;
};

std::string LongLine(const LongLineCase& row) {
  std::string line;
  line.reserve(row.bytes + std::strlen(row.part));
  while (line.size() < row.bytes) line += row.part;
  return line;
}

// A step measures the line once, which is a second or two for ten megabytes. What would start again
// with each letter of it needed hours.
TEST(SciFaults, LineOfMegabytes_AskedFor_IsShownWalkedTypedIntoAndSaved) {
  const LongLineCase cases[] = {{"a.cpp", 10u << 20, "int a(b); ", ""},
                                {"a.txt", 1u << 20, "\xC3\xA4\xE4\xB8\x96 ", "\r\n"},
                                {"b.cpp", 1u << 20, "\"string without end ", "\n"},
                                {"c.txt", 1u << 20, "word", ""}};
  const test::TempFolder folder;
  test::ScriptedDialogs dialogs;
  EditorForm form;
  RunEditor(form, [&] {
    for (const LongLineCase& row : cases) {
      const std::string before = LongLine(row);
      const std::string path = folder.Write(row.name, before + row.lineEnd);
      ASSERT_TRUE(form.editor.load(path).Ok());
      dialogs.answers = {Answer::cYes};
      ASSERT_TRUE(form.editor.ShowLongLine());
      form.Settle();
      test::Key(form, Qt::Key_End);
      form.Settle();
      EXPECT_EQ(form.editor.CaretPosition(), static_cast<int>(before.size()));
      form.Type("Q");
      form.Settle();
      ASSERT_TRUE(form.editor.save(path).Ok());
      EXPECT_TRUE(folder.Read(row.name) == before + "Q" + row.lineEnd) << row.name;
    }
  });
}

// Another program cuts and lengthens the file all the time: what is read is some of its bytes, and
// reading ends.
TEST(SciFaults, Load_FileThatShrinksAndGrowsMeanwhile_HoldsOnlyItsBytes) {
  constexpr off_t cLong = 1'000'000;
  const test::TempFolder folder;
  const std::string path = folder.Write("a.txt", std::string(cLong, 'x'));
  EditorForm form;
  RunEditor(form, [&] {
    std::atomic<bool> ended = false;
    std::thread other([&] {
      for (off_t round = 0; !ended; ++round)
        if (truncate(path.c_str(), round % 7 * cLong / 7) != 0) return;
    });
    for (int i = 0; i < 100; ++i) {
      EXPECT_TRUE(form.editor.load(path).Ok());
      const std::string text = form.editor.GetText();
      EXPECT_LE(text.size(), static_cast<size_t>(cLong));
      EXPECT_EQ(text.find_first_not_of(std::string("x\0", 2)), std::string::npos);
      EXPECT_FALSE(form.editor.dirty);
    }
    ended = true;
    other.join();
  });
}

// Another program puts a file there and takes it away: each load has the whole text or none.
TEST(SciFaults, Load_FileThatComesAndGoes_IsWholeOrRefused) {
  const test::TempFolder folder;
  const std::string path = folder.Path("a.txt"), hidden = folder.Write("hidden", "whole\n");
  EditorForm form;
  RunEditor(form, [&] {
    std::atomic<bool> ended = false;
    std::thread other([&] {
      while (!ended) {
        std::error_code ignored;
        fs::rename(hidden, path, ignored);
        fs::rename(path, hidden, ignored);
      }
    });
    for (int i = 0; i < 200; ++i) {
      form.Fill("before");
      const bool loaded = form.editor.load(path).Ok();
      EXPECT_EQ(form.editor.GetText(), loaded ? "whole\n" : "before");
    }
    ended = true;
    other.join();
  });
}

}  // namespace
}  // namespace mavro
