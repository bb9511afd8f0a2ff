class A {
  int x;
int y;
void f() {
