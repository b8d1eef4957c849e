namespace A
{
    class B { int c; }
} }
int d() { e = theTextEndsOneByteBehindABlockOfSixtyFour(bytes) + andThis ==; }
f = 1; g = 2;
{ never }
