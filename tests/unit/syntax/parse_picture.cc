#include "tests/unit/syntax/parse_picture.h"

#include <variant>
#include <vector>

#include "backend/pivot/output_log.h"
#include "backend/syntax/universal_parser.h"

namespace vexa {

namespace {

/// Keeps the last syntax error of the log, and all warnings.
class ErrorCatcher : public LogListener {
  public:
    ErrorCatcher() { OutputLog::current().addListener(*this); }
    ~ErrorCatcher() override { OutputLog::current().removeListener(*this); }
    ErrorCatcher(const ErrorCatcher&) = delete;
    ErrorCatcher& operator=(const ErrorCatcher&) = delete;

    void receive(const LogEvent& event) override {
        if (const auto* const error = std::get_if<SyntaxErrorReported>(&event)) {
            text = std::to_string(error->place.column) + ": " + error->message;
            if (error->place.line != 1) {
                text.insert(0, "line " + std::to_string(error->place.line) + ", ");
            }
        } else if (const auto* const warned = std::get_if<SyntaxWarned>(&event)) {
            warnings += "; warned at " + std::to_string(warned->place.column) + ": " + warned->message;
        }
    }

    std::string text;
    std::string warnings;
};

std::string pictureOf(const SubComObj& subcommand) {
    std::string picture = std::string(subcommand.name()) + "{";
    for (const ParamObj& parameter : subcommand.parameters()) {
        picture += picture.back() == '{' ? "" : "; ";
        picture += std::string(parameter.name());
        picture += parameter.isTokenList() ? "=" + pictureOf(parameter.getTokenList()) : "";
    }
    return picture + pictureOf(subcommand.exportParamObj().getTokenList()) + "}";
}

std::string pictureOf(const SubComList& list, const std::vector<SubComDescriptor>& descriptors) {
    std::string picture;
    for (const SubComDescriptor& descriptor : descriptors) {
        std::vector<const SubComObj*> given;
        list.getSubComObj(given, descriptor.name());
        for (const SubComObj* const each : given) {
            picture += pictureOf(*each);
        }
    }
    return picture;
}

}  // namespace

std::string pictureOf(std::span<const TokenInfoObj> tokens) {
    std::string picture;
    for (const TokenInfoObj& token : tokens) {
        picture += picture.empty() ? "" : " ";
        const std::string text(token.getString());
        picture += token.isLiteral() ? "'" + text + "'" : text;
    }
    return picture;
}

std::string parsed(const CommandDescriptor& descriptor, const std::string& text) {
    CommandText command;
    command.text = text;
    const CommandTokens tokens(command);
    CommandSpec spec;
    const ErrorCatcher errors;
    if (UniversalParser(tokens, spec, descriptor).getCommandSpecifications() != 0) {
        return errors.text;
    }
    std::string picture = pictureOf(spec, descriptor.subcommands());
    for (const GroupComDescriptor& group : descriptor.groups()) {
        std::vector<const GroupComObj*> given;
        spec.getGroupComObj(given, group.leading()->name());
        for (const GroupComObj* const each : given) {
            picture += "<" + pictureOf(*each, group.subcommands()) + ">";
        }
    }
    return picture + errors.warnings;
}

}  // namespace vexa
