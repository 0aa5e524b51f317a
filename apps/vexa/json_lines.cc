#include "apps/vexa/json_lines.h"

#include <cstddef>
#include <iostream>

#include "backend/platform/file_system.h"
#include "backend/platform/private_file.h"
#include "backend/platform/terminal.h"
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
    if (path == "-" || isStreamAt(StandardStream::output, path)) {
        return {};
    }
    isNew_ = !FileSystem::current().isFile(path);
    isPrivate_ = makePrivate(path);
    file_ = std::make_unique<OutputFile>();
    FileResult result = file_->open(path, OutputFile::Before::kept);
    if (result) {
        path_ = path;
    }
    return result;
}

JsonLines::~JsonLines() {
    flush();
    if (file_ != nullptr && !path_.empty() && !isBegun_ && isNew_ && FileSystem::current().isFile(path_)) {
        file_.reset();
        static_cast<void>(FileSystem::current().remove(path_));
    }
}

void JsonLines::begin() {
    if (isBegun_) {
        return;
    }
    isBegun_ = true;
    // A pipe is not opened again: its reader would take that for the end.
    if (file_ != nullptr && result_ && FileSystem::current().isFile(path_)) {
        result_ = file_->open(path_);
    }
}

std::string JsonLines::textOf(const nlohmann::ordered_json& line) {
    return line.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + '\n';
}

void JsonLines::write(const nlohmann::ordered_json& line) {
    begin();
    if (filter_) {
        nlohmann::ordered_json filtered = line;
        filter_(filtered);
        pending_ += textOf(filtered);
    } else {
        pending_ += textOf(line);
    }
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
