int a = 1, b = f(2, 3), c[] = { 1, 2, };
int d = x == y;
enum E { A = 1, B = (2, 3), C = sizeof(int) };
struct P q = { .x = 1, .y = 2 };
