DECLARE(foo)
int a;
DECLARE(bar);
int b;
FOO(x) int c() { }
int d;
