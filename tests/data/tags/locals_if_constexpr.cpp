template <class T>
int a(T b) {
  if constexpr (sizeof(T) <= sizeof(int)) {
    int c = 1;
    if constexpr (c > 1) { return 1; } else if constexpr (c < 1) { int d; }
  } else if consteval {
    int e;
  }
  if constexpr
    (true) return 2;
  constexpr int f = 3;
  return 4;
}
constexpr int g() { return 5; }
int last;
