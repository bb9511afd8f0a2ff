struct A {
  struct { int x; };
  union { int y; };
};
