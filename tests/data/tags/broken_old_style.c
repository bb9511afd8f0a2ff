int f(a) int a;
