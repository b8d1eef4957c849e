/**********************
 * Ledger; {not code} *
 **********************/
using System; // for Console
using static /* odd */ System.Math;

/// <summary>Keeps "books"; isn't { unbalanced }</summary>
[Serializable] [Obsolete("use 'Books'; really")]
public class Ledger : Base
{
    /** the sum /* so far */ private decimal sum = 0.5m;
    // [Note] a; comment [with] brackets
    [Key] public string Url = "http://x"; /* tail
    over lines; */ int lines;
    char slash = '/'; string open = "/* \" //";
}
/*/ not closed here */ class Late {}
