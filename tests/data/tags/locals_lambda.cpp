int a() {
  return find(begin, end, [&](const Item& item) {
    int inner = 1;
    return item.value == inner;
  });
}
int afterA;
void b() {
  assert(x < y);
  int c = 1;
  return;
}
struct S {
  S d() { return S{1, 2}; }
  auto e() { return [this] { f(); if (f()) { g(); } }; }
  int h;
};
using T = decltype([] { int none; });
bool i() {
  goto end;
end:
  return std::all_of(list, [](int j) { return j < 3; }) && [] { return true; }();
}
int last;
void shifts() {
  out << last;
  out << "a" << f() << [] { return 1; }();
  int after;
}
