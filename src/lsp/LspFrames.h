#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace zendry {

// Takes the messages of the language server protocol out of a stream of bytes. Each has a header
// that tells the length of its body. Nothing is stored beyond the bytes that have arrived.
class LspFrames {
 public:
  static constexpr size_t cLongestMessage = size_t{64} << 20;  // bytes of a body
  static constexpr size_t cLongestHeader = 4096;

  // Takes the next bytes of the stream, cut anywhere.
  void Feed(std::string_view bytes);
  // The body of the next message; nothing as long as it isn't complete, and after an error.
  std::optional<std::string> Next();
  // The reason why the stream can't be read on; empty as long as it can.
  const std::string& Error() const { return error; }
  // True if a message has begun and not ended.
  bool IsInside() const { return length || at < buffer.size(); }

 private:
  bool ReadHeader();

  std::string buffer;
  size_t at = 0;  // the bytes before it have been taken
  std::optional<size_t> length;
  std::string error;
};

// A message with its header.
std::string LspFrame(std::string_view body);

}  // namespace zendry
