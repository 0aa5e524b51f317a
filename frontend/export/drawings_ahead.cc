#include "frontend/export/drawings_ahead.h"

#include <thread>

#include "frontend/export/picture_files.h"

namespace vexa::frontend {

std::size_t drawingsAtOnce() {
    constexpr std::size_t most = 9;
    return std::min<std::size_t>(std::max(1U, std::thread::hardware_concurrency()) + 1, most);
}

std::vector<const ExportedItem*> picturesOf(const ExportPlan& plan) {
    std::vector<const ExportedItem*> pictures;
    for (const ExportedItem& item : plan.items) {
        if (pictureOf(item) != nullptr) pictures.push_back(&item);
    }
    return pictures;
}

}  // namespace vexa::frontend
