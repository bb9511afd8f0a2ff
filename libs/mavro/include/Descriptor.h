#pragma once

#include <unistd.h>

#include <utility>

namespace mavro {

// Owns one file descriptor and closes it at the end of its life. Moved from, it owns none.
class Descriptor {
 public:
  Descriptor() = default;
  // Takes the descriptor over; -1 is none, as system calls answer it.
  explicit Descriptor(int number) : number(number) {}
  Descriptor(Descriptor&& other) noexcept : number(std::exchange(other.number, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number, other.number);
    return *this;
  }
  ~Descriptor() { Close(); }

  int Number() const { return number; }  // -1 for none
  bool IsOpen() const { return number >= 0; }
  // Closes it now; no effect if there is none.
  void Close() {
    if (number >= 0) ::close(std::exchange(number, -1));
  }

 private:
  int number = -1;
};

}  // namespace mavro
