void A::f(int i) { }
int A::B::g() const { return 1; }
int A::value = 3;
A::A() : a(1), b{2} { }
A::~A() { }
