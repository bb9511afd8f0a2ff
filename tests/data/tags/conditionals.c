#if 0
int never;
#else
int seen;
#endif
#if 1
int first;
#else
int second;
#endif
#ifdef X
int a;
#elif Y
int b;
#else
int c;
#endif
