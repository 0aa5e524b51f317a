// The handler of one subcommand of a selection group: its description, what was read of it, its XML.
//
// Handlers know nothing of each other; `ModifyRequestBuilder` walks them in the order of the request.
#pragma once

#include <optional>
#include <string>

#include "backend/syntax/command_spec.h"
#include "backend/syntax/descriptors.h"
#include "backend/syntax/parser_message.h"
#include "module/frame/grammar.h"

namespace vexa {

class ModifyHandler {
  public:
    ModifyHandler() = default;
    virtual ~ModifyHandler() = default;
    ModifyHandler(const ModifyHandler&) = delete;
    ModifyHandler& operator=(const ModifyHandler&) = delete;

    /// Adds the subcommand to the description of the group.
    virtual void describe(GroupComDescriptor& group) const = 0;
    /// Reads the subcommand from a group; what was read of the group before is forgotten. False when a value
    /// was refused, which has then been reported (where the command language has a report for it).
    [[nodiscard]] virtual bool read(const GroupComObj& group, ParserMessage& messages) = 0;
    /// True when the subcommand stood in the group read last and has something to write.
    [[nodiscard]] virtual bool isPresent() const = 0;
    /// Appends the elements of what was read. Only after a read that succeeded, when the handler is present.
    virtual void write(std::string& request) const = 0;
};

/// The handler of a subcommand that stands in a group at most once and that is written whenever it does.
template <typename Settings, typename Interface = ModifyHandler>
class SingleHandler : public Interface {
  public:
    using ReadSettings = bool (*)(const SubComObj&, ParserMessage&, Settings&);
    using WriteSettings = void (*)(const Settings&, std::string&);

    /// `grammar` must outlive the handler.
    SingleHandler(const SubcommandRow& grammar, ReadSettings readSettings, WriteSettings writeSettings)
        : grammar_(grammar), readSettings_(readSettings), writeSettings_(writeSettings) {}

    void describe(GroupComDescriptor& group) const override {
        group.addSubComDesc(vexa::describe(grammar_), false);
    }

    bool read(const GroupComObj& group, ParserMessage& messages) override {
        settings_.reset();
        const SubComObj* const given = group.getSubComObj(grammar_.name);
        return given == nullptr || readSettings_(*given, messages, settings_.emplace());
    }

    [[nodiscard]] bool isPresent() const override { return settings_.has_value(); }

    void write(std::string& request) const override { writeSettings_(*settings_, request); }

  protected:
    /// What was read; nothing when the subcommand was not there.
    [[nodiscard]] const std::optional<Settings>& settings() const { return settings_; }

  private:
    const SubcommandRow& grammar_;
    ReadSettings readSettings_;
    WriteSettings writeSettings_;
    std::optional<Settings> settings_;
};

}  // namespace vexa
