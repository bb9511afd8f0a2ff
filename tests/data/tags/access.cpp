class A {
  int a;
 public:
  int b;
 protected:
  void c();
 private:
  static int d;
  friend void e();
};
struct B {
  int f;
 private:
  int g;
};
