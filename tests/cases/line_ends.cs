using A;
class B
{
	int c = 1;
#if X
int d;
#endif

}int e;// fint g;