using System;

namespace Shop
{
    /// An amount in the smallest unit of its currency.
    public readonly struct Money : IComparable<Money>
    {
        public readonly long Cents;
        public readonly string Currency;

        public Money(long cents, string currency = "EUR")
        {
            Cents = cents;
            Currency = currency;
        }

        public static Money operator +(Money a, Money b)
        {
            if (a.Currency != b.Currency) throw new ArgumentException("different currencies");
            return new Money(a.Cents + b.Cents, a.Currency);
        }

        public int CompareTo(Money other) => Cents.CompareTo(other.Cents);

        public override string ToString() => $"{Cents / 100}.{Cents % 100:00} {Currency}";
    }
}
