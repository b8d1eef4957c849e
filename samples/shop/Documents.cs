using System;
using System.Collections.Generic;
using System.Linq;

namespace Shop.Documents
{
    public interface IPrintable
    {
        string Print();
    }

    /// What has a number, a date and lines with prices.
    public abstract class Document : IPrintable
    {
        private static int lastNumber;
        protected readonly List<Line> lines = new List<Line>();

        public int Number { get; }
        public DateTime Date { get; set; }

        protected Document()
        {
            Number = ++lastNumber;
            Date = DateTime.Today;
        }

        public Money Total()
        {
            Money total = new Money(0);
            foreach (Line line in lines)
            {
                total += line.Price;
            }
            return total;
        }

        public abstract string Print();

        public class Line
        {
            public string Text;
            public Money Price;
        }
    }

    public class Invoice : Document
    {
        public Customer Customer;
        public bool Paid { get; private set; }

        public event EventHandler Settled;

        public void Add(string text, Money price)
        {
            lines.Add(new Line { Text = text, Price = price });
        }

        public void Settle(Money amount)
        {
            if (amount.CompareTo(Total()) < 0)
            {
                throw new InvalidOperationException("not enough");
            }
            Paid = true;
            if (Settled != null) Settled(this, EventArgs.Empty);
        }

        public override string Print()
        {
            return string.Join("\n", lines.Select(line => line.Text + " " + line.Price));
        }
    }

    /// Takes an invoice back: the same lines with their prices below zero.
    public sealed class CreditNote : Document, ICloneable
    {
        private readonly Invoice invoice;

        public CreditNote(Invoice invoice)
        {
            this.invoice = invoice;
        }

        public object Clone() { return new CreditNote(invoice); }

        public override string Print() { return "credit for " + invoice.Number; }
    }
}
