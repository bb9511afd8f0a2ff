#!/bin/bash
# Records what the machine's gcc, ld and ar print for typical mistakes, one file each:
# NAME.KIND.gcc-VERSION.txt beside this script, KIND being the reader of the lines (compile, link,
# archive). Run by hand when a new version is to be covered; then run the tests, look at the
# ".rows.new" files they leave and rename them.
set -u
here=$(cd "$(dirname "$0")" && pwd)
version=$(gcc -dumpfullversion | cut -d. -f1,2)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 1
export LC_ALL=C TERM=dumb
unset GCC_COLORS LIBRARY_PATH CPLUS_INCLUDE_PATH C_INCLUDE_PATH
flags=(-fno-diagnostics-show-caret -fdiagnostics-color=never -fdiagnostics-urls=never)

keep() { # NAME KIND COMMAND...: records what the command prints
  local name=$1 kind=$2
  shift 2
  "$@" >"$here/$name.$kind.gcc-$version.txt" 2>&1
}
compile() { # NAME SOURCE [SWITCH...]
  local name=$1 source=$2 tool=gcc
  shift 2
  [[ $source == *.cpp ]] && tool=g++
  keep "$name" compile "$tool" -c "$@" "${flags[@]}" "$source" -o out/x.o
}
object() { # EXTENSION NAME [SWITCH...]: an object of the source on standard input
  cat >"src/$2.$1"
  g++ -x "$([[ $1 == c ]] && echo c || echo c++)" -c "${@:3}" "src/$2.$1" -o "out/$2.o"
}
link() { # NAME ARGUMENT...: inside the output folder, as the build does
  local name=$1
  shift
  (cd out && keep "$name" link g++ -o p.exe "$@")
}
archive() {
  local name=$1
  shift
  (cd out && keep "$name" archive ar -r "$@")
}
unprivileged() { setpriv --reuid=65534 --regid=65534 --clear-groups "$@"; }

mkdir out src 'my dir' locked
chmod 755 "$work" locked

# Compilers.
printf 'int f(void) {\n  int x = 1\n  return x;\n}\n' >src/syntax.c
compile syntax_error_c src/syntax.c
printf 'class A {\n  void f()\n}\nint main() { retrun 0; }\n' >src/syntax.cpp
compile syntax_error_cpp src/syntax.cpp
printf '#include "gone.h"\nint x;\n' >src/gone.cpp
compile missing_header src/gone.cpp
printf '#pragma once\ninline int deep() { return undeclared; }\n' >src/deep.h
printf '#pragma once\n#include "deep.h"\n' >src/near.h
printf '#include "near.h"\nint main() { return deep(); }\n' >src/two.cpp
compile error_in_header_two_deep src/two.cpp
cat >src/template.cpp <<'END'
template <class T>
struct Inner {
  int Get(T t) { return t.missing(); }
};
template <class T>
struct Outer {
  Inner<T> inner;
  int Get(T t) { return inner.Get(t); }
};
template <class T>
int Use(T t) {
  Outer<T> outer;
  return outer.Get(t);
}
int main() { return Use(1.5); }
END
compile template_notes src/template.cpp
printf 'int f(int used) {\n  int unused;\n  if (used = 1) return 1;\n}\n' >src/warn.cpp
compile warnings src/warn.cpp -Wall
compile warning_as_error src/warn.cpp -Wall -Werror
cp src/warn.cpp src/error.cpp
compile warning_in_a_file_named_error src/error.cpp -Wall
printf 'int main() { return nowhere; }\n' >'my dir/a b.cpp'
compile path_with_spaces 'my dir/a b.cpp'
cat >src/overload.cpp <<'END'
void f(int, int);
void f(const char*);
void g(double);
int main() {
  f(1, 2, 3);
  g();
}
END
compile overload_notes src/overload.cpp
cat >src/macro.c <<'END'
#define INNER(x) x + undeclared
#define OUTER(x) INNER(x)
int f(void) { return OUTER(1); }
END
compile macro_notes src/macro.c
printf 'int f(int);\nchar f(int x) { return x; }\n' >src/conflict.c
compile conflicting_types src/conflict.c
printf '#error stop here\n#warning go on\n' >src/directives.c
compile error_directive src/directives.c
printf '#pragma GCC warning "\x1b[31mred \x07bell"\nint x;\n' >src/control.c
compile control_bytes src/control.c
printf 'int f() { return 1;\n' >src/brace.cpp
compile missing_brace_at_the_end src/brace.cpp
printf 'const char* s = "open;\nint x;\n' >src/string.cpp
compile open_string src/string.cpp
printf '#include <string>\nint main() { std::string s = 5; return s; }\n' >src/library.cpp
compile error_with_library_candidates src/library.cpp
compile unknown_option src/warn.cpp -funknown
compile missing_source src/nowhere.cpp
printf 'int x;\n' >src/good.c
keep unwritable_output compile unprivileged gcc -c "${flags[@]}" src/good.c -o locked/x.o
keep missing_output_folder compile gcc -c "${flags[@]}" src/good.c -o nowhere/x.o
mkdir src/folder.c
compile source_is_a_folder src/folder.c
printf '#include "self.h"\n' >src/self.h
printf '#include "self.h"\n' >src/self.c
compile include_nested_too_deeply src/self.c
printf 'int f(void) { asm("nonsense %%rax"); return 0; }\n' >src/asm.c
compile assembler_message src/asm.c

# Linker.
object c undefined_c <<<'extern int f(void); int main(void) { return f(); }'
link undefined_c undefined_c.o
object cpp undefined_cpp <<<'struct A { int f(int); }; int main() { return A().f(1); }'
link undefined_cpp undefined_cpp.o
printf 'int f();\nint main() {\n  return f();\n}\n' |
  object cpp debug -g "-ffile-prefix-map=$work=/home/me/p"
link undefined_with_debug_info debug.o
object cpp vtable <<<'struct A { virtual ~A(); virtual void f(); }; int main() { A* a = new A; delete a; }'
link missing_vtable vtable.o
object cpp main <<<'int main() { return 0; }'
link missing_library main.o -lnowhere
object c one <<<'int twice(void) { return 1; }'
object c two <<<'int twice(void) { return 2; }'
link duplicate_symbol main.o one.o two.o
link missing_main one.o
link missing_object main.o gone.o
printf 'no object\n' >out/text.o
link object_is_a_text main.o text.o
mkdir out/folder
(cd out && keep output_is_a_folder link g++ -o folder main.o)
(cd out && keep unwritable_program link unprivileged g++ -o ../locked/p.exe main.o)
ar -r out/libundefined.a out/undefined_c.o 2>/dev/null
object c empty <<<'int unused;'
link undefined_in_an_archive empty.o -L. -lundefined

# Archiver.
archive creating new.a one.o two.o
archive missing_object objects.a one.o gone.o
printf 'no archive\n' >out/text.a
archive not_an_archive text.a one.o
(cd out && keep unwritable archive unprivileged ar -r ../locked/x.a one.o)
