#pragma once

#include <cstddef>
#include <vector>

namespace zendry {

// Places in an editor's text that follow its changes, and the part of the text that has changed
// since somebody looked for them. So a look after each key reads some lines and not the whole text.
class FollowedPlaces {
 public:
  // Positions in the text, `end` after the last byte. Nothing is to be looked at if `end` is below
  // `start`.
  struct Part {
    int start = 0;
    int end = -1;
  };

  // At `start`, `removed` bytes are about to be replaced by `added` other bytes. Must be called
  // before each change, except before changes that Lose follows.
  void WillChange(int start, int removed, int added);
  // The text has changed in an unknown way: all of it is to be looked at.
  void Lose() { isLost = true; }
  // The part that has changed in a text of this length.
  Part Changed(int length) const;
  // These are the places within a part that holds all that has changed, in their order.
  void Put(Part lookedAt, const std::vector<int>& found);
  // In their order.
  const std::vector<int>& Places() const { return places; }
  // How many bytes have been looked at so far.
  size_t BytesSeen() const { return bytesSeen; }

 private:
  std::vector<int> places;
  Part changed;
  bool isLost = true;
  size_t bytesSeen = 0;
};

}  // namespace zendry
