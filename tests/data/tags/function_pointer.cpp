int (*fp)(int);
void (*table[3])(char, int) = { 0 };
typedef int (*Callback)(void*, int);
void (*signal(int sig, void (*func)(int)))(int);
int (A::*member)(int);
