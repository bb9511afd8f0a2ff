struct S { int x; } v;
struct { int y; } w, *u;
