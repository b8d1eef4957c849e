// A small stock-keeping program: a bit of everything that real files are made of.
#define AUDIT
using System;
using System.Collections.Generic;
using System.Linq;
using Text = System.Text.StringBuilder;

[assembly: CLSCompliant(true)]

namespace Warehouse.Stock
{
    #region Contracts

    /// <summary>Whatever can be counted and priced.</summary>
    public interface IArticle
    {
        string Name { get; }
        decimal Price { get; set; }
        int Count(DateTime at);
    }

    public enum Shelf { Low = 1, Middle, High }

    #endregion

    /* A position on a shelf.
     * Compared by value; "{" and ';' in comments count for nothing.
     */
    public struct Position
    {
        public int Row;
        public int Column;
        public Shelf Shelf;
    };

    [Serializable]
    public abstract class Article : IArticle
    {
        private static readonly char[] Separators = { ',', ';', '\'', '"' };
        protected Dictionary<string, List<int>> history = new Dictionary<string, List<int>>();
        private string name = "unnamed \"article\"";

        public event EventHandler<StockEventArgs> Changed;

        public string Name { get { return name; } }
        public decimal Price { get; set; }

        protected Article(string name, decimal price = 1.5m)
        {
            this.name = name;
            Price = price;
        }

        public abstract int Count(DateTime at);

        protected virtual void OnChanged(StockEventArgs e)
        {
            var handler = Changed;
            if (handler != null) { handler(this, e); }
        }

        public static bool operator ==(Article a, Article b) { return ReferenceEquals(a, b); }
        public static bool operator !=(Article a, Article b) { return !(a == b); }
    }

    public sealed class Inventory<T> where T : Article
    {
        private readonly List<T> articles = new List<T>();
        private int[] levels;
        private object gate = new object();

        public T this[int index] { get { return articles[index]; } }

#if AUDIT
        private readonly Text log = new Text();
#elif TRACE
        private readonly List<string> log = new List<string>();
#else
        private readonly object log = null;
#endif

        public Inventory(IEnumerable<T> first)
        {
            foreach (var article in first)
            {
                Add(article);
            }
            levels = new int[articles.Count];
        }

        public void Add(T article)
        {
            lock (gate)
            {
                articles.Add(article);
                article.Changed += (sender, e) => { Recount(); };
            }
        }

        public List<T> Cheapest(int count)
        {
            return articles.Where(a => a.Price > 0).OrderBy(a => a.Price).Take(count).ToList();
        }

        /// <summary>Sums the stock; negative levels are a mistake in the books.</summary>
        private int Recount()
        {
            int total = 0;
            for (int i = 0; i < articles.Count; i++)
            {
                levels[i] = articles[i].Count(DateTime.Now);
                if (levels[i] < 0)
                {
                    throw new InvalidOperationException("level below zero; article " + articles[i].Name);
                }
                else if (levels[i] == 0) continue;
                total += levels[i];
            }
            while (total > int.MaxValue / 2) total -= 1;
            return total;
        }

        public override string ToString()
        {
            try
            {
                switch (articles.Count)
                {
                    case 0: return @"none";
                    case 1: return articles[0].Name;
                    default: return $"{articles.Count} articles";
                }
            }
            catch (Exception e)
            {
                Console.WriteLine("cannot name the inventory: {0}", e.Message);
                throw;
            }
            finally { levels = null; }
        }
    }
}
