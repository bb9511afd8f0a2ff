class A;
struct B;
enum class C : int;
union D;
namespace n = other;
class A : public B, private C {
};
