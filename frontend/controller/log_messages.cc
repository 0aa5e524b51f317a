#include "frontend/controller/log_messages.h"

#include "backend/text/character_set.h"

namespace vexa::frontend {

namespace {

constexpr int translatable = 1;
constexpr int asItIs = 0;
constexpr BpErrorShow shown = 2;

}  // namespace

BpString userText(const std::string& text) { return {fromUtf8(text), asItIs}; }

BpString systemText(SystemText text) { return {text, translatable}; }

void say(BpErrorLevel level, SystemText message, std::initializer_list<BpString> arguments) {
    BpComposite composite(message, translatable);
    for (const BpString& each : arguments) composite.Add(each);
    composite.Finish();
    BpError(composite, shown, level);
}

}  // namespace vexa::frontend
