/* int a; */ int b; // int c;
int /* x */ d; // going on \
int e;
int f; /* over
lines */ int g;
/**/int h;/***/int i;
