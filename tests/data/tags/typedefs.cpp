typedef int A;
typedef unsigned long B, *C;
typedef void D(int);
typedef int (E)(int);
typedef struct s { int x; } F;
typedef int G[3];
typedef std::vector<int> H;
