#include "TraceLine.h"

#include <string.h>

static const char kBlanks[] = " \t\r";

static int IsBlankOrEnd(char character) {
    return character == '\0' || strchr(kBlanks, character) != NULL;
}

/* Reads one line, to its end whatever it holds, so that the next one is read from its start. */
static int ReadText(FILE* trace, char* text, const char** reason) {
    size_t length = 0;
    int character;
    while ((character = getc(trace)) != EOF && character != '\n') {
        if (character == '\0')
            *reason = "NUL byte";
        else if (length == kMaxLineLength)
            *reason = "line too long";
        else
            text[length++] = (char)character;
    }
    text[length] = '\0';
    return character != EOF || length > 0 || *reason != NULL;
}

/* The character that an escape stands for; NUL for an unknown one. */
static char Unescape(char escape) {
    switch (escape) {
    case 'n':
        return '\n';
    case '"':
    case '\\':
        return escape;
    default:
        return '\0';
    }
}

/* `cursor` stands on the opening quote. The word is unescaped where it stands. */
static const char* SplitQuotedWord(char** cursor, struct Word* word) {
    char* in = *cursor + 1;
    char* out = in;
    word->text = out;
    word->quoted = 1;
    for (; *in != '"'; ++in) {
        if (*in == '\\' && in[1] != '\0') {
            *out = Unescape(*++in);
            if (*out++ == '\0')
                return "unknown escape";
        } else if (*in != '\0') {
            *out++ = *in;
        } else {
            return "unclosed quote";
        }
    }
    *cursor = in + 1;
    *out = '\0';
    return IsBlankOrEnd(**cursor) ? NULL : "no blank after a closing quote";
}

static const char* SplitPlainWord(char** cursor, struct Word* word) {
    word->text = *cursor;
    word->quoted = 0;
    for (; !IsBlankOrEnd(**cursor); ++*cursor)
        if (**cursor == '"')
            return "quote inside a word";
    if (**cursor != '\0')
        *(*cursor)++ = '\0';
    return NULL;
}

static const char* SplitWords(struct TraceLine* line) {
    char* cursor = line->text + strspn(line->text, kBlanks);
    const char* reason = NULL;
    if (*cursor == '#')
        return NULL;
    while (*cursor != '\0' && !reason) {
        struct Word* word = &line->words[line->wordCount];
        if (line->wordCount++ == kMaxWords)
            return "too many words";
        reason = *cursor == '"' ? SplitQuotedWord(&cursor, word) : SplitPlainWord(&cursor, word);
        cursor += strspn(cursor, kBlanks);
    }
    return reason;
}

int ReadTraceLine(FILE* trace, struct TraceLine* line, const char** reason) {
    *reason = NULL;
    line->wordCount = 0;
    if (!ReadText(trace, line->text, reason))
        return 0;
    ++line->number;
    if (!*reason)
        *reason = SplitWords(line);
    if (*reason)
        line->wordCount = 0;
    return 1;
}
