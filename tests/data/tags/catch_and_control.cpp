void f() try { } catch (int) { }
int a;
void g() { if (x) { } for (;;) { } while (y) { } do { } while (z); }
int b;
