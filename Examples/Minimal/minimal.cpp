// Run it with the folder that holds the agent "LogTransport2.app".
#include <UTSession.hpp>

int main(int argc, char** argv) {
    UT::Initialize("MyProduct", true, argc > 1 ? argv[1] : std::string_view());
    UT::SetOptIn(UT::OptIn::In); // what the user answered
    UT::Session session("My Suite", "My Product", "1.0", "100", "en_US");
    session.Add("Theme", "dark");
    session.LogEvent("File", "Open", "Image");
}
