#include "PipeReader.h"

#include <unistd.h>

#include <cerrno>

namespace mavro {

namespace {

constexpr size_t cReadSize = 80;
constexpr size_t cFetchSize = 1 << 16;  // the default capacity of a pipe

}  // namespace

PipeReader::PipeReader() : piece(cFetchSize) {}

PipeReader::Fetch PipeReader::FetchAhead(int descriptor) {
  ssize_t count;
  do count = read(descriptor, piece.data(), piece.size());
  while (count < 0 && errno == EINTR);
  if (count < 0) return errno == EAGAIN ? Fetch::cNone : Fetch::cError;
  if (count == 0) return Fetch::cEnd;
  ahead.erase(0, taken);
  taken = 0;
  converter.Append({piece.data(), static_cast<size_t>(count)}, ahead);
  return Fetch::cBytes;
}

std::string_view PipeReader::Read() {
  const std::string_view bytes = std::string_view(ahead).substr(taken, cReadSize);
  taken += bytes.size();
  return bytes;
}

}  // namespace mavro
