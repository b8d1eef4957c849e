/* starved_host SOURCE...: a C host that has little memory, and little stack. */
#define _DEFAULT_SOURCE
#include <PluginCS.h>
#include <dlfcn.h>
#include <pthread.h>
#include <stddef.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/wait.h>
#include <unistd.h>

enum { kMostStack = 16 << 10 };

void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);

static long left = -1; /* allocations until one fails; -1: none does */
static int onwards;    /* and all after it */

static int Fails(void) {
    if (left < 0 || left-- > 0) return 0;
    left = onwards ? 0 : -1;
    return 1;
}

void* malloc(size_t size) { return Fails() ? NULL : __libc_malloc(size); }
void* calloc(size_t count, size_t size) { return Fails() ? NULL : __libc_calloc(count, size); }

static char** sources;
static PluginCS_ParseCS parse;
static PluginCS_CleanupCS cleanup;

static int Load(void) {
    void* const module = dlopen(MODULE_PATH, RTLD_NOW);
    if (module == NULL) return 0;
    *(void**)&parse = dlsym(module, "ParseCS");
    *(void**)&cleanup = dlsym(module, "CleanupCS");
    return parse != NULL && cleanup != NULL;
}

/* In a process of its own: a module whose first allocations fail loads and works, or does not load.
 * Returns 0 for that, 1 if there were fewer allocations. */
static int LoadsWithout(long first) {
    const pid_t child = fork();
    if (child == 0) {
        left = first;
        const int loaded = Load();
        const int failed = onwards ? left == 0 : left < 0;
        left = -1;
        if (loaded && parse(sources[0]) == NULL) _exit(2);
        _exit(failed ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 3;
}

/* Returns whether it found no memory first, and enough then. */
static void* ParseStarved(void* unused) {
    (void)unused;
    onwards = 1;
    left = 0;
    const int found = parse(sources[0]) != NULL;
    left = -1;
    const int made = parse(sources[0]) != NULL;
    cleanup();
    return found || !made ? NULL : &sources;
}

static char stack[1 << 18];
static char* top; /* where the thread's own part of it begins */

static void* ParseAll(void* unused) {
    char here = 0;
    top = &here;
    for (char** source = sources; *source != NULL; ++source) {
        parse(*source);
        cleanup();
    }
    return ParseStarved(unused);
}

static void* InThread(void* (*start)(void*), char* room, size_t size) {
    pthread_attr_t attributes;
    pthread_t thread;
    void* result = NULL;
    pthread_attr_init(&attributes);
    if (size > 0) pthread_attr_setstack(&attributes, room, size);
    if (pthread_create(&thread, &attributes, start, NULL) == 0) pthread_join(thread, &result);
    pthread_attr_destroy(&attributes);
    return result;
}

static size_t UsedStack(void) {
    memset(stack, 0x5A, sizeof stack);
    if (InThread(ParseAll, stack, sizeof stack) == NULL) return sizeof stack;
    const char* lowest = stack;
    while (*lowest == 0x5A) ++lowest;
    return (size_t)(top - lowest);
}

int main(int argc, char** argv) {
    if (argc < 2 || freopen("/dev/null", "w", stdout) == NULL) return 2;
    sources = argv + 1;
    for (onwards = 0; onwards < 2; ++onwards) {
        int result = 0;
        long first = 0;
        for (; result == 0; ++first) result = LoadsWithout(first);
        if (result != 1) return fprintf(stderr, "allocation %ld of a load: %d\n", first, result);
    }
    onwards = 0;
    if (!Load()) return fprintf(stderr, "%s\n", dlerror());
    if (ParseStarved(NULL) == NULL) return fprintf(stderr, "the first thread\n");
    if (InThread(ParseStarved, NULL, 0) == NULL) return fprintf(stderr, "the second thread\n");
    const size_t used = UsedStack();
    fprintf(stderr, "%zu bytes of stack\n", used);
    return used > kMostStack;
}
