int f(int, char*, ...);
void g(const A& a, B* const b, C::D c[3]);
int h(void (*cb)(int, char), int n);
long k(int a /* first */,
       int   b);
