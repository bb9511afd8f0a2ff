#if 0
#if 1
int never;
#else
int neither;
#endif
#endif
int seen;
