__attribute__((x)) int a;
int b __attribute__((aligned(8)));
void c(int) __attribute__((noreturn));
struct __attribute__((packed)) s { int d; };
