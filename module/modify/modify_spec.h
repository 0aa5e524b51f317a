// The handlers of a selection group, and the group's description.
#pragma once

#include <memory>

#include "backend/syntax/descriptors.h"
#include "module/modify/modify_handler.h"

namespace vexa {

/// The handler of IF, which also says what the start tag of the group's element holds.
class SelectionHandler : public ModifyHandler {
  public:
    /// True when the group read last is restricted to visible items.
    [[nodiscard]] virtual bool visibleOnly() const = 0;
};

/// One slot a subcommand. A slot may be empty; it is then skipped everywhere.
struct ModifySpec {
    std::unique_ptr<SelectionHandler> selection;
    std::unique_ptr<ModifyHandler> indexing;
    std::unique_ptr<ModifyHandler> deleteObject;
    std::unique_ptr<ModifyHandler> graphs;
    std::unique_ptr<ModifyHandler> objectProperties;
    std::unique_ptr<ModifyHandler> table;
    std::unique_ptr<ModifyHandler> tableCells;
    std::unique_ptr<ModifyHandler> texts;
};

/// A new handler of each subcommand.
/// @{
[[nodiscard]] std::unique_ptr<SelectionHandler> makeSelectionHandler();
[[nodiscard]] std::unique_ptr<ModifyHandler> makeIndexingHandler();
[[nodiscard]] std::unique_ptr<ModifyHandler> makeDeleteObjectHandler();
[[nodiscard]] std::unique_ptr<ModifyHandler> makeGraphsHandler();
[[nodiscard]] std::unique_ptr<ModifyHandler> makeObjectPropertiesHandler();
[[nodiscard]] std::unique_ptr<ModifyHandler> makeTableHandler();
[[nodiscard]] std::unique_ptr<ModifyHandler> makeTableCellsHandler();
[[nodiscard]] std::unique_ptr<ModifyHandler> makeTextsHandler();
/// @}

/// All slots filled.
[[nodiscard]] ModifySpec makeModifySpec();

/// The description of the group: SELECT, which opens it, and the subcommands of the filled slots.
[[nodiscard]] GroupComDescriptor describeSelectionGroup(const ModifySpec& handlers);

}  // namespace vexa
