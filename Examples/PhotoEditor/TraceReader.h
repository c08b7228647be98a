/*
 * Plays a trace: a text file that holds the calls of one session, one call a line.
 *
 *   value KEY VALUE
 *   event CATEGORY SUBCATEGORY NAME [DOC]
 *   group NAME_IN_TRACE CATEGORY SUBCATEGORY GROUPNAME [DOC]
 *   add   NAME_IN_TRACE KEY VALUE
 *
 * Words are separated by blanks. A word in double quotes may hold blanks and the escapes \" \\ \n.
 * The plain word - stands for a text that is not given, where the library allows that. A line that
 * begins with # is a comment. `group` names a group for the `add` lines after it; the same name
 * may be given again to a later group.
 */
#ifndef PHOTOEDITOR_TRACEREADER_H
#define PHOTOEDITOR_TRACEREADER_H

#include "UTLogData.h"

#include <stdio.h>

struct TraceResult {
    unsigned long calls;
    unsigned long wrongLines;
    int readFailed; /* the trace ended early because it could not be read on */
};

/*
 * Plays the trace into a session. A wrong line is reported on the standard error stream as
 * "NAME:LINE: reason" and left out.
 */
struct TraceResult PlayTrace(FILE* trace, const char* name, LogSession* session);

#endif
