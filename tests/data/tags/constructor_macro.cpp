struct A {
  A(int x) NOTHROW : a(x) { if (x) { f(); } }
  int b;
  A() NOTHROW
    : a(0) {}
  int c : 3;
  int d : 4 {1}, e : 5 = 2;
  int g;
};
int last;
