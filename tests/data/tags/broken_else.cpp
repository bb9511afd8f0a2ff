#else
int a;
#elif X
int b;
#endif
#endif
int c;
