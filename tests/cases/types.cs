namespace Outer.Inner
{
    public class Nest : List<int>
    {
        class Deep { int x; }
        class Empty : Nest { }
        int[] sizes; int[] initial = new int[3];
        Dictionary<string, List<int>> map = new Dictionary<string, List<int>>();
        List<int> Items(int n) { return items.Where(i => i == n).ToList(); }
        T First<T>(T fallback) { return fallback; }
        void *Raw(int size = 4) { f(x => { a(); b(); }); }
        bool same = a == b; string text = "a == b";
        int Size { get { return size; } set { size = value; } }
        event Handler Done;
        static Nest() { using (var s = Open()) { s.Close(); } }
    }
    struct Point { int x; int y; void Move(int dx) { x += dx; } };
    class After { int z; void M() { foreach (var p in ps) total += p.x; } }
    struct Held { int w; } held;
    class Behind { void M() { while (i != 0) { --i; } } }
    import static util; package p; return 1.5; new Foo(1);
}
