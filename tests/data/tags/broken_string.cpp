int a;
char* s = "open;
int b;
