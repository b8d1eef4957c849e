// The C host compiles as C++ too.
#include "host.c"
