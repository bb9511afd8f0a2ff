module;
#include <cstdio>
export module a.b:part;
import fmt;
import a.b.c;
import :other;
import <vector>;
import "own.h";
export import  more ;
export int f(int a);
export class A {
  int import;
  module *m;
};
export {
  int g();
  struct B {};
}
export namespace n {
int h();
}
export template <class T> T t(T x) { return x; }
module : private;
int after;
