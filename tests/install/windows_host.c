/* windows_host SOURCE...: compares PluginCS.dll's text of each source with the .json beside it. */
#include <PluginCS.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <windows.h>

static char expected[1 << 20];

static const char* Expected(const char* source) {
    char path[MAX_PATH] = "";
    strncpy(path, source, strlen(source) - 3);
    FILE* file = fopen(strcat(path, ".json"), "rb");
    if (file == NULL) return ""; /* a case that gives no text */
    expected[fread(expected, 1, sizeof expected - 1, file)] = '\0';
    fclose(file);
    return expected;
}

int main(int argc, char** argv) {
    HMODULE module = LoadLibraryA("PluginCS.dll");
    if (module == NULL) return 2;
    PluginCS_ParseCS parse = (PluginCS_ParseCS)(void*)GetProcAddress(module, "ParseCS");
    PluginCS_CleanupCS cleanup = (PluginCS_CleanupCS)(void*)GetProcAddress(module, "CleanupCS");
    int failures = 0;
    for (int i = 1; i < argc; ++i) {
        const char* text = parse(argv[i]);
        if (strcmp(text == NULL ? "" : text, Expected(argv[i])) != 0) {
            fprintf(stderr, "FAILED: %s\n", argv[i]);
            ++failures;
        }
        cleanup();
    }
    fprintf(stderr, "%d cases, %d failed\n", argc - 1, failures);
    return failures != 0;
}
