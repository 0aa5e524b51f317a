#include "backend/platform/output_file.h"

#include <cerrno>
#include <ios>

#include "backend/platform/file_system_native.h"
#include "backend/platform/system_reason.h"
#include "backend/text/system_text.h"

namespace vexa {

namespace {

FileResult outcome(const std::ofstream& stream) {
    if (stream) {
        return {};
    }
    return {false, errno != 0 ? systemReason(errno) : std::string("it cannot be written"_text)};
}

}  // namespace

FileResult OutputFile::open(const std::string& path, Before before) {
    if (stream_.is_open()) {
        stream_.close();
    }
    errno = 0;
    stream_.open(streamPath(path),
                 std::ios::binary | (before == Before::kept ? std::ios::app : std::ios::trunc));
    return outcome(stream_);
}

FileResult OutputFile::write(std::string_view bytes) {
    errno = 0;
    stream_.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return outcome(stream_);
}

FileResult OutputFile::flush() {
    errno = 0;
    stream_.flush();
    return outcome(stream_);
}

}  // namespace vexa
