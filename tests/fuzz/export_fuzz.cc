// Runs any text as what follows OUTPUT EXPORT, against an adapter that keeps the export specification. The
// first byte chooses the character set and the answer.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "backend/adapter/client_adapter.h"
#include "backend/pivot/output_log.h"
#include "backend/platform/file_system.h"
#include "backend/text/character_set.h"
#include "backend/tokens/command_text.h"
#include "module/export/commands.h"
#include "tests/unit/viewerxml/xml_judge.h"

namespace {

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

constexpr std::string_view kDocuments[] = {"doc",  "html", "report", "pdf", "ppt",
                                           "text", "xls",  "xlsx",   "xlsm"};
constexpr std::string_view kWithImages[] = {"html", "report", "text"};
constexpr std::string_view kImages[] = {"bmp", "emf", "eps", "jpg", "png", "tif"};

constexpr const char* kAnswers[] = {
    "",
    "<exportResponse success=\"true\" name=\"a\" documentFile=\"b\" imageCount=\"2\" imageRoot=\"c\" "
    "imageFormat=\"PNG\"><warnings code=\"0\"><warning first=\"1\" "
    "second=\"T\"/></warnings></exportResponse>",
    "<exportResponse success=\"false\" errorCode=\"6\"/>", "<exportResponse"};

class SpecificationKeeper : public vexa::ClientAdapter {
  public:
    explicit SpecificationKeeper(const char* answer) : answer_(answer) {}

    bool isLocalMode() override { return true; }
    vexa::OutputController* outputController() override { return nullptr; }
    std::string exchangeExport(const std::string& specification) override {
        specifications.push_back(specification);
        return answer_;
    }
    std::string exchangeModify(const std::string& /*request*/) override { std::abort(); }

    std::vector<std::string> specifications;

  private:
    const char* answer_;
};

/// A disk that nothing is written to: what a path may be used for stands in its own text.
class NamedDisk : public vexa::FileSystem {
  public:
    vexa::FileResult read(const std::string&, std::string&, std::uint64_t) override { return refused(); }
    vexa::FileResult readStream(const std::string&, std::string&, std::uint64_t) override {
        return refused();
    }
    bool isFile(const std::string& path) override { return holds(path, "there"); }
    bool isFolder(const std::string& path) override {
        return path.ends_with('\\') && !holds(path, "missing");
    }
    bool isWritable(const std::string& path) override { return !holds(path, "locked"); }
    std::string workingFolder() override { return "\\work"; }
    std::string canonicalPath(const std::string& path) override { return path; }
    vexa::FileResult createTemporary(const std::string&, std::string&) override { return refused(); }
    vexa::FileResult append(const std::string&, std::string_view) override { return refused(); }
    vexa::FileResult flush(const std::string&) override { return refused(); }
    vexa::FileResult replace(const std::string&, const std::string&) override { return refused(); }
    vexa::FileResult remove(const std::string&) override { return refused(); }

  private:
    static vexa::FileResult refused() { return {false, "not on this disk"}; }
    static bool holds(const std::string& path, const char* word) {
        return path.find(word) != std::string::npos;
    }
};

/// Looks at the order of events and counts those that say how the command ended.
class Watcher : public vexa::LogListener {
  public:
    void receive(const vexa::LogEvent& event) override {
        require(!ended_);
        require((count_++ == 0) == std::holds_alternative<vexa::ProcedureBegan>(event));
        ended_ = std::holds_alternative<vexa::ProcedureEnded>(event);
        flushes_ += std::holds_alternative<vexa::LogFlushed>(event) ? 1 : 0;
        if (const auto* const refused = std::get_if<vexa::SyntaxErrorReported>(&event)) {
            require(flushes_ == 0 && !refused->message.empty());
            syntaxError_ = true;
        } else if (const auto* const message = std::get_if<vexa::ParserMessageReported>(&event)) {
            require(flushes_ == 1);
            noFormat_ = noFormat_ || message->method == "SubComRequired";
        } else if (const auto* const error = std::get_if<vexa::ErrorReported>(&event)) {
            require(flushes_ == 1 && error->show == 2);
            errors_ += error->level == 3 ? 1 : 0;
            twoImages_ = twoImages_ || error->text.starts_with("Exporting to more than one image type");
        }
    }

