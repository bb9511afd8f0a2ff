int f(a, b) int a; char *b; { }
int g() { }
int h(a) { }
static void k(x, y, z) int x, y; struct s *z; { }
