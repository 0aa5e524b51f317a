#include <windows.h>

#include <array>
#include <cstdlib>
#include <iostream>

#include "backend/platform/terminal.h"
#include "backend/platform/windows_text.h"

namespace vexa {

namespace {

HANDLE handleOf(StandardStream stream) {
    switch (stream) {
        case StandardStream::input:
            return GetStdHandle(STD_INPUT_HANDLE);
        case StandardStream::output:
            return GetStdHandle(STD_OUTPUT_HANDLE);
        case StandardStream::error:
            return GetStdHandle(STD_ERROR_HANDLE);
    }
    return nullptr;
}

/// Keeps the console from showing what is typed for as long as the object lives.
class EchoOff {
  public:
    explicit EchoOff(HANDLE console) : console_(console) {
        works_ = GetConsoleMode(console_, &before_) != 0 &&
                 SetConsoleMode(console_, (before_ | ENABLE_LINE_INPUT) & ~DWORD{ENABLE_ECHO_INPUT}) != 0;
    }
    ~EchoOff() {
        if (works_) SetConsoleMode(console_, before_);
    }
    EchoOff(const EchoOff&) = delete;
    EchoOff& operator=(const EchoOff&) = delete;

    [[nodiscard]] bool works() const { return works_; }

  private:
    HANDLE console_;
    DWORD before_ = 0;
    bool works_ = false;
};

}  // namespace

bool isStreamAt(StandardStream /*stream*/, const std::string& /*path*/) { return false; }

std::optional<std::string> readTerminalLine() {
    // The C library would read it in the console's code page.
    HANDLE console = handleOf(StandardStream::input);
    constexpr wchar_t kEndOfInput = 0x1A;
    std::wstring line;
    while (line.find(L'\n') == std::wstring::npos) {
        std::array<wchar_t, 512> piece{};
        DWORD count = 0;
        const BOOL read =
            ReadConsoleW(console, piece.data(), static_cast<DWORD>(piece.size()), &count, nullptr);
        if (read == 0 || count == 0) return std::nullopt;
        line.append(piece.data(), count);
        if (line[0] == kEndOfInput) return std::nullopt;
    }
    line.resize(line.find_first_of(L"\r\n"));
    return narrowText(line);
}

bool isTerminal(StandardStream stream) {
    DWORD mode = 0;
    return GetConsoleMode(handleOf(stream), &mode) != 0;
}

std::size_t terminalColumns(StandardStream stream) {
    CONSOLE_SCREEN_BUFFER_INFO info{};
    if (GetConsoleScreenBufferInfo(handleOf(stream), &info) == 0) return 0;
    const int columns = info.srWindow.Right - info.srWindow.Left + 1;
    return columns > 0 ? static_cast<std::size_t>(columns) : 0;
}

bool showsColors(StandardStream stream) {
    // Whether the console could be told to obey sequences when the program began; old ones print them.
    DWORD mode = 0;
    const bool obeys =
        GetConsoleMode(handleOf(stream), &mode) != 0 && (mode & ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
    const char* const unwanted = std::getenv("NO_COLOR");
    return obeys && (unwanted == nullptr || *unwanted == '\0');
}

std::optional<std::string> readSecretLine(const std::string& prompt) {
    const EchoOff silence(handleOf(StandardStream::input));
    if (!silence.works()) return std::nullopt;
    std::cerr << prompt << std::flush;
    std::optional<std::string> line = readTerminalLine();
    std::cerr << '\n' << std::flush;
    return line;
}

}  // namespace vexa
