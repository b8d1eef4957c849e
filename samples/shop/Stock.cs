#define CHECKED
using System;
using System.Collections.Generic;

namespace Shop
{
    /// Halls of racks of shelves, each with its article and how many there are.
    public class Stock<TArticle> where TArticle : class
    {
        private readonly TArticle[,,] articles;
        private readonly Dictionary<TArticle, int> counts = new Dictionary<TArticle, int>();

        public Stock(int halls, int racks, int shelves)
        {
            articles = new TArticle[halls, racks, shelves];
        }

        public int this[TArticle article]
        {
            get { return counts.ContainsKey(article) ? counts[article] : 0; }
        }

        public (int hall, int rack, int shelf)? Find(TArticle wanted)
        {
            for (int hall = 0; hall < articles.GetLength(0); hall++)
            {
                for (int rack = 0; rack < articles.GetLength(1); rack++)
                {
                    for (int shelf = 0; shelf < articles.GetLength(2); shelf++)
                    {
                        if (wanted.Equals(articles[hall, rack, shelf]))
                        {
                            return (hall, rack, shelf);
                        }
                    }
                }
            }
            return null;
        }

        public bool Take(TArticle article, int count)
        {
#if CHECKED
            if (count <= 0) throw new ArgumentOutOfRangeException(nameof(count));
#endif
            lock (counts)
            {
                while (count > 0 && this[article] > 0)
                {
                    counts[article] -= 1;
                    count -= 1;
                }
            }
            if (count == 0)
            {
                return true;
            }
            else
            {
                try { Reorder(article, count); }
                catch { }
                return false;
            }
        }

        private void Reorder(TArticle article, int count)
        {
            int Rounded()
            {
                int boxes = count / 12;
                return (boxes + 1) * 12;
            }
            Console.WriteLine("{0} of {1} wanted", Rounded(), article);
        }
    }
}
