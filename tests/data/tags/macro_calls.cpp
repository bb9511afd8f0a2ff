Q_ENUM(x)
class A {
  Q_OBJECT
  Q_PROPERTY(int a READ a)
 public slots:
  void f();
 signals:
  void g();
};
REGISTER("text", 3);
int after;
