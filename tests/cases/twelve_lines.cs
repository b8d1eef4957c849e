using System;
namespace N
{
    class A
    {
        int x = 5;
        void F(int a)
        {
            if (a == 1) { x = 2; }
        }
    }
}
