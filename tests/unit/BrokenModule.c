/* A module whose parses come to nothing: no text, and files that end too early, if any. */
#include <stdio.h>
#include <string.h>

#include <PluginCS.h>

#pragma GCC visibility push(default)

char* ParseCS(const char* path) {
    (void)path;
    return NULL;
}

void CleanupCS(void) {}

void parseAllFiles(const char* inputPath, const char* outputPath) {
    FILE* file = strstr(inputPath, "short") == NULL ? NULL : fopen(outputPath, "wb");
    if (file == NULL) return;
    fputs("[\n  {\n", file);
    fclose(file);
}
