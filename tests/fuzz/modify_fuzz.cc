// Runs any text as what follows OUTPUT MODIFY, against an adapter that keeps the request. The first byte
// chooses the character set.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <sstream>
#include <string>
#include <variant>
#include <vector>

#include "backend/adapter/client_adapter.h"
#include "backend/pivot/output_log.h"
#include "backend/platform/clock.h"
#include "backend/text/character_set.h"
#include "backend/tokens/command_text.h"
#include "module/modify/commands.h"

namespace {

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

constexpr const char* kReply = "Invalid format (A1) Invalid font (B) done";

class RequestKeeper : public vexa::ClientAdapter {
  public:
    bool isLocalMode() override { return true; }
    vexa::OutputController* outputController() override { return nullptr; }
    std::string exchangeExport(const std::string& /*specification*/) override { std::abort(); }
    std::string exchangeModify(const std::string& request) override {
        requests.push_back(request);
        return kReply;
    }

    std::vector<std::string> requests;
};

/// Looks at the order of events and remembers whether one of them forbids to send anything.
class Watcher : public vexa::LogListener {
  public:
    void receive(const vexa::LogEvent& event) override {
        require(!ended_);
        require((count_++ == 0) == std::holds_alternative<vexa::ProcedureBegan>(event));
        ended_ = std::holds_alternative<vexa::ProcedureEnded>(event);
        flushes_ += std::holds_alternative<vexa::LogFlushed>(event) ? 1 : 0;
        complaints_ += std::holds_alternative<vexa::ErrorReported>(event) ? 1 : 0;
        tables_ += std::holds_alternative<vexa::TableFinished>(event) ? 1 : 0;
        if (const auto* const error = std::get_if<vexa::SyntaxErrorReported>(&event)) {
            require(!error->message.empty());
            refused_ = true;
        } else if (const auto* const message = std::get_if<vexa::ParserMessageReported>(&event)) {
            require(flushes_ == 1);
            refused_ = refused_ || refuses(message->method);
        }
    }

    /// The events of a whole command, which did send something or not.
    void requireWhole(bool sent) const {
        require(ended_ && flushes_ == 1);
        require(!sent || !refused_);
        require(complaints_ == (sent ? 2 : 0));
        require(tables_ == 0 || sent);
    }

  private:
    /// True for the reports after which the command stops wherever they come from.
    static bool refuses(const std::string& method) {
        constexpr std::string_view kRefusals[] = {
            "GenericError",           "FileNameInvalid", "InvalidParam",
            "ParamNeedIntegerList",   "ParenRequired",   "ParamExclusive",
            "ParamRequiredForSubCom", "ParamNoSubCom",   "SquareBracketRequired"};
        return std::find(std::begin(kRefusals), std::end(kRefusals), method) != std::end(kRefusals);
    }

    int count_ = 0;
    int flushes_ = 0;
    int complaints_ = 0;
    int tables_ = 0;
    bool refused_ = false;
    bool ended_ = false;
};

/// Keeps what is printed meanwhile.
class PrintedText {
  public:
    PrintedText() : outer_(std::cout.rdbuf(text_.rdbuf())) {}
    ~PrintedText() { std::cout.rdbuf(outer_); }
    PrintedText(const PrintedText&) = delete;
    PrintedText& operator=(const PrintedText&) = delete;

    [[nodiscard]] std::string text() const { return text_.str(); }

  private:
    std::ostringstream text_;
    std::streambuf* outer_;
};

bool isRequest(std::string_view text) {
    return text.starts_with("<modifyOutputObject documentName=\"") && text.ends_with("</modifyOutputObject>");
}

/// Runs the command once; the request that it sent, empty when it sent none.
std::string runOnce(const vexa::CommandText& command, RequestKeeper& adapter) {
    Watcher watcher;
    const PrintedText printed;
    adapter.requests.clear();
    vexa::OutputLog::current().addListener(watcher);
    {
        const vexa::CurrentCommandScope scope(command);
        vexa::outputModify();
    }
    vexa::OutputLog::current().removeListener(watcher);
    const bool sent = !adapter.requests.empty();
    watcher.requireWhole(sent);
    require(adapter.requests.size() <= 1);
    const std::string request = sent ? adapter.requests.front() : std::string();
    require(!sent || isRequest(request));
    std::string text = printed.text();
    if (!text.empty() && sent) {
        require(text == request + "\n\n\nReturned Value is : " + kReply + '\n');
    } else if (!text.empty()) {
        require(text.back() == '\n');
        text.pop_back();
        require(isRequest(text));
    }
    return request;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    constexpr const char* kSets[] = {nullptr, "Shift_JIS", "windows-1252", "GB18030"};
    const char* const set = kSets[data[0] % 4];
    vexa::installCharacterSet(set != nullptr ? vexa::CharacterSet::find(set) : nullptr);
    vexa::installLocalTime(vexa::LocalTime{2026, 3, 5, 10, 7, 9});
    RequestKeeper adapter;
    vexa::installAdapter(&adapter);
    vexa::CommandText command;
    command.text.assign(reinterpret_cast<const char*>(data) + 1, size - 1);
    const std::string request = runOnce(command, adapter);
    require(runOnce(command, adapter) == request);
    vexa::installAdapter(nullptr);
    vexa::installCharacterSet(nullptr);
    return 0;
}
