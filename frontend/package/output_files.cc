#include "frontend/package/output_files.h"

#include <algorithm>

#include "backend/platform/file_system.h"
#include "backend/platform/kept_file.h"

namespace vexa::frontend {
namespace {

/// What is handed to the system together.
constexpr std::size_t blockBytes = 1U << 20U;

}  // namespace

PackageResult OutputFiles::failed(const FileResult& result) {
    result_ = PackageResult::ofFile(PackageProblem::cannotWrite, result);
    return result_;
}

PackageResult OutputFiles::begin(const std::string& path, std::size_t& file, NewFileRights rights) {
    if (!result_) {
        return result_;
    }
    if (isKept(path)) {
        result_ = {PackageProblem::cannotWrite, "it is the trace of this run"_text};
        return result_;
    }
    FileSystem& system = FileSystem::current();
    File begun;
    begun.path = path;
    begun.place = system.canonicalPath(path);
    begun.isNew = !system.isFile(path);
    if (const std::optional<FileState> before = system.state(path)) {
        begun.rights = before->rights;
        begun.hasOtherNames = before->hasOtherNames;
    }
    const bool again = std::any_of(files_.begin(), files_.end(),
                                   [&begun](const File& other) { return other.place == begun.place; });
    if (again) {
        result_ = {PackageProblem::cannotWrite, "it is written twice"_text};
        return result_;
    }
    const FileResult made = rights == NewFileRights::ownerOnly
                                ? system.createPrivateTemporary(path, begun.temporary)
                                : system.createTemporary(path, begun.temporary);
    if (!made) {
        return failed(made);
    }
    file = files_.size();
    files_.push_back(std::move(begun));
    return {};
}

PackageResult OutputFiles::write(std::size_t file, std::string_view bytes) {
    if (!result_) {
        return result_;
    }
    File& written = files_[file];
    while (!bytes.empty()) {
        const std::string_view part = bytes.substr(0, blockBytes - written.waiting.size());
        written.waiting += part;
        bytes.remove_prefix(part.size());
        if (written.waiting.size() == blockBytes) {
            if (PackageResult result = pass(written); !result) {
                return result;
            }
        }
    }
    return {};
}

PackageResult OutputFiles::pass(File& file) {
    const FileResult appended = FileSystem::current().append(file.temporary, file.waiting);
    file.waiting.clear();
    return appended ? PackageResult() : failed(appended);
}

ByteSink OutputFiles::sink(std::size_t file) {
    return [this, file](std::string_view bytes) { return write(file, bytes); };
}

PackageResult OutputFiles::add(const std::string& path, std::string_view content) {
    std::size_t file = 0;
    if (PackageResult result = begin(path, file); !result) {
        return result;
    }
    return write(file, content);
}

PackageResult OutputFiles::commit() {
    PackageResult result = flushAll();
    if (result) {
        result = replaceAll();
    }
    if (result) {
        compareWithPredecessors();
        files_.clear();
    } else {
        abandon();
    }
    return result;
}

PackageResult OutputFiles::flushAll() {
    for (File& file : files_) {
        if (result_ && !file.waiting.empty()) {
            result_ = pass(file);
        }
        if (!result_) {
            return result_;
        }
        if (const FileResult flushed = FileSystem::current().flush(file.temporary); !flushed) {
            return failed(flushed);
        }
    }
    return result_;
}

PackageResult OutputFiles::replaceAll() {
    if (main_ != none && main_ < files_.size()) {
        std::rotate(files_.begin() + static_cast<std::ptrdiff_t>(main_),
                    files_.begin() + static_cast<std::ptrdiff_t>(main_) + 1, files_.end());
    }
    for (File& file : files_) {
        if (const FileResult replaced = FileSystem::current().replace(file.temporary, file.path); !replaced) {
            return failed(replaced);
        }
        file.inPlace = true;
    }
    return {};
}

void OutputFiles::compareWithPredecessors() {
    withOtherRights_.clear();
    withOtherNames_.clear();
    for (const File& file : files_) {
        if (file.hasOtherNames) withOtherNames_.push_back(file.path);
        const std::optional<FileState> now = FileSystem::current().state(file.path);
        if (now && !file.rights.empty() && now->rights != file.rights) withOtherRights_.push_back(file.path);
    }
}

// What made the writing fail is what matters; a temporary file that stays behind harms nobody.
void OutputFiles::abandon() {
    for (const File& file : files_) {
        if (!file.inPlace) {
            static_cast<void>(FileSystem::current().remove(file.temporary));
        } else if (file.isNew) {
            static_cast<void>(FileSystem::current().remove(file.path));
        }
    }
    files_.clear();
}

}  // namespace vexa::frontend
