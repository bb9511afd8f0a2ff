int a;
int f(int b;
int c;
