/* starved_host SOURCE: a C host whose first parse finds no memory at all, and its second enough. */
#define _POSIX_C_SOURCE 200809L
#include <PluginCS.h>
#include <dlfcn.h>
#include <stddef.h>
#include <stdio.h>

void* __libc_malloc(size_t size);

static int starved = 0;

void* malloc(size_t size) { return starved ? NULL : __libc_malloc(size); }

int main(int argc, char** argv) {
    void* module = dlopen(MODULE_PATH, RTLD_NOW);
    if (module == NULL || argc != 2 || freopen("/dev/null", "w", stdout) == NULL) return 2;
    PluginCS_ParseCS parse;
    *(void**)&parse = dlsym(module, "ParseCS");
    starved = 1;
    if (parse(argv[1]) != NULL) return 1;
    starved = 0;
    return parse(argv[1]) == NULL;
}
