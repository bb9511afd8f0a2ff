extern "C" {
int a(void);
struct S { int x; };
}
extern "C" int b(int);
extern int c;
extern int d = 4;
