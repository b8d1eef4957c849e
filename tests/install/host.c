/* A complete host: prints the records of the source file that it is given. */
#define _POSIX_C_SOURCE 200809L /* fdopen, dup */
#include <PluginCS.h>
#include <dlfcn.h>
#include <stdio.h>
#include <unistd.h>

int main(int argc, char** argv) {
    void* module = dlopen(PLUGINCS_MODULE, RTLD_NOW);
    if (module == NULL || argc != 2) return 2;
    PluginCS_ParseCS parse = (PluginCS_ParseCS)dlsym(module, "ParseCS");
    PluginCS_CleanupCS cleanup = (PluginCS_CleanupCS)dlsym(module, "CleanupCS");
    if (parse == NULL || cleanup == NULL) return 2;

    /* The module's traces go to stdout: keep a copy of that, and redirect it to /dev/null. */
    FILE* out = fdopen(dup(STDOUT_FILENO), "w");
    if (out == NULL || freopen("/dev/null", "w", stdout) == NULL) return 2;

    const char* text = parse(argv[1]); /* null: the module gave this file up */
    int failed = text == NULL || fputs(text, out) == EOF;
    failed |= fclose(out) == EOF; /* flushes, so late write errors show here */
    cleanup();                    /* releases the text */
    dlclose(module);
    return failed;
}
