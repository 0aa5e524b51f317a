// Writes JSON objects, one a line.
#pragma once

#include <functional>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>

#include "backend/platform/output_file.h"

namespace vexa::program {

/// A file of JSON lines, or standard output. Lines are gathered and written in larger pieces; `flush` and the
/// destructor write the rest.
class JsonLines {
  public:
    JsonLines() = default;
    ~JsonLines();
    JsonLines(const JsonLines&) = delete;
    JsonLines& operator=(const JsonLines&) = delete;

    /// Gets ready to write to the file at `path` (UTF-8), which only its owner may read from now on, or to
    /// standard output, whose name is "-" among others. A file that is there keeps its content until `begin`;
    /// one that is not there is made, and goes again where nothing was begun.
    [[nodiscard]] FileResult open(const std::string& path);
    /// Drops what the file held before. The first line does so, too.
    void begin();
    /// Whether nobody but the user can read what is written, neither on a screen nor in the file.
    [[nodiscard]] bool isPrivate() const { return isPrivate_; }
    /// Every line passes through `filter` before it is written.
    void setFilter(std::function<void(nlohmann::ordered_json&)> filter) { filter_ = std::move(filter); }
    /// Adds one line. Bytes that are no UTF-8 become U+FFFD. After a failure nothing more is written.
    void write(const nlohmann::ordered_json& line);
    void flush();
    /// The first failure to write; ok when there was none.
    [[nodiscard]] const FileResult& result() const { return result_; }

  private:
    static std::string textOf(const nlohmann::ordered_json& line);

    std::unique_ptr<OutputFile> file_;  // null for standard output
    std::function<void(nlohmann::ordered_json&)> filter_;
    std::string path_;  // of the file
    bool isNew_ = false;
    bool isPrivate_ = false;
    bool isBegun_ = false;
    std::string pending_;
    FileResult result_;
};

}  // namespace vexa::program
