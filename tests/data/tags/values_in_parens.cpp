const tag_t first((tag_t::init()));
const tag_t second(5), third("x");
T A::value(P::O::Less);
T A::method(int);
T A::empty();
template <>
T A<int>::specialised(Foo);
void with_macro OF((Foo));
CHECK(5);
check(5);
struct after {};
auto ret(int a) RETURNS(a + 1);
auto trailing(int a) -> decltype(a) MACRO(1);
template <class T, class = std::enable_if_t<sizeof(T) >= 8>>
struct Big {
  int x;
};
enum { cA = 1 << 0, cB = 1 << 1, /* a > b */ cC };
