// A host that plays calls of the library from standard input, one per line, and prints what they
// give back. The words of a line are those of the C call; strings may be quoted as std::quoted
// does, NULL stands for a null pointer, and single letters name session and group variables.
//
//   repeat N CALL   plays a call N times   failing N CALL  its Nth allocation fails
//   copy a b        copies session variable b; F holds a foreign handle from the start
//   count a         records 0, 1, 2, ... and prints each when it is recorded, until it is killed;
//                   each tenth is also the demographic answer "Count"
//   mark            calls the system with a name that stands out in a trace
//   allocations     prints how many were counted; see Faults.h for how they fail
//   host VERB ...   does something with the process itself, see HostState.h
#include "LogSession/UTLogData.h"
#include "Tests/Support/ScriptHost/Faults.h"
#include "Tests/Support/ScriptHost/HostState.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iomanip>
#include <iostream>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

// Functions of a host may have the names of others that the library uses.
extern "C" [[gnu::visibility("default")]] void MD5Init() {
    std::abort();
}

namespace {

// Of the call; NULL is nothing. Calls may come when static objects have gone, so some never go.
auto& g_words = *new std::vector<std::optional<std::string>>;
LogSession* g_sessions[128];
int g_groups[128];
char* g_buffer; // as long as the host says, to the byte

// What the words stand for; nothing here goes through operator new.

const char* Text(std::size_t i) {
    return g_words.at(i) ? g_words[i]->c_str() : nullptr;
}
int Number(std::size_t i) {
    return std::atoi(Text(i));
}
LogSession** Variable(std::size_t i) {
    return Text(i) ? &g_sessions[*Text(i) & 127] : nullptr;
}
LogSession* Session(std::size_t i) {
    return Text(i) ? *Variable(i) : nullptr;
}
int* GroupVariable(std::size_t i) {
    return Text(i) ? &g_groups[*Text(i) & 127] : nullptr;
}
int Group(std::size_t i) {
    return *Text(i) >= 'a' ? *GroupVariable(i) : Number(i);
}
char* Buffer(const char* content, int size) {
    std::free(g_buffer);
    const std::size_t bytes = content ? static_cast<std::size_t>(std::max(size, 1)) : 0;
    g_buffer = content ? static_cast<char*>(std::malloc(bytes)) : nullptr;
    return content ? std::strncpy(g_buffer, content, bytes) : nullptr;
}
unsigned char* Document(std::size_t i) {
    const int size =
        Text(i) ? std::min(Number(i + 1), static_cast<int>(g_words[i]->size()) + 1) : 0;
    return reinterpret_cast<unsigned char*>(Buffer(Text(i), size));
}

void PrintSession() {
    std::cout << g_words[1].value_or("NULL") << (Session(1) ? "=open\n" : "=NULL\n");
}

/// Calls with the buffer and the length at `i`, and prints them, with dots for NULs.
void Answer(std::size_t i) {
    const int size = Text(i) ? Number(i) : 0;
    char* buffer = Buffer(Text(i) ? "################" : nullptr, size);
    unsigned long number = Text(i + 1) ? static_cast<unsigned long>(Number(i + 1)) : 0;
    unsigned long* length = Text(i + 1) ? &number : nullptr;
    i == 2 ? UTGetDemographic(Text(1), buffer, length)
           : UTGetNonDefaultDemographic(Text(1), Text(2), buffer, length);
    std::replace(buffer, buffer + size, '\0', '.');
    std::cout << std::string(buffer, buffer + size) << " " << number << "\n";
}

void PlayLines();

const auto& kCalls = *new const std::map<std::string, void (*)()>{
    {"UTInitialize", [] { UTInitialize(Text(1), Number(2) != 0, Text(3)); }},
    {"UTStartSession",
     [] {
         UTStartSession(Variable(1), Text(2), Text(3), Text(4), Text(5), Text(6));
         PrintSession();
     }},
    {"UTAddToSession", [] { UTAddToSession(Session(1), Text(2), Text(3)); }},
    {"UTLogEvent",
     [] { UTLogEvent(Session(1), Text(2), Text(3), Text(4), Document(5), Number(6)); }},
    {"UTNewDataGroup",
     [] {
         UTNewDataGroup(Session(1), Text(2), Text(3), Text(4), GroupVariable(5), Document(6),
                        Number(7));
         std::cout << g_words[5].value_or("NULL") << "=" << (Text(5) ? Group(5) : 0) << "\n";
     }},
    {"UTAddToGroup", [] { UTAddToGroup(Session(1), Group(2), Text(3), Text(4)); }},
    {"UTCloseSession", [] { UTCloseSession(Variable(1)), PrintSession(); }},
    {"UTGetOptIn", [] { std::cout << UTGetOptIn() << "\n"; }},
    {"UTSetOptIn", [] { UTSetOptIn(Number(1)); }},
    {"UTOptInGet", [] { std::cout << UTOptInGet(Text(1)) << "\n"; }},
    {"UTOptInSet", [] { UTOptInSet(Text(1), Number(2)); }},
    {"UTGetDemographic", [] { Answer(2); }},
    {"UTSetDemographic", [] { UTSetDemographic(Text(1), Text(2)); }},
    {"UTGetNonDefaultDemographic", [] { Answer(3); }},
    {"UTSetNonDefaultDemographic", [] { UTSetNonDefaultDemographic(Text(1), Text(2), Text(3)); }},
    {"UTSetSerializationState", [] { std::cout << UTSetSerializationState(Number(1)) << "\n"; }},
    {"copy", [] { *Variable(1) = Session(2); }},
    {"host", [] { ActAsHost(Text(1), Text(2), PlayLines); }},
    {"count",
     [] {
         for (int i = 0;; std::cout << i++ << std::endl) {
             UTAddToSession(Session(1), "Number", std::to_string(i).c_str());
             if (i % 10 == 0)
                 UTSetDemographic("Count", std::to_string(i).c_str());
         }
     }},
    {"mark", [] { std::cout << ::access("mark", F_OK) << "\n"; }},
    {"allocations", [] { std::cout << CountedAllocations() << "\n"; }},
};

void Split(const std::string& line) {
    g_words.clear();
    std::istringstream in(line);
    while (!(in >> std::ws).eof()) {
        const bool isQuoted = in.peek() == '"';
        std::string word;
        in >> std::quoted(word);
        g_words.push_back(!isQuoted && word == "NULL" ? std::nullopt : std::optional(word));
    }
}

void PlayLines() {
    for (std::string line; std::getline(std::cin, line);) {
        Split(line);
        int times = 1, failing = 0;
        if (g_words.at(0) == "repeat" || g_words[0] == "failing") {
            (g_words[0] == "repeat" ? times : failing) = Number(1);
            g_words.erase(g_words.begin(), g_words.begin() + 2);
        }
        for (const auto call = kCalls.at(*g_words.at(0)); times > 0; --times) {
            g_isInCall = true;
            if (failing > 0)
                FailAllocation(failing);
            call();
            g_isInCall = false;
            if (failing > 0)
                FailAllocation(0);
        }
    }
}

} // namespace

int main() {
    std::cin.tie(nullptr); // results come at the end, so that only the library writes before
    g_sessions[int{'F'}] = reinterpret_cast<LogSession*>(g_groups);
    PlayLines();
}
