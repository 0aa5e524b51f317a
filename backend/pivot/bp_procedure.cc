#include "backend/pivot/bp_procedure.h"

#include "backend/pivot/output_log.h"
#include "backend/pivot/pivot_table_draft.h"
#include "backend/pivot/string_table_notes.h"
#include "backend/strings/dictionary.h"
#include "backend/text/character_set.h"

namespace vexa {

BpPivotTable BpHeading::PivotTable(const BpCellText& title, const BpCellText& subtype, bool flag) {
    auto draft = std::make_unique<PivotTableDraft>();
    draft->table.title = title.shown();
    draft->table.subtype = subtype.shown();
    draft->table.flag = flag;
    return BpPivotTable(std::move(draft));
}

void BpHeading::AddNotes(int level, const BpCellText& label, const BpCellText& value) {
    OutputLog& log = OutputLog::current();
    if (log.hasListeners()) log.publish(NotesAdded{level, label.shown(), value.shown()});
}

BpProcedure::BpProcedure(std::string_view title, int value)
    : title_(toUtf8(title)), outerProcedure_(StringDictionary::current().procedure()) {
    StringDictionary::current().setProcedure(title_);
    OutputLog& log = OutputLog::current();
    if (log.hasListeners()) log.publish(ProcedureBegan{title_, value});
}

BpProcedure::~BpProcedure() {
    publishStringTableNotes();
    OutputLog& log = OutputLog::current();
    if (log.hasListeners()) log.publish(ProcedureEnded{title_});
    StringDictionary::current().setProcedure(outerProcedure_);
}

}  // namespace vexa
