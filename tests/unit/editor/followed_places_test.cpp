#include "editor/FollowedPlaces.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace zendry {
namespace {

using Places = std::vector<int>;

// A text in which the places of "#" are followed, looked for only where it has changed.
class FollowedText {
 public:
  explicit FollowedText(std::string itsText) : text(std::move(itsText)) {}

  void Replace(int start, int removed, const std::string& added) {
    followed.WillChange(start, removed, static_cast<int>(added.size()));
    text.replace(static_cast<size_t>(start), static_cast<size_t>(removed), added);
  }
  const Places& Look() {
    const FollowedPlaces::Part part = followed.Changed(Length());
    if (part.end >= part.start) followed.Put(part, Signs(part));
    return followed.Places();
  }
  Places All() const { return Signs({0, Length()}); }
  int Length() const { return static_cast<int>(text.size()); }

  FollowedPlaces followed;

 private:
  // At the part's end too: a look goes to the end of a line.
  Places Signs(FollowedPlaces::Part part) const {
    Places signs;
    for (int at = part.start; at <= part.end && at < Length(); ++at)
      if (text[static_cast<size_t>(at)] == '#') signs.push_back(at);
    return signs;
  }

  std::string text;
};

TEST(FollowedPlaces, AreLookedForWhereTheTextHasChanged) {
  FollowedText text("#aa#bb#cc");
  EXPECT_EQ(text.Look(), (Places{0, 3, 6}));
  EXPECT_EQ(text.followed.BytesSeen(), 9U);
  text.Replace(1, 1, "xyz");
  EXPECT_EQ(text.Look(), (Places{0, 5, 8}));
  EXPECT_EQ(text.followed.BytesSeen(), 12U);
  EXPECT_EQ(text.Look(), (Places{0, 5, 8}));
  EXPECT_EQ(text.followed.BytesSeen(), 12U) << "nothing has changed";
}

TEST(FollowedPlaces, GoWithWhatIsRemovedAndComeWithWhatIsAdded) {
  FollowedText text("#aa#bb#cc");
  text.Look();
  text.Replace(2, 3, "");
  EXPECT_EQ(text.Look(), (Places{0, 3}));
  text.Replace(9 - 3, 0, "#");
  EXPECT_EQ(text.Look(), (Places{0, 3, 6}));
}

TEST(FollowedPlaces, SeveralChangesBeforeALook_AreOnePart) {
  FollowedText text("#aa#bb#cc");
  text.Look();
  text.Replace(7, 0, "#");
  text.Replace(1, 0, "##");
  EXPECT_EQ(text.Look(), text.All());
}

TEST(FollowedPlaces, Lost_MeansTheWholeText) {
  FollowedText text("#aa");
  text.Look();
  text.followed.Lose();
  EXPECT_EQ(text.followed.Changed(3).start, 0);
  EXPECT_EQ(text.followed.Changed(3).end, 3);
}

TEST(FollowedPlaces, RandomChanges_LeaveThePlacesOfTheText) {
  std::mt19937 random(7);
  const auto below = [&](int limit) { return static_cast<int>(random() % (limit + 1)); };
  FollowedText text("a#b##c");
  for (int step = 0; step < 5000; ++step) {
    const int start = below(text.Length());
    std::string added;
    for (int left = below(4); left > 0; --left) added += below(2) == 0 ? '#' : 'x';
    text.Replace(start, below(std::min(text.Length() - start, 5)), added);
    if (below(2) != 0) continue;
    ASSERT_EQ(text.Look(), text.All()) << step;
  }
}

}  // namespace
}  // namespace zendry
