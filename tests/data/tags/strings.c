char *a = "a;{\"}";
char b = '\'';
char c = '{';
char *d = "over
lines;";
int e;
