template <class T, class = enable_if_t<(sizeof(T) < 8)>> void f(T);
template <class T, class = void_t<decltype(C().g({1, 2}))>> void g(T);
void h(bool b = 1 < 2);
int after;
typedef typename A<T, sizeof(T) <= sizeof(void*)>::type B;
int c[1 << 3];
std::array<int, 1 << 4> d;
