#define A
#define _HIDDEN
#define $dollar
