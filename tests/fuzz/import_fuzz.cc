// Any bytes as an imported file: the first one says in which form. What is taken in is printed as JSON, and
// that is taken in again and printed the same.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

#include "backend/platform/file_system.h"
#include "frontend/import/import_file.h"
#include "frontend/import/results_reader.h"
#include "frontend/import/results_writer.h"
#include "frontend/import/statistic_words.h"

using namespace vexa::frontend;

namespace {

/// Files that an import names are not read: there are none.
class NoFiles : public vexa::FileSystem {
  public:
    NoFiles() { install(this); }
    ~NoFiles() override { install(nullptr); }
    NoFiles(const NoFiles&) = delete;
    NoFiles& operator=(const NoFiles&) = delete;

    vexa::FileResult read(const std::string& /*path*/, std::string& /*content*/,
                          std::uint64_t /*limit*/) override {
        return {false, "not here"};
    }
    vexa::FileResult readStream(const std::string& path, std::string& content, std::uint64_t limit) override {
        return read(path, content, limit);
    }
    bool isFile(const std::string& /*path*/) override { return false; }
    bool isFolder(const std::string& /*path*/) override { return false; }
    std::string workingFolder() override { return "/"; }
    std::string canonicalPath(const std::string& path) override { return path; }
    vexa::FileResult createTemporary(const std::string& /*path*/, std::string& /*temporary*/) override {
        return {false, "not here"};
    }
    vexa::FileResult append(const std::string& /*path*/, std::string_view /*bytes*/) override {
        return {false, "not here"};
    }
    vexa::FileResult flush(const std::string& /*path*/) override { return {false, "not here"}; }
    vexa::FileResult replace(const std::string& /*from*/, const std::string& /*to*/) override {
        return {false, "not here"};
    }
    vexa::FileResult remove(const std::string& /*path*/) override { return {false, "not here"}; }
};

class NoLooks : public LookSource {
  public:
    ReadLook find(std::string_view /*name*/) override { return {nullptr, "none"}; }
    bool hasStyleSheet(const std::string& /*name*/) const override { return false; }
};

constexpr ImportForm forms[] = {ImportForm::json, ImportForm::csv, ImportForm::tsv,      ImportForm::html,
                                ImportForm::svg,  ImportForm::png, ImportForm::markdown, ImportForm::text};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static NoFiles files;
    static NoLooks looks;
    static const StatisticWords words;
    if (size == 0) {
        return 0;
    }
    ImportOptions options;
    options.form = forms[data[0] % std::size(forms)];  // '0' is json in the corpus, '1' csv and so on
    options.headerRows = data[0] >= 'a' ? std::optional<std::size_t>(2) : std::nullopt;
    options.labelColumns = options.headerRows;
    std::string bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    const ImportContext context{looks, words};
    Imported imported;
    ImportProblem problem;
    if (!importFile("a", options, context, imported, problem, &bytes)) {
        if (problem.message.empty()) {
            std::abort();
        }
        return 0;
    }
    const std::string printed = writeResults(imported.outline, imported.name, words);
    Imported again;
    if (!readResults(printed, "b", context, again, problem) ||
        writeResults(again.outline, again.name, words) != printed) {
        std::abort();
    }
    return 0;
}
