int a;
label:
int b;
void f() { switch (x) { case 1: default: break; } }
int c;
