using System;

[assembly: CLSCompliant(true)]
namespace Shop.Till
{
    // Parameters that may be null, and a constraint that is no class.
    public partial class Till<T> : IDisposable, Desk where T : class
    {
        private const string Path = "a/b\\c", Tab = @"a	b";
        internal int open, closed = 1;
        protected internal static readonly Dictionary<string, int> 
            Prices = new();

        public Till(decimal? start = null, string sign = "\t") : base(start) { }
        ~Till() { }
        static Till() => Log();

        public void Sell(decimal? price) { }
        public decimal? Price(string name, decimal? discount = null) => discount;
        public U Find<U>(int id = (1 + 2)) where U : class
        {
            return Local<U>(id);
            U Local<V>(V x) { return null; }
        }
        void IDisposable.Dispose() => throw new Exception("/$");
        int Desk.this[int @in] => 3;
        public static bool operator ==(Till<T> a, Till<T> b) => true;
        public static explicit operator int(Till<T> t) => 1;

        protected event EventHandler Opened, Closed;
        private protected event EventHandler Sold { add { } remove { } }
        public delegate void Handler<in E>(object sender, E e);
        public int @class { get; private set; } = 1;
        [Flags] enum Kind { None, Cash = 1 << 0, [Obsolete] Card }
        void None() { }
        void Same()
        {
        }
        interface IDesk { void Same(); int Size { get; } }
        file struct Point { int x; unsafe fixed byte raw[4]; }
    }

    internal class Other
    {
        void Same()
        {
        }
        int aVeryLongLineThatNoPatternShouldHoldAsAWholeBecauseItWouldFillTheTagsFileWithTextÄÖÜ, b;
    }

    // Members of records.
    public record Person(string First, string Last)
    {
        public string Full { get; init; } = "";
        public void Greet() { }
    }
    public readonly record struct Pixel(int X, int Y);
    partial record Person;
    /* a $ at the end */ interface End$
    { }
}
