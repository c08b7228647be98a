/*
 * A host program without a user interface: it plays a trace of a working day in an image editor
 * into one usage session. Every call to the library that a real editor would make is here or in
 * TraceReader.c.
 */
#include "TraceReader.h"

#include <errno.h>
#include <getopt.h>
#include <stdlib.h>
#include <string.h>

enum ExitCode { kPlayed = 0, kFailed = 1, kWrongLines = 2, kNoSession = 3 };

enum { kNotGiven = -2 };

struct Options {
    int optIn;
    int state;
    const char* agentFolder;
    const char* trace;
};

static const char kUsage[] =
    "Usage: PhotoEditor [--opt-in 1|0|-1] [--state 0..3] [--agent FOLDER] [TRACE|-]\n"
    "Plays a trace into a usage session; without TRACE, or with -, from standard input.\n"
    "\n"
    "  --opt-in 1|0|-1  first store the user's decision: in, out, unknown\n"
    "  --state 0..3     the product is a pre-release, a trial, serialized, a shared component\n"
    "  --agent FOLDER   the folder that holds LogTransport2.app, instead of the own bundle\n"
    "  --help           show this text\n"
    "\n"
    "Exit code: 0 the trace was played, 1 it could not be read, 2 it has wrong lines,\n"
    "3 no session is recorded.\n";

static int ParseNumber(const char* option, const char* text, int lowest, int highest) {
    char* end;
    long number = strtol(text, &end, 10);
    if (end == text || *end != '\0' || number < lowest || number > highest) {
        fprintf(stderr, "PhotoEditor: --%s takes %d to %d, not \"%s\"\n", option, lowest, highest,
                text);
        exit(kFailed);
    }
    return (int)number;
}

static void ApplyOption(struct Options* options, int option) {
    switch (option) {
    case 'o':
        options->optIn = ParseNumber("opt-in", optarg, -1, 1);
        break;
    case 's':
        options->state = ParseNumber("state", optarg, 0, 3);
        break;
    case 'a':
        options->agentFolder = optarg;
        break;
    case 'h':
        fputs(kUsage, stdout);
        exit(kPlayed);
    default:
        fputs(kUsage, stderr);
        exit(kFailed);
    }
}

static struct Options ParseCommandLine(int argc, char** argv) {
    static const struct option kLongOptions[] = {{"opt-in", required_argument, NULL, 'o'},
                                                 {"state", required_argument, NULL, 's'},
                                                 {"agent", required_argument, NULL, 'a'},
                                                 {"help", no_argument, NULL, 'h'},
                                                 {NULL, 0, NULL, 0}};
    struct Options options = {kNotGiven, kNotGiven, NULL, "-"};
    int option;
    while ((option = getopt_long(argc, argv, "", kLongOptions, NULL)) != -1)
        ApplyOption(&options, option);
    if (argc - optind > 1)
        ApplyOption(&options, '?');
    if (optind < argc)
        options.trace = argv[optind];
    return options;
}

static FILE* OpenTrace(const char* path) {
    if (strcmp(path, "-") == 0)
        return stdin;
    FILE* trace = fopen(path, "rb");
    if (!trace) {
        fprintf(stderr, "PhotoEditor: %s: %s\n", path, strerror(errno));
        exit(kFailed);
    }
    return trace;
}

/* Returns NULL when no session is recorded. */
static LogSession* StartSession(const struct Options* options) {
    LogSession* session;
    UTInitialize("PhotoSuite-Editor", 1, options->agentFolder);
    if (options->state != kNotGiven)
        UTSetSerializationState(options->state);
    if (options->optIn != kNotGiven)
        UTSetOptIn(options->optIn);
    UTStartSession(&session, "Photo Suite", "Photo Editor", PHOTO_EDITOR_VERSION,
                   PHOTO_EDITOR_BUILD, "en_US");
    return session;
}

static enum ExitCode Report(const struct TraceResult* result) {
    printf("PhotoEditor: %lu calls played, %lu wrong lines\n", result->calls, result->wrongLines);
    if (result->readFailed) {
        fputs("PhotoEditor: the trace could not be read to its end\n", stderr);
        return kFailed;
    }
    return result->wrongLines > 0 ? kWrongLines : kPlayed;
}

int main(int argc, char** argv) {
    struct Options options = ParseCommandLine(argc, argv);
    FILE* trace = OpenTrace(options.trace);
    LogSession* session = StartSession(&options);
    if (!session) {
        fputs("PhotoEditor: no session is recorded\n", stderr);
        return kNoSession;
    }
    struct TraceResult result =
        PlayTrace(trace, trace == stdin ? "standard input" : options.trace, session);
    UTCloseSession(&session);
    return (int)Report(&result);
}
