int a;
typedef int b;
extern c;
union U { int d; }
int e();
