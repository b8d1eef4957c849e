#define LOCAL
#if DEBUG && TRACE
using Never;
#elif LOCAL
using Local;
#else
  using Always; #region Inside
int a; #line 12 "x.cs"
#endif
#ifndef Release
class Kept { #if mid
    int b = 1; #else
    int c; #endif
} int d; #pragma warning disable
int e; #warning later
#ifdef X
class Dropped {
#endif
#endif
#if (A)
#if B
#endif
x();
#endif
  # region Spaced
enum E { One, Two }
# endregion
#if DEBUG && TRACE \
   || MORE
int f;
#endif
int g
