package x;
public final class A<T extends Comparable> {
  @Override public void f() { }
  @SuppressWarnings("x") int g;
  static { int no; }
  protected synchronized native long h(int a, List<String> b);
}
