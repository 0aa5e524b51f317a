// Writes JSON objects, one a line.
#pragma once

#include <memory>
#include <nlohmann/json.hpp>
#include <string>

#include "backend/platform/output_file.h"

namespace vexa::program {

/// A file of JSON lines, or standard output. Lines are gathered and written in larger pieces; `flush` and the
/// destructor write the rest.
class JsonLines {
  public:
    JsonLines() = default;
    ~JsonLines() { flush(); }
    JsonLines(const JsonLines&) = delete;
    JsonLines& operator=(const JsonLines&) = delete;

    /// Begins to write to the file at `path` (UTF-8), which only its owner may read, or to standard output
    /// for
    /// "-".
    [[nodiscard]] FileResult open(const std::string& path);
    /// Adds one line. Bytes that are no UTF-8 become U+FFFD. After a failure nothing more is written.
    void write(const nlohmann::ordered_json& line);
    void flush();
    /// The first failure to write; ok when there was none.
    [[nodiscard]] const FileResult& result() const { return result_; }

  private:
    std::unique_ptr<OutputFile> file_;  // null for standard output
    std::string pending_;
    FileResult result_;
};

}  // namespace vexa::program
