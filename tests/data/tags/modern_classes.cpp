enum class E : unsigned char { A, B = 2, C };
enum struct F { D };
class alignas(16) G { int i; };
class [[deprecated]] H { int j; };
struct K {
  int a{1};
  std::string b{"x"}, c{};
  static constexpr int d{2};
  static_assert(sizeof(int) == 4, "odd");
  int e;
  enum class L : int { X };
};
