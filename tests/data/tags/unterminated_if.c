#if 0
int never;
#endif
#endif
#endif
int seen;
#if 1
int last;
