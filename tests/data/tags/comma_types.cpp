int a, b;
Foo *p, q;
unsigned int x, y = 3, z[4];
