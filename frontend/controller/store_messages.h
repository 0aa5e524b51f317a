// What a problem of saving or opening says to the user.
#pragma once

#include <string>

#include "backend/text/system_text.h"
#include "frontend/store/store_result.h"

namespace vexa::frontend {

/// A message of messages.h and its argument (as shown, UTF-8).
struct StoreMessage {
    SystemText text;
    std::string argument;
};

/// `result` must be a problem; `file` is the file as the user named it.
[[nodiscard]] StoreMessage describe(const StoreResult& result, const std::string& file);

}  // namespace vexa::frontend
