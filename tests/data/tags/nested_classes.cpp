class A {
  struct B {
    union { int a; char b; } u;
    enum { X, Y };
    class C { void f(); };
  };
  B b;
};
void A::B::C::f() {}
