template <class T>
concept C = requires(T t) { t.x; { t.y } -> D; };
template <C T> void a(T);
template <class T> requires C<T> && (sizeof(T) > 1) void b(T t);
template <class T> void c(T) requires C<T> || n::D<T> { }
template <class T> requires requires(T t) { t.z; } struct S { int x; };
int after;
