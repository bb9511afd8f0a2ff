using System;
namespace A.B {
public abstract class C : D, IE {
  [Attr(1)] public virtual int F { get; set; }
  public static int operator +(C a, C b) { return 1; }
  internal const string G = "x";
  public delegate void H(int a);
  public override string ToString() { return ""; }
}
}
