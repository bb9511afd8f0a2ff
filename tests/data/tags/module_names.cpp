struct module {
  module();
};
struct import {};
module::module() {}
module one(int x);
module two = 1, three;
import *four;
import f(module m) {
  import local;
  return local;
}
module a::five;
int import, module;
void g(int export_);
static module six;
import broken
