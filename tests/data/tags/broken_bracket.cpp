int a;
int b[3;
int c;
