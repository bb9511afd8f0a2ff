class A : public B { };
class C : virtual public n::D, protected E<int, F>, G { };
struct H final : I { int x; };
