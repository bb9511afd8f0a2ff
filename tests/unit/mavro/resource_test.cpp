#include "Resource.h"

#include <gtest/gtest.h>

namespace mavro {
namespace {

using std::string_view;
constexpr string_view cBytes("\x00\x01\xff\x00\"\\", 6);

// The program's resources are those of first.rc and second.rc of tests/data/resources.

TEST(Resource, FindResource_ById_AnswersTheFilesBytes) {
  EXPECT_EQ(FindResource("RCDATA", 7), "A note.\n");
}

TEST(Resource, FindResource_BytesOfAnyValue_ComeUnchanged) {
  EXPECT_EQ(FindResource("RCDATA", 0x10007), cBytes);
}

TEST(Resource, FindResource_SameIdOfAnotherType_IsAnotherResource) {
  EXPECT_EQ(FindResource("PNG", 7), cBytes);
}

TEST(Resource, FindResource_ByName) {
  EXPECT_EQ(FindResource("RCDATA", "note"), "A note.\n");
}

TEST(Resource, FindResource_SecondScript_AddsToTheFirst) {
  EXPECT_EQ(FindResource("RCDATA", "second"), cBytes);
}

TEST(Resource, FindResource_KeyGivenTwice_FirstCounts) {
  EXPECT_EQ(FindResource("RCDATA", 7).size(), 8u);
}

TEST(Resource, FindResource_TextOfAStringTable_IsFoundByItsId) {
  EXPECT_EQ(FindResource("STRINGTABLE", 7), "Grüße");
}

TEST(Resource, FindResource_EmptyFile_IsEmpty) {
  const string_view bytes = FindResource("RCDATA", "empty");
  EXPECT_TRUE(bytes.empty());
  EXPECT_NE(bytes.data(), nullptr);
}

TEST(Resource, FindResource_UnknownIdNameOrType_IsEmpty) {
  EXPECT_EQ(FindResource("RCDATA", 8).data(), nullptr);
  EXPECT_EQ(FindResource("RCDATA", "absent").data(), nullptr);
  EXPECT_EQ(FindResource("ICON", 7).data(), nullptr);
}

TEST(Resource, FindResource_NameOfDigits_IsNoId) {
  EXPECT_EQ(FindResource("RCDATA", "7").data(), nullptr);
  EXPECT_EQ(FindResource("RCDATA", 0).data(), nullptr);
}

TEST(Resource, FindResource_Data_IsFollowedByAZeroByte) {
  const string_view note = FindResource("RCDATA", 7);
  EXPECT_EQ(note.data()[note.size()], '\0');
}

}  // namespace
}  // namespace mavro
