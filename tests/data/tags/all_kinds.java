package a.b.c;
import java.util.List;
public class Class extends Base implements One, Two {
  private int field = 1;
  int[] more, others;
  public Class(int x) throws IOException, Other { }
  void method() { int local; }
  abstract int later(String s);
}
interface Face { void call(); }
