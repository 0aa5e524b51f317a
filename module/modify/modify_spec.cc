#include "module/modify/modify_spec.h"

#include "module/modify/item_selection.h"

namespace vexa {

ModifySpec makeModifySpec() {
    return {
        makeSelectionHandler(),        makeIndexingHandler(), makeDeleteObjectHandler(), makeGraphsHandler(),
        makeObjectPropertiesHandler(), makeTableHandler(),    makeTableCellsHandler(),   makeTextsHandler()};
}

GroupComDescriptor describeSelectionGroup(const ModifySpec& handlers) {
    GroupComDescriptor group(UPSpecTypes::GroupSpec::selection, true, "Select command ^1..."_text);
    group.addSubComDesc(describeSelect(), true);
    // The order of help texts, which is not the order of the request.
    const ModifyHandler* const described[] = {handlers.selection.get(),    handlers.indexing.get(),
                                              handlers.deleteObject.get(), handlers.graphs.get(),
                                              handlers.texts.get(),        handlers.objectProperties.get(),
                                              handlers.table.get(),        handlers.tableCells.get()};
    for (const ModifyHandler* const handler : described) {
        if (handler != nullptr) {
            handler->describe(group);
        }
    }
    return group;
}

}  // namespace vexa
