namespace A
{
    class B { int c; }
} }
int d() { e; }
f = 1; g = 2;
{ never }
