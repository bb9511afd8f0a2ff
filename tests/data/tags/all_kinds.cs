namespace Space {
class Class {
  public event Handler Event;
  private int field;
  public int Method(int a) { return a; }
  public int Property { get { return 1; } set { } }
}
enum Enum { One, Two }
interface IFace { void Call(); }
struct Struct { int x; }
}
