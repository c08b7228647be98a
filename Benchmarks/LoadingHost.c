/*
 * A program that needs nothing but the C library, and tells what loading others costs it:
 *
 *   LoadingHost load LIBRARY...
 *   LoadingHost session AGENT_FOLDER USAGE_KEY LIBRARY
 *
 * The second form initialises the library that it has loaded and has a session. Prints the time
 * for loading and initialising, for the session's start and for its close in microseconds, and by
 * how many KiB of private memory the process has grown when the session is open: all of it, and
 * what was written to.
 */
#define _GNU_SOURCE
#include "LogSession/UTLogData.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>
#include <unistd.h>

static void (*initialize)(const char*, unsigned char, const char*);
static void (*start)(LogSession**, const char*, const char*, const char*, const char*, const char*);
static void (*finish)(LogSession**);

static double Microseconds(void) {
    struct timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return (double)now.tv_sec * 1e6 + (double)now.tv_nsec / 1e3;
}

static long Field(const char* text, const char* name) {
    const char* found = strstr(text, name);
    return found ? strtol(found + strlen(name), NULL, 10) : 0;
}

struct Memory {
    long all, written;
};

/* Takes no memory that its first call has not taken already. */
static struct Memory PrivateKilobytes(void) {
    static char text[8192];
    const int file = open("/proc/self/smaps_rollup", O_RDONLY);
    const ssize_t length = file < 0 ? 0 : read(file, text, sizeof text - 1);
    close(file);
    text[length > 0 ? length : 0] = '\0';
    const long written = Field(text, "Private_Dirty:");
    return (struct Memory){Field(text, "Private_Clean:") + written, written};
}

static void Print(double load, double openSession, double closeSession, struct Memory before,
                  struct Memory after) {
    printf("%f %f %f %ld %ld\n", load, openSession, closeSession, after.all - before.all,
           after.written - before.written);
}

static void* Load(const char* path) {
    void* library = dlopen(path, RTLD_NOW);
    if (!library) {
        fprintf(stderr, "%s\n", dlerror());
        exit(1);
    }
    return library;
}

static void LoadAndInitialize(const char* path, const char* usageKey, const char* agentFolder) {
    void* library = Load(path);
    *(void**)&initialize = dlsym(library, "UTInitialize");
    *(void**)&start = dlsym(library, "UTStartSession");
    *(void**)&finish = dlsym(library, "UTCloseSession");
    initialize(usageKey, 1, agentFolder);
}

static int HaveSession(char** argv) {
    LogSession* session = NULL;
    const struct Memory before = PrivateKilobytes();
    const double begin = Microseconds();
    LoadAndInitialize(argv[4], argv[3], argv[2]);
    const double loaded = Microseconds();
    start(&session, "Benchmark", "Session", "1.0", "1", "en");
    const double opened = Microseconds();
    const struct Memory after = PrivateKilobytes();
    const int failure = session == NULL;
    const double resumed = Microseconds();
    finish(&session);
    const double closed = Microseconds();
    Print(loaded - begin, opened - loaded, closed - resumed, before, after);
    return failure;
}

static int LoadAll(int count, char** paths) {
    const struct Memory before = PrivateKilobytes();
    const double begin = Microseconds();
    for (int i = 0; i < count; ++i)
        Load(paths[i]);
    const double loaded = Microseconds();
    Print(loaded - begin, 0, 0, before, PrivateKilobytes());
    return 0;
}

int main(int argc, char** argv) {
    PrivateKilobytes();
    if (argc == 5 && strcmp(argv[1], "session") == 0)
        return HaveSession(argv);
    if (argc >= 2 && strcmp(argv[1], "load") == 0)
        return LoadAll(argc - 2, argv + 2);
    return 2;
}
