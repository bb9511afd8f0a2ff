int a;
char c = 'x;
int b;
