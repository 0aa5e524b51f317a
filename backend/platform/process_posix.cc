#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cassert>
#include <cerrno>
#include <csignal>
#include <ios>

#include "backend/platform/process.h"

namespace vexa {

void prepareStandardStreams() {
    for (int number = 0; number <= 2; ++number) {
        if (fcntl(number, F_GETFD) == -1 && errno == EBADF) {
            // The lowest free number is taken, which is this one. What is written to standard output fails,
            // so that the program says that nobody got it.
            [[maybe_unused]] const int held = open("/dev/null", number == STDOUT_FILENO ? O_RDONLY : O_RDWR);
            assert(held == number || held == -1);
        }
    }
    // A reader that goes away ends no run: documents are written all the same, and the stream knows that it
    // failed.
    std::signal(SIGPIPE, SIG_IGN);
    // Nor does a file that grows beyond the limit of the user's shell: writing fails, and is reported.
    std::signal(SIGXFSZ, SIG_IGN);
    // All libraries share one C++ library with one buffer, which is fastest alone.
    std::ios::sync_with_stdio(false);
}

bool hasOutputLostItsReader() {
    pollfd output{STDOUT_FILENO, POLLOUT, 0};
    return poll(&output, 1, 0) > 0 && (output.revents & POLLERR) != 0;
}

std::vector<std::string> commandLineWords(int argc, const char* const* argv) { return {argv, argv + argc}; }

}  // namespace vexa
