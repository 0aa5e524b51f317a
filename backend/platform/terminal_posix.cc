#include <fcntl.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <cassert>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <iostream>

#include "backend/platform/terminal.h"

namespace vexa {

namespace {

/// Keeps the terminal from showing what is typed for as long as the object lives. An interrupt waits until
/// then, so that it does not leave a silent terminal behind.
class EchoOff {
  public:
    EchoOff() {
        sigset_t held;
        sigemptyset(&held);
        sigaddset(&held, SIGINT);
        sigaddset(&held, SIGTSTP);
        sigprocmask(SIG_BLOCK, &held, &signalsBefore_);
        works_ = tcgetattr(STDIN_FILENO, &before_) == 0;
        if (works_) {
            termios silent = before_;
            silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
            works_ = tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent) == 0;
        }
    }
    ~EchoOff() {
        if (works_) {
            tcsetattr(STDIN_FILENO, TCSAFLUSH, &before_);
        }
        sigprocmask(SIG_SETMASK, &signalsBefore_, nullptr);
    }
    EchoOff(const EchoOff&) = delete;
    EchoOff& operator=(const EchoOff&) = delete;

    [[nodiscard]] bool works() const { return works_; }

  private:
    sigset_t signalsBefore_{};
    termios before_{};
    bool works_ = false;
};

std::string environment(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

}  // namespace

void holdStandardStreams() {
    for (int number = 0; number <= 2; ++number) {
        if (fcntl(number, F_GETFD) == -1 && errno == EBADF) {
            // The lowest free number is taken, which is this one.
            [[maybe_unused]] const int held = open("/dev/null", O_RDWR);
            assert(held == number || held == -1);
        }
    }
}

bool isTerminal(StandardStream stream) { return isatty(static_cast<int>(stream)) == 1; }

std::size_t terminalColumns(StandardStream stream) {
    winsize size{};
    const bool known = isTerminal(stream) && ioctl(static_cast<int>(stream), TIOCGWINSZ, &size) == 0;
    return known ? size.ws_col : 0;
}

bool coloursUnwanted() { return !environment("NO_COLOR").empty(); }

std::optional<std::string> readSecretLine(const std::string& prompt) {
    const EchoOff silence;
    if (!silence.works()) {
        return std::nullopt;
    }
    std::cerr << prompt << std::flush;
    std::string line;
    const bool read = static_cast<bool>(std::getline(std::cin, line));
    std::cerr << '\n' << std::flush;
    return read ? std::optional(line) : std::nullopt;
}

}  // namespace vexa
