using System;
using System.Collections.Generic;

[assembly: CLSCompliant(false)]

namespace Shop.Shipping;

public enum Carrier { Post, Courier, [Obsolete("closed in spring")] Pigeon }

public interface ICarrier
{
    int Days { get; }
    Money PriceOf(Parcel parcel);
}

public record Parcel(int Number, int Grams)
{
    public required string Address { get; init; }
}

public class Courier(Money fee) : ICarrier
{
    private readonly List<Parcel> taken = [];
    private int delivered, lost;

    public int Days { get; } = 2;

    // TODO: weigh what comes in a tube
    public Money PriceOf(Parcel parcel) => parcel switch
    {
        { Grams: <= 1000 } => fee,
        { Grams: <= 5000 } => fee + fee,
        _ => throw new ArgumentException("too heavy"),
    };

    public string Label(Parcel parcel) => $$"""
        {"number": {{parcel.Number}}, "to": "{{parcel.Address}}"}
        """;

    [Obsolete("Take counts them too")]
    public void Fetch(Parcel parcel)
    {
        taken.Add(parcel);
        ++delivered;
    }

    public void Take(Parcel parcel)
    {
        taken.Add(parcel);
        ++delivered;
    }
}
