int f(int a) {
  int b;
  static int c = 1;
  if (b) {
    char d;
    for (int e = 0; e < 3; ++e) { long g; }
  }
  struct S { int m; };
  f.x();
  h->y;
  Foo k(3);
  return b;
}
int after;
