// Sleeps for as many milliseconds as its last argument says; without a number, for good. The tests run copies
// of it where they need another image.

#include <unistd.h>

#include <charconv>
#include <cstring>

int main(int argc, char** argv) {
    unsigned milliseconds = 0;
    const char* const last = argv[argc > 0 ? argc - 1 : 0];
    if (argc > 1 && std::from_chars(last, last + std::strlen(last), milliseconds).ec == std::errc{}) {
        usleep(milliseconds * 1000);
        return 0;
    }
    for (;;)
        pause();
}
