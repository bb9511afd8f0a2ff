#ifdef A
void f(int a) {
#else
void f(char a) {
#endif
}
int after;
