// Parses any command against real grammars and reads every value that comes out. The first byte chooses the
// grammar.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <variant>
#include <vector>

#include "backend/pivot/output_log.h"
#include "backend/syntax/universal_parser.h"
#include "tests/unit/syntax/example_grammars.h"

namespace {

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

/// Counts syntax errors and looks at their places.
class ErrorCounter : public vexa::LogListener {
  public:
    ErrorCounter() { vexa::OutputLog::current().addListener(*this); }
    ~ErrorCounter() override { vexa::OutputLog::current().removeListener(*this); }
    ErrorCounter(const ErrorCounter&) = delete;
    ErrorCounter& operator=(const ErrorCounter&) = delete;

    void receive(const vexa::LogEvent& event) override {
        const auto& error = std::get<vexa::SyntaxErrorReported>(event);
        require(!error.message.empty() && error.place.line > 0 && error.place.column > 0);
        ++count;
    }

    int count = 0;
};

void readValue(const vexa::ParamObj& value, const vexa::ParamDescriptor& descriptor) {
    std::string_view text;
    bool isLiteral = false;
    std::vector<std::string_view> texts;
    std::vector<double> numbers;
    std::vector<vexa::QualifierObj> qualifiers;
    require(value.getStringOrLiteral(text, isLiteral) <= value.getStringGeneric(text));
    require(value.getUpStringToken().empty() == value.getStringToken().empty());
    require(value.getStringList(texts) || value.isTokenList());
    require(value.getNumberList(numbers) || value.isTokenList());
    require(!value.getIntegerValue() || value.getDoubleValue());
    value.getLiterals(texts);
    require(texts.size() <= value.getTokenListSize());
    require(value.joinedTokens().empty() || value.isTokenList());
    if (value.getQualifiers(descriptor, qualifiers) && value.getQualifier()) {
        require(value.isTokenList());
    }
}

void readAll(const vexa::SubComList& list, const std::vector<vexa::SubComDescriptor>& descriptors) {
    for (const vexa::SubComDescriptor& descriptor : descriptors) {
        std::vector<const vexa::SubComObj*> given;
        list.getSubComObj(given, descriptor.name());
        require(given.size() <= 1 || descriptor.isRepeatable());
        for (const vexa::SubComObj* const each : given) {
            for (const vexa::ParamObj& parameter : each->parameters()) {
                const vexa::ParamDescriptor* const known = descriptor.findParameter(parameter.name());
                require(known != nullptr);
                readValue(parameter, *known);
            }
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    static const vexa::CommandDescriptor kGrammars[] = {vexa::modifyGrammar(), vexa::exportGrammar()};
    const vexa::CommandDescriptor& grammar = kGrammars[data[0] % 2];
    vexa::CommandText command;
    command.text.assign(reinterpret_cast<const char*>(data) + 1, size - 1);
    const vexa::CommandTokens tokens(command);
    vexa::CommandSpec spec;
    const ErrorCounter errors;
    const int result = vexa::UniversalParser(tokens, spec, grammar).getCommandSpecifications();
    require(result == errors.count && (result == 0 || result == 1));
    readAll(spec, grammar.subcommands());
    for (const vexa::GroupComDescriptor& group : grammar.groups()) {
        std::vector<const vexa::GroupComObj*> given;
        spec.getGroupComObj(given, group.leading()->name());
        require(result != 0 || !given.empty());
        for (const vexa::GroupComObj* const each : given) {
            readAll(*each, group.subcommands());
        }
    }
    return 0;
}
