/* Run it with the folder that holds the agent "LogTransport2.app". */
#include <UTLogData.h>

int main(int argc, char** argv) {
    LogSession* session;
    UTInitialize("MyProduct", 1, argc > 1 ? argv[1] : NULL);
    UTSetOptIn(1); /* what the user answered */
    UTStartSession(&session, "My Suite", "My Product", "1.0", "100", "en_US");
    UTAddToSession(session, "Theme", "dark");
    UTLogEvent(session, "File", "Open", "Image", NULL, 0);
    UTCloseSession(&session);
    return 0;
}
