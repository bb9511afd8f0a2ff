#pragma once

#include <compare>
#include <cstdint>
#include <cstring>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

namespace zendry {

// A text in 16 bytes, half of what a std::string takes. A project keeps a few of them for each of
// its tags, and nearly all fit without a block of their own.
class ShortText {
 public:
  ShortText() = default;
  explicit ShortText(std::string_view text) { Set(text); }
  ShortText(const ShortText& other) { Set(other); }
  ShortText(ShortText&& other) noexcept { Swap(other); }
  ~ShortText() { Free(); }
  ShortText& operator=(const ShortText& other) { return *this = ShortText(other); }
  ShortText& operator=(ShortText&& other) noexcept {
    Swap(other);
    return *this;
  }
  ShortText& operator=(std::string_view text) { return *this = ShortText(text); }

  std::string_view View() const {
    if (!IsLong()) return {bytes, static_cast<size_t>(bytes[cLast])};
    Block block;
    std::memcpy(&block, bytes, sizeof block);
    return {block.text, block.size};
  }
  operator std::string_view() const { return View(); }
  operator std::string() const { return std::string(View()); }

  bool empty() const { return bytes[cLast] == 0; }
  size_t size() const { return View().size(); }
  const char* begin() const { return View().data(); }
  const char* end() const { return begin() + size(); }
  char front() const { return View().front(); }
  char back() const { return View().back(); }
  char operator[](size_t at) const { return View()[at]; }
  bool starts_with(std::string_view text) const { return View().starts_with(text); }
  bool starts_with(char c) const { return View().starts_with(c); }
  bool ends_with(std::string_view text) const { return View().ends_with(text); }
  bool ends_with(char c) const { return View().ends_with(c); }
  size_t find(std::string_view text, size_t from = 0) const { return View().find(text, from); }
  size_t find(char c, size_t from = 0) const { return View().find(c, from); }
  size_t rfind(std::string_view text) const { return View().rfind(text); }
  size_t rfind(char c) const { return View().rfind(c); }
  std::string substr(size_t from, size_t count = std::string::npos) const {
    return std::string(View().substr(from, count));
  }

  friend bool operator==(const ShortText& a, const ShortText& b) { return a.View() == b.View(); }
  friend bool operator==(const ShortText& a, std::string_view b) { return a.View() == b; }
  friend auto operator<=>(const ShortText& a, const ShortText& b) { return a.View() <=> b.View(); }
  friend auto operator<=>(const ShortText& a, std::string_view b) { return a.View() <=> b; }
  friend std::string operator+(std::string a, const ShortText& b) {
    return std::move(a += b.View());
  }
  friend std::string operator+(const ShortText& a, std::string_view b) {
    return std::string(a.View()).append(b);
  }
  friend std::ostream& operator<<(std::ostream& out, const ShortText& text) {
    return out << text.View();
  }

 private:
  // What is in `bytes` if the text has a block of its own.
  struct Block {
    char* text;
    uint32_t size;
  };

  static constexpr size_t cLast = 15;  // holds the size, or cLong
  static constexpr char cLong = 16;

  bool IsLong() const { return bytes[cLast] == cLong; }
  // Nothing is there before.
  void Set(std::string_view text) {
    if (text.size() <= cLast) {
      if (!text.empty()) std::memcpy(bytes, text.data(), text.size());
      bytes[cLast] = static_cast<char>(text.size());
      return;
    }
    const Block block = {new char[text.size()], static_cast<uint32_t>(text.size())};
    std::memcpy(block.text, text.data(), text.size());
    std::memcpy(bytes, &block, cBlockBytes);
    bytes[cLast] = cLong;
  }
  void Swap(ShortText& other) noexcept {
    alignas(8) char kept[cLast + 1];
    std::memcpy(kept, bytes, sizeof kept);
    std::memcpy(bytes, other.bytes, sizeof kept);
    std::memcpy(other.bytes, kept, sizeof kept);
  }
  void Free() {
    if (IsLong()) delete[] View().data();
  }

  static constexpr size_t cBlockBytes = sizeof(char*) + sizeof(uint32_t);

  alignas(8) char bytes[cLast + 1] = {};
};

static_assert(sizeof(ShortText) == 16);

}  // namespace zendry
