#define MACRO 1
class Class {
  int member;
};
enum Enum { cOne, cTwo };
void Function() {}
namespace space {
}
int Prototype(int);
struct Struct;
struct Struct2 {};
typedef int Typedef;
union Union {
  int a;
  char b;
};
int variable;
extern int externVariable;
