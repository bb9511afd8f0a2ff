typedef struct { int x; } T;
typedef union { int a; struct { int b; } c; } U;
typedef enum { A, B } E;
