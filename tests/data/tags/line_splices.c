#define A \
  struct no { int x; };
int a \
  ;
int b;
