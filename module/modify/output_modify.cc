// OUTPUT MODIFY: selects items of an open document and changes them. The whole command becomes one XML
// request; the module itself touches no document.

#include <exception>
#include <new>

#include "backend/adapter/client_adapter.h"
#include "backend/adapter/go_to_caller.h"
#include "backend/platform/standard_output.h"
#include "backend/strings/memory_text.h"
#include "backend/text/character_set.h"
#include "module/frame/command.h"
#include "module/frame/report.h"
#include "module/frame/xml_text.h"
#include "module/modify/commands.h"
#include "module/modify/modify_reply.h"
#include "module/modify/modify_request_builder.h"
#include "module/modify/modify_spec.h"

namespace vexa {

namespace {

constexpr CommandIdentity kIdentity{"OUTPUT MODIFY", "Output Modify"_text, "OUTPUT MODIFY"};

constexpr ParameterRow kParameters[] = {
    optionalParameter("NAME", UPSpecTypes::ParamSpec::tokens, "name")
        .readOnly(UPSpecTypes::ReadValue::textOrOperator),
    optionalParameter("DEBUG", UPSpecTypes::ParamSpec::tokens, kNoValueLabel),
};

constexpr ParameterRow kReportParameters[] = {
    optionalParameter("PRINTREPORT", UPSpecTypes::ParamSpec::word).of(kNoYes),
};

constexpr SubcommandRow kGrammar[] = {
    {"", UPSpecTypes::SubComSpec::keywordParameters, false, false, kParameters},
    {"REPORT", UPSpecTypes::SubComSpec::keywordParameters, false, false, kReportParameters},
};

constexpr SystemText kFailed = "Failed to modify output..."_text;
constexpr SystemText kFailedBecause = "Failed to modify output ^1..."_text;
constexpr SystemText kInvalidFormat = "Value for FORMAT (^1) is not a valid display format."_text;
constexpr SystemText kInvalidFont = "Specified FONT (^1) is not installed."_text;

constexpr int kTranslatable = 1;
constexpr int kNotTranslatable = 0;

/// One run of the command.
class ModifyCommand : public Command {
  public:
    ModifyCommand() : Command(kIdentity, kGrammar) {
        descriptor().addGroupComDesc(describeSelectionGroup(handlers_));
    }

    /// Once it is parsed.
    void run();

  private:
    void readEnvelope();
    [[nodiscard]] bool printsReport() const;
    void printRequest() const;
    [[nodiscard]] std::string exchange() const;
    void buildSummary(const ModifyCounts& counts);

    ModifySpec handlers_ = makeModifySpec();
    ModifyEnvelope envelope_;
    std::string request_;
};

void ModifyCommand::readEnvelope() {
    const ParamObj* const name = leading().getParamObj("NAME");
    if (name != nullptr) {
        const bool all = name->isOperatorValue(TokenSequenceBase::all);
        envelope_.documentName = all ? std::string() : escapeXml(name->getStringToken());
    }
    envelope_.debug = leading().getParamObj("DEBUG") != nullptr;
}

bool ModifyCommand::printsReport() const {
    const SubComObj* const report = spec().getSubComObj("REPORT");
    const ParamObj* const print = report != nullptr ? report->getParamObj("PRINTREPORT") : nullptr;
    return print != nullptr && print->isStringValue("YES");
}

void ModifyCommand::printRequest() const {
    if (envelope_.debug) {
        writeStandardOutput(request_ + '\n');
    }
}

/// Hands the request over. The reply, empty when the exchange failed, which has been reported.
std::string ModifyCommand::exchange() const {
    try {
        ClientAdapter* const adapter = GetAdapter();
        if (adapter == nullptr) {
            reportNotImplemented(kIdentity.name);
            return {};
        }
        std::string reply = adapter->exchangeModify(request_);
        if (envelope_.debug) {
            writeStandardOutput("\n\nReturned Value is : " + toUtf8(reply) + '\n');
        }
        return reply;
    } catch (const VexaGoToCaller&) {
        throw;
    } catch (const std::bad_alloc&) {
        reportList(notEnoughMemory, {}, kErrorLevel);
    } catch (const std::exception& failure) {
        reportWithArgument(kFailedBecause, failure.what(), kErrorLevel);
    } catch (const char* failure) {
        reportWithArgument(kFailedBecause, failure, kErrorLevel);
    } catch (...) {
        reportList(kFailed, {}, kErrorLevel);
    }
    return {};
}

void ModifyCommand::buildSummary(const ModifyCounts& counts) {
    BpPivotTable table =
        procedure().PivotTable(BpString("Output Modify Summary"_text, kTranslatable),
                               BpString("Output Modify Summary Table", kNotTranslatable), true);
    constexpr int kDimensionKind = 2;
    BpDimension dimension = table.Dimension(BpString("E60801"_text, kTranslatable), kDimensionKind);
    dimension.Position(0, 1, 1, 0);
    const std::pair<SystemText, std::int32_t> cells[] = {{"Objects Selected"_text, counts.selected},
                                                         {"Objects Modified"_text, counts.modified},
                                                         {"Objects Deleted"_text, counts.deleted}};
    for (const auto& [label, count] : cells) {
        dimension.Category(BpString(label, kTranslatable)).Cell(BpNumber(count, BpProcedure::Count));
    }
}

void ModifyCommand::run() {
    readEnvelope();
    const bool valid = ModifyRequestBuilder(request_, envelope_, handlers_, spec(), messages()).close();
    printRequest();
    if (!valid) {
        return;
    }
    const std::string text = exchange();
    const ModifyReply reply = readModifyReply(text);
    for (const std::string_view format : reply.rejectedFormats) {
        reportWithArgument(kInvalidFormat, format, kWarningLevel);
    }
    for (const std::string_view font : reply.missingFonts) {
        reportWithArgument(kInvalidFont, font, kWarningLevel);
    }
    if (reply.counts && printsReport()) {
        buildSummary(*reply.counts);
    }
}

}  // namespace

void outputModify() {
    ModifyCommand command;
    if (command.parse()) {
        command.run();
    }
}

}  // namespace vexa
