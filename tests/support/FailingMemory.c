/* To preload: the allocation number FAULT_AT of a program fails, and with FAULT_ONWARDS all after
 * it. The file FAULT_MARK tells that there were so many. */
#include <errno.h>
#include <fcntl.h>
#include <stddef.h>
#include <stdlib.h>
#include <unistd.h>

void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* block, size_t size);

static long at = -1; /* not looked up so far */
static int onwards;
static long count;

static int Fails(void) {
    if (at < 0) {
        const char* const wanted = getenv("FAULT_AT");
        onwards = getenv("FAULT_ONWARDS") != NULL;
        at = wanted == NULL ? 0 : atol(wanted);
    }
    const long number = __atomic_add_fetch(&count, 1, __ATOMIC_RELAXED);
    if (at == 0 || number < at || (number > at && !onwards)) return 0;
    const char* const mark = getenv("FAULT_MARK");
    if (number == at && mark != NULL) close(open(mark, O_WRONLY | O_CREAT, 0600));
    errno = ENOMEM;
    return 1;
}

void* malloc(size_t size) { return Fails() ? NULL : __libc_malloc(size); }
void* calloc(size_t number, size_t size) { return Fails() ? NULL : __libc_calloc(number, size); }
void* realloc(void* block, size_t size) { return Fails() ? NULL : __libc_realloc(block, size); }
