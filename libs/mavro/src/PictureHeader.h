#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace mavro {

// The size that the head of a picture file claims, in pixels.
struct ClaimedSize {
  int64_t width = 0;
  int64_t height = 0;
  friend bool operator==(const ClaimedSize&, const ClaimedSize&) = default;
};

// Reads the heads of bitmap, PNG, JPEG, GIF and XPM files. Nothing for other bytes, and where the
// head is cut off before the size.
std::optional<ClaimedSize> ReadClaimedSize(std::string_view bytes);

}  // namespace mavro
