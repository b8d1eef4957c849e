/*
 * The C interface of the source-structure module PluginCS.
 *
 * The module is loaded at run time (dlopen, RTLD_NOW); a host takes the four functions from it by
 * name with dlsym, and casts them to the function types below. There is nothing to initialise or
 * configure.
 *
 *   Order of calls   ParseCS, use the text, CleanupCS; as often as you like.
 *   Threads          None. The module's state is process-wide and unlocked: one call at a time, and
 *                    no CleanupCS while another thread still reads the text.
 *   Errors           No function reports a status, throws, or ends the process. A path that names
 *                    no readable file (missing, no permission, a directory, empty, null) gives the
 *                    records of an empty file. When memory runs out, the parse is given up.
 *   Standard output  Each parse writes its traces there, through C stdio: the text without its
 *                    comments and attribute sections after "the final data is "; for each byte
 *                    beyond the fiftieth of a directive line, or of a line's indentation, the
 *                    line so far in "[[" and "]]"; and messages on structural errors. They are
 *                    flushed with the host's own output, or when the host asks for it.
 *   Text             A JSON array with one object for each statement or block, NUL-terminated,
 *                    ASCII but for the path. Apostrophes are escaped as \', line feeds and other
 *                    control bytes are not: a strict JSON parser needs both repaired first.
 *   Unloading        dlclose unloads the module; texts still held stay valid, and are the host's
 *                    to free.
 *
 * Besides the functions the module exports five objects: `int32_t objectCount` and `int32_t
 * currentIndex`, the counters of the last parse, and the C++ objects `chunk`, `startPath`
 * (std::string) and `AllBranches` (std::vector of pointers).
 */
#ifndef PLUGINCS_H
#define PLUGINCS_H

#ifdef __cplusplus
extern "C" {
#endif

#pragma GCC visibility push(default)

/*
 * A line of text to identify the loaded module: "Address of resPtr: " and an address that does not
 * change while it stays loaded. Every call returns a new block, which the host releases with free;
 * null when memory runs out.
 */
char* Info(void);

/*
 * Parses the file and returns the JSON text, NUL-terminated.
 *
 * The text belongs to the module and stays valid until CleanupCS. A second ParseCS before that
 * gives a second text; the first one stays valid, CleanupCS no longer knows of it, and the host
 * releases it with free.
 *
 * A parse that is given up (more closing directives than open blocks, memory that runs out) makes
 * no text: then the previous one is returned, or null after CleanupCS. So call CleanupCS between
 * two files.
 */
char* ParseCS(const char* path);

/* Releases the text that the module holds, if there is one. May be called at any time. */
void CleanupCS(void);

/*
 * Parses the file and writes the JSON text to outputPath, replacing what it held; a text held from
 * ParseCS is left alone. A file that cannot be opened for writing is left as it is, and so is every
 * file when the parse is given up; a write error leaves a beginning of the text. With an empty or
 * null outputPath the text is kept for CleanupCS, as by ParseCS. Paths are shorter than 4,096
 * bytes.
 */
void parseAllFiles(const char* inputPath, const char* outputPath);

#pragma GCC visibility pop

/* The types of the functions, for what dlsym returns. */
typedef char* (*PluginCS_Info)(void);
typedef char* (*PluginCS_ParseCS)(const char* path);
typedef void (*PluginCS_CleanupCS)(void);
typedef void (*PluginCS_parseAllFiles)(const char* inputPath, const char* outputPath);

#ifdef __cplusplus
}
#endif

#endif
