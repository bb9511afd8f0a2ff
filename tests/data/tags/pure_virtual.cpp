class A {
  virtual void f() = 0;
  virtual void g();
  virtual ~A() {}
  void h();
};
