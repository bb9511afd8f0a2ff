template <class T, int N = (3 > 2)> class A { T t; };
template <typename T> T f(T a, A<T> b) { return a; }
template <> class A<int, 3> { int i; };
std::map<int, std::vector<std::vector<int>>> m;
template <class T> void A<T, 3>::g() {}
bool x = a < b;
int after;
