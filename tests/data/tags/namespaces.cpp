namespace a {
int v;
void f();
class C { int m; };
namespace b {
enum E { X };
void C2::g() {}
}
}
namespace c::d {
struct S { int y; };
}
namespace {
int hidden;
struct T { int z; };
}
inline namespace v1 { int w; }
