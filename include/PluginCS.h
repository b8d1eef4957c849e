/*
 * The C interface of the source-structure module PluginCS: the whole contract.
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
 *   Text             A JSON array of records (see below), NUL-terminated, ASCII but for the path.
 *                    Apostrophes are escaped as \', line feeds and other control bytes are not: a
 *                    strict JSON parser needs both repaired first.
 *   Stack            A parse needs less than 16 KiB, however large or deep the file is.
 *   Unloading        dlclose unloads the module; texts still held stay valid, and are the host's
 *                    to free.
 *
 * A record is an object for a statement or a block; parents come before their children, the file
 * itself first. Its members, always all of them and in this order:
 *
 *   lineNumber          number: the line of the statement's ';' or the block's '{', from 1;
 *                       LF and CR count one each; 0 for headers without parentheses, and for
 *                       the file, the global namespace and the last record
 *   lineage             ""
 *   argumentList        ""
 *   childNodeIDs        array of numbers
 *   nodeID              number: 0 for the file, then in the source's order
 *   parentID            number: -1 for the file
 *   fileID              0
 *   functionID          -1
 *   isCalled            false
 *   branchTypeAsString  string: the kind
 *   filePath            string: the path as it was given
 *   tags                array of strings: "variable" for a variable's declaration, or empty
 *   contents            string: the text of the statement or of the block's header, white space
 *                       reduced; the bare name for classes
 *   simpleFunctionName  string: the bare name for functions, or ""
 *   calloutIDs          empty array
 *
 * The kinds: "filepath" is the file, the first record; "namespace" the node "namespace global",
 * which holds everything in the file; "class"; "classvar", a variable declared in a class, or a
 * block whose header looks like a declaration; "function", the declaration of one; "logic", an if,
 * else, switch, try or catch, or a comparison; "loop", a while, for or foreach; "define", a using
 * or import line, a directive, or a header without parentheses; "line", any other statement;
 * "container", any other block; "preprocessor", the last record, whose contents are the operands of
 * the file's conditional directives, one a line. Where braces do not match the parse ends early,
 * with a record whose kind begins with "error: ", unless its text reads like another kind.
 *
 * Besides the functions the module exports five objects: `int32_t objectCount` and `int32_t
 * currentIndex`, the counters of the last parse, and the C++ objects `chunk`, `startPath`
 * (std::string) and `AllBranches` (std::vector of pointers).
 */
#ifndef PLUGINCS_H
#define PLUGINCS_H

/*
 * Of this header. Modules of one major version have the same functions and records; a minor one may
 * read sources better. A module that was loaded does not export its own version: its file, which
 * dladdr tells for any of the functions, holds the text "PluginCS version " and the version.
 */
#define PLUGINCS_VERSION_MAJOR 1
#define PLUGINCS_VERSION_MINOR 0
#define PLUGINCS_VERSION_PATCH 0
#define PLUGINCS_VERSION "1.0.0"

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
