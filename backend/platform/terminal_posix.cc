#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

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

bool isTerminal(StandardStream stream) { return isatty(static_cast<int>(stream)) == 1; }

std::size_t terminalColumns(StandardStream stream) {
    winsize size{};
    const bool known = isTerminal(stream) && ioctl(static_cast<int>(stream), TIOCGWINSZ, &size) == 0;
    return known ? size.ws_col : 0;
}

bool showsColors(StandardStream stream) {
    return isTerminal(stream) && environment("NO_COLOR").empty() && environment("TERM") != "dumb";
}

std::optional<std::string> readTerminalLine() {
    std::string line;
    return std::getline(std::cin, line) ? std::optional(line) : std::nullopt;
}

std::optional<std::string> readSecretLine(const std::string& prompt) {
    const EchoOff silence;
    if (!silence.works()) {
        return std::nullopt;
    }
    std::cerr << prompt << std::flush;
    std::optional<std::string> line = readTerminalLine();
    std::cerr << '\n' << std::flush;
    return line;
}

}  // namespace vexa
