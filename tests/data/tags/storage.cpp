static int a;
static void b() {}
static int c();
register int d;
volatile const int e = 1;
mutable int f;
extern void g();
static const char* const h[] = {"x"};