    /// The events of a whole command that sent a specification.
    void requireSent(std::size_t imageFormats, bool failed) const {
        require(ended_ && flushes_ == 1 && !syntaxError_ && !noFormat_);
        require(errors_ <= (failed ? 1 : 0));
        require(imageFormats <= 1 || twoImages_);
    }

    /// The events of a whole command that sent nothing: one reason, and one alone, stands at its end.
    void requireUnsent() const {
        require(ended_ && flushes_ == 1);
        require((syntaxError_ ? 1 : 0) + (noFormat_ ? 1 : 0) + errors_ == 1);
    }

  private:
    int count_ = 0;
    int flushes_ = 0;
    int errors_ = 0;
    bool syntaxError_ = false;
    bool noFormat_ = false;
    bool twoImages_ = false;
    bool ended_ = false;
};

/// How many of the elements stand in a specification. No value holds a "<", so the texts are elements.
template <std::size_t N>
std::size_t countOf(const std::string_view (&names)[N], const std::string& specification) {
    return static_cast<std::size_t>(
        std::count_if(std::begin(names), std::end(names), [&specification](std::string_view name) {
            const std::string start = "<" + std::string(name);
            return specification.find(start + ' ') != std::string::npos ||
                   specification.find(start + '/') != std::string::npos ||
                   specification.find(start + '>') != std::string::npos;
        }));
}

void requireSpecification(const std::string& specification) {
    require(specification.starts_with("<exportSpecification><global"));
    require(
        vexa::testing::complaintsAbout(specification, vexa::testing::Schema::exportSpecification).empty());
    const std::size_t documents = countOf(kDocuments, specification);
    const std::size_t images = countOf(kImages, specification);
    require(documents <= 1 && documents + images >= 1);
    require(images == 0 || documents == countOf(kWithImages, specification));
}

/// Runs the command once; the export specification that it sent, empty when it sent none.
std::string runOnce(const vexa::CommandText& command, SpecificationKeeper& adapter, bool failed) {
    Watcher watcher;
    adapter.specifications.clear();
    vexa::OutputLog::current().addListener(watcher);
    {
        const vexa::CurrentCommandScope scope(command);
        vexa::outputExport();
    }
    vexa::OutputLog::current().removeListener(watcher);
    require(adapter.specifications.size() <= 1);
    if (adapter.specifications.empty()) {
        watcher.requireUnsent();
        return {};
    }
    requireSpecification(adapter.specifications.front());
    watcher.requireSent(countOf(kImages, adapter.specifications.front()), failed);
    return adapter.specifications.front();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    constexpr const char* kSets[] = {nullptr, "Shift_JIS", "windows-1252", "GB18030"};
    const char* const set = kSets[data[0] % 4];
    const std::size_t answer = data[0] / 4 % std::size(kAnswers);
    vexa::installCharacterSet(set != nullptr ? vexa::CharacterSet::find(set) : nullptr);
    NamedDisk disk;
    vexa::FileSystem::install(&disk);
    SpecificationKeeper adapter(kAnswers[answer]);
    vexa::installAdapter(&adapter);
    vexa::CommandText command;
    command.text.assign(reinterpret_cast<const char*>(data) + 1, size - 1);
    const std::string specification = runOnce(command, adapter, answer != 1);
    require(runOnce(command, adapter, answer != 1) == specification);
    vexa::installAdapter(nullptr);
    vexa::FileSystem::install(nullptr);
    vexa::installCharacterSet(nullptr);
    return 0;
}
