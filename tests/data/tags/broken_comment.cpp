int a;
/* open
int b;
