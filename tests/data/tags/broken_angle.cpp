int a;
template <class T void f(T);
int b;
vector<int c;
int d;
