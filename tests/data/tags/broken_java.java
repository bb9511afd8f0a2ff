int a;
extern int b;
x, y;
enum E { A, B }
class { int c; }
