#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace mavro {

// The size in the header of a picture file, in pixels.
struct ClaimedSize {
  int64_t width = 0;
  int64_t height = 0;
  friend bool operator==(const ClaimedSize&, const ClaimedSize&) = default;
};

// Reads the headers of bitmap, PNG, JPEG, GIF and XPM files. No value for other bytes, and if the
// header is cut off before the size.
std::optional<ClaimedSize> ReadClaimedSize(std::string_view bytes);

}  // namespace mavro
