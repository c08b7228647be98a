/* One line of a trace, split into its words. */
#ifndef PHOTOEDITOR_TRACELINE_H
#define PHOTOEDITOR_TRACELINE_H

#include <stddef.h>
#include <stdio.h>

enum { kMaxLineLength = 16384, kMaxWords = 6 };

struct Word {
    char* text; /* stands in the line's own text */
    int quoted;
};

struct TraceLine {
    unsigned long number; /* set to 0 before the first line is read */
    size_t wordCount;     /* 0 for a blank line and a comment */
    struct Word words[kMaxWords];
    char text[kMaxLineLength + 1];
};

/*
 * Reads the next line. Returns 0 at the end of the trace and when it cannot be read on. `reason`
 * receives NULL, or why the line cannot be split; the line then has no words.
 */
int ReadTraceLine(FILE* trace, struct TraceLine* line, const char** reason);

#endif
