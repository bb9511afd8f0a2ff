void f() {
  int a, *b;
  goto end;
  label: a = 1;
  switch (a) { case 1: { int c; } default: ; }
  end: return;
}
