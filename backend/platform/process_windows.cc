#include "backend/platform/process.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <array>
#include <cstdio>
#include <cstdlib>

#include "backend/platform/windows_text.h"

// Part of the C library, but in no header of the compiler.
struct StartupInformation {
    int newMode;
};
extern "C" __declspec(dllimport) int __wgetmainargs(int* count, wchar_t*** words, wchar_t*** environment,
                                                    int expandWildcards, StartupInformation* information);

namespace vexa {

namespace {

constexpr std::size_t kOutputBuffer = std::size_t{64} * 1024;
constexpr std::size_t kMessageBuffer = std::size_t{4} * 1024;

/// Gives `stream` a place to write to, or to read nothing from, when it has none.
void holdStream(std::FILE* stream, const char* mode) {
    if (_fileno(stream) < 0 || _get_osfhandle(_fileno(stream)) == -1) {
        static_cast<void>(std::freopen("NUL", mode, stream));
    }
}

/// The console as it was, which belongs to whoever started the program.
struct ConsoleBefore {
    struct Stream {
        HANDLE handle = nullptr;
        DWORD mode = 0;
    };
    std::array<Stream, 3> streams;
    UINT codePage = 0;
};

ConsoleBefore consoleBefore;

void restoreConsole() {
    for (const ConsoleBefore::Stream& each : consoleBefore.streams) {
        if (each.handle != nullptr) SetConsoleMode(each.handle, each.mode);
    }
    if (consoleBefore.codePage != 0) SetConsoleOutputCP(consoleBefore.codePage);
}

/// Ctrl-C, and a window that is closed, end the program without its last steps.
BOOL WINAPI restoreBeforeTheEnd(DWORD /*event*/) {
    restoreConsole();
    return FALSE;  // the system's own answer follows
}

void rememberConsole() {
    constexpr std::array<DWORD, 3> kStreams = {STD_INPUT_HANDLE, STD_OUTPUT_HANDLE, STD_ERROR_HANDLE};
    for (std::size_t i = 0; i < kStreams.size(); ++i) {
        HANDLE handle = GetStdHandle(kStreams[i]);
        DWORD mode = 0;
        if (GetConsoleMode(handle, &mode) != 0) consoleBefore.streams[i] = {handle, mode};
    }
    consoleBefore.codePage = GetConsoleOutputCP();
    static_cast<void>(std::atexit(restoreConsole));
    SetConsoleCtrlHandler(restoreBeforeTheEnd, TRUE);
}

/// Has a console show UTF-8 and obey ANSI sequences, if the stream is one; other streams do not mind.
bool prepareConsole(DWORD stream) {
    HANDLE handle = GetStdHandle(stream);
    DWORD mode = 0;
    if (GetConsoleMode(handle, &mode) == 0) return false;
    SetConsoleMode(handle, mode | ENABLE_PROCESSED_OUTPUT | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
    SetConsoleOutputCP(CP_UTF8);
    return true;
}

}  // namespace

void prepareStandardStreams() {
    holdStream(stdin, "rb");
    holdStream(stdout, "wb");
    holdStream(stderr, "wb");
    for (std::FILE* const stream : {stdin, stdout, stderr}) {
        static_cast<void>(_setmode(_fileno(stream), _O_BINARY));
    }
    rememberConsole();
    // Each library has a C++ library of its own, but all share one C library: the streams stay tied to that,
    // and it does the buffering. Without a buffer, which is what it gives to consoles, it writes the first
    // byte of a text alone, and a console shows no characters that come in pieces.
    static_cast<void>(std::setvbuf(stdout, nullptr, _IOFBF, kOutputBuffer));
    prepareConsole(STD_OUTPUT_HANDLE);
    if (prepareConsole(STD_ERROR_HANDLE)) {
        // Each text that is put into the stream is handed on at once all the same.
        static_cast<void>(std::setvbuf(stderr, nullptr, _IOFBF, kMessageBuffer));
    }
}

bool hasOutputLostItsReader() { return GetFileType(GetStdHandle(STD_OUTPUT_HANDLE)) == FILE_TYPE_PIPE; }

std::vector<std::string> commandLineWords(int argc, const char* const* argv) {
    // The words of `main` are in a code page that lacks most characters. The C library cuts the whole line
    // again; the shell's own function for it would draw in a dozen libraries.
    int count = 0;
    wchar_t** words = nullptr;
    wchar_t** environment = nullptr;
    StartupInformation information{};
    constexpr int kLeaveWildcards = 0;
    if (__wgetmainargs(&count, &words, &environment, kLeaveWildcards, &information) != 0 ||
        words == nullptr) {
        return {argv, argv + argc};
    }
    std::vector<std::string> result;
    result.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) result.emplace_back(narrowText(words[i]));
    return result;
}

}  // namespace vexa
