int a() {
  return b
}
int c() { d(); }
int e;
int f() {
  return find([] { g(); h
