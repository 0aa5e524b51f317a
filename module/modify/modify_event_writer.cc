#include "module/modify/modify_event_writer.h"

namespace vexa {

ModifyEventWriter::ModifyEventWriter(std::string& request) : request_(request) { request_ += "<modifyEvent"; }

void ModifyEventWriter::closeStartTag() {
    if (startTagOpen_) {
        request_ += '>';
        startTagOpen_ = false;
    }
}

void ModifyEventWriter::finish() {
    closeStartTag();
    request_ += "</modifyEvent>";
}

}  // namespace vexa
