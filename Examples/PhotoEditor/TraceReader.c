#include "TraceReader.h"

#include "TraceLine.h"

#include <stdlib.h>
#include <string.h>

struct Group {
    char* name;
    int id;
};

struct Player {
    LogSession* session;
    struct Group* groups;
    size_t groupCount;
};

/* A call of the trace: plays its words, verb excluded, or returns why it cannot. */
typedef const char* (*PlayCall)(struct Player* player, const struct Word* words, size_t count);

static const char kNotOptional[] = "\"-\" where a text is required";
static const char kOutOfMemory[] = "out of memory";

static int IsAbsent(const struct Word* word) {
    return !word->quoted && strcmp(word->text, "-") == 0;
}

static const char* Optional(const struct Word* word) {
    return IsAbsent(word) ? NULL : word->text;
}

/* The document id that may end a line: the word at `index`. */
static unsigned char* DocumentId(const struct Word* words, size_t count, size_t index,
                                 int* length) {
    int given = count > index && !IsAbsent(&words[index]);
    *length = given ? (int)strlen(words[index].text) : 0;
    return given ? (unsigned char*)words[index].text : NULL;
}

static struct Group* FindGroup(const struct Player* player, const char* name) {
    for (size_t i = 0; i < player->groupCount; ++i)
        if (strcmp(player->groups[i].name, name) == 0)
            return &player->groups[i];
    return NULL;
}

/* The group of that name, added when there is none; NULL without memory. */
static struct Group* NameGroup(struct Player* player, const char* name) {
    struct Group* known = FindGroup(player, name);
    if (known)
        return known;
    struct Group* groups = realloc(player->groups, (player->groupCount + 1) * sizeof *groups);
    if (!groups)
        return NULL;
    player->groups = groups;
    char* copy = malloc(strlen(name) + 1);
    if (!copy)
        return NULL;
    groups[player->groupCount].name = strcpy(copy, name);
    return &groups[player->groupCount++];
}

static const char* PlayValue(struct Player* player, const struct Word* words, size_t count) {
    (void)count;
    if (IsAbsent(&words[0]))
        return kNotOptional;
    UTAddToSession(player->session, words[0].text, Optional(&words[1]));
    return NULL;
}

static const char* PlayEvent(struct Player* player, const struct Word* words, size_t count) {
    int length;
    unsigned char* documentId = DocumentId(words, count, 3, &length);
    UTLogEvent(player->session, Optional(&words[0]), Optional(&words[1]), Optional(&words[2]),
               documentId, length);
    return NULL;
}

static const char* PlayGroup(struct Player* player, const struct Word* words, size_t count) {
    int length;
    unsigned char* documentId = DocumentId(words, count, 4, &length);
    if (IsAbsent(&words[1]) || IsAbsent(&words[3]))
        return kNotOptional;
    struct Group* group = NameGroup(player, words[0].text);
    if (!group)
        return kOutOfMemory;
    UTNewDataGroup(player->session, words[1].text, Optional(&words[2]), words[3].text, &group->id,
                   documentId, length);
    return group->id == -1 ? "the group was refused" : NULL;
}

static const char* PlayAdd(struct Player* player, const struct Word* words, size_t count) {
    (void)count;
    const struct Group* group = FindGroup(player, words[0].text);
    if (!group || group->id == -1)
        return "unknown group";
    if (IsAbsent(&words[1]))
        return kNotOptional;
    UTAddToGroup(player->session, group->id, words[1].text, Optional(&words[2]));
    return NULL;
}

static const struct Verb {
    const char* name;
    size_t fewestWords, mostWords;
    PlayCall play;
} kVerbs[] = {
    {"value", 2, 2, PlayValue},
    {"event", 3, 4, PlayEvent},
    {"group", 4, 5, PlayGroup},
    {"add", 3, 3, PlayAdd},
};

static const char* PlayLine(struct Player* player, const struct TraceLine* line) {
    size_t count = line->wordCount - 1;
    for (size_t i = 0; i < sizeof kVerbs / sizeof *kVerbs; ++i) {
        if (strcmp(line->words[0].text, kVerbs[i].name) != 0)
            continue;
        if (count < kVerbs[i].fewestWords)
            return "too few words";
        if (count > kVerbs[i].mostWords)
            return "too many words";
        return kVerbs[i].play(player, line->words + 1, count);
    }
    return "unknown verb";
}

static void ForgetGroups(struct Player* player) {
    for (size_t i = 0; i < player->groupCount; ++i)
        free(player->groups[i].name);
    free(player->groups);
}

struct TraceResult PlayTrace(FILE* trace, const char* name, LogSession* session) {
    struct TraceResult result = {0, 0, 0};
    struct Player player = {session, NULL, 0};
    struct TraceLine line = {.number = 0};
    const char* reason;
    while (ReadTraceLine(trace, &line, &reason)) {
        if (!reason && line.wordCount == 0)
            continue;
        if (!reason)
            reason = PlayLine(&player, &line);
        if (!reason) {
            ++result.calls;
            continue;
        }
        fprintf(stderr, "%s:%lu: %s\n", name, line.number, reason);
        ++result.wrongLines;
    }
    result.readFailed = ferror(trace) != 0;
    ForgetGroups(&player);
    return result;
}
