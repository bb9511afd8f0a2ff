struct s { int a : 3, b : 4; unsigned : 0; int c; };
int after;
