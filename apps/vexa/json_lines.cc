#include "apps/vexa/json_lines.h"

#include <cstddef>
#include <iostream>

#include "backend/platform/private_file.h"
#include "backend/text/system_text.h"

namespace vexa::program {

namespace {

constexpr std::size_t kPieceSize = std::size_t{64} * 1024;

FileResult writeToStandardOutput(const std::string& bytes) {
    std::cout.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush();
    return std::cout ? FileResult()
                     : FileResult{false, std::string("standard output cannot be written"_text)};
}

}  // namespace

FileResult JsonLines::open(const std::string& path) {
    if (path == "-") {
        return {};
    }
    makePrivate(path);
    file_ = std::make_unique<OutputFile>();
    return file_->open(path);
}

void JsonLines::write(const nlohmann::ordered_json& line) {
    pending_ += line.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
    pending_ += '\n';
    // On standard output lines stand among what else is printed, so they do not wait.
    if (file_ == nullptr || pending_.size() >= kPieceSize) {
        flush();
    }
}

void JsonLines::flush() {
    if (!pending_.empty() && result_) {
        result_ = file_ == nullptr ? writeToStandardOutput(pending_) : file_->write(pending_);
        if (result_ && file_ != nullptr) {
            result_ = file_->flush();
        }
    }
    pending_.clear();
}

}  // namespace vexa::program
