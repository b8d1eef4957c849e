// The C host is C++ as well.
#include "host.c"
