// DELETEOBJECT: deletes the selected items.

#include "module/modify/modify_spec.h"

namespace vexa {

namespace {

constexpr ParameterRow kParameters[] = {{"DELETE", UPSpecTypes::ParamSpec::word, false, false, kYesNo}};

constexpr SubcommandRow kGrammar{
    "DELETEOBJECT", UPSpecTypes::SubComSpec::keywordParameters, false, false, kParameters, true};

class DeleteObjectHandler : public ModifyHandler {
  public:
    void describe(GroupComDescriptor& group) const override {
        group.addSubComDesc(vexa::describe(kGrammar), false);
    }

    /// Deletes unless DELETE says otherwise.
    bool read(const GroupComObj& group, ParserMessage& /*messages*/) override {
        const SubComObj* const given = group.getSubComObj(kGrammar.name);
        const ParamObj* const answer = given != nullptr ? given->getParamObj("DELETE") : nullptr;
        delete_ = given != nullptr && (answer == nullptr || answer->isStringValue("YES"));
        return true;
    }

    [[nodiscard]] bool isPresent() const override { return delete_; }
    void write(std::string& request) const override { request += "<deleteObject/>"; }

  private:
    bool delete_ = false;
};

}  // namespace

std::unique_ptr<ModifyHandler> makeDeleteObjectHandler() { return std::make_unique<DeleteObjectHandler>(); }

}  // namespace vexa
