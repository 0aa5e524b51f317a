#include "backend/session/command_module.h"

#include "backend/strings/dictionary.h"

namespace vexa {

bool LibraryModule::load(std::string& reason) {
    if (library_ == nullptr && failure_.empty()) {
        FileResult result;
        library_ = DynamicLibrary::load(path_, result);
        if (library_ == nullptr) failure_ = shownReason(result);
    }
    reason = failure_;
    return library_ != nullptr;
}

CommandModule::Entry LibraryModule::find(const char* entry) const {
    return library_ == nullptr ? nullptr : library_->find(entry);
}

}  // namespace vexa
