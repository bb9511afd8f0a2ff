struct s {
  int private;
  int before, class;
  int new[3];
  struct s *namespace;
};
class A {
  int a;

 public:
  int b;
};
