#include "frontend/export/drawings_ahead.h"

#include <thread>

#include "frontend/export/picture_files.h"

namespace vexa::frontend {

std::size_t drawingsAtOnce() {
    constexpr std::size_t most = 9;
    return std::min<std::size_t>(std::max(1U, std::thread::hardware_concurrency()) + 1, most);
}

bool areFewBytes(const std::vector<const ExportedItem*>& pictures) {
    constexpr std::uint64_t few = 1'000'000;
    std::uint64_t bytes = 0;
    for (const ExportedItem* const item : pictures) {
        const Picture& picture = *pictureOf(*item)->picture;
        bytes += picture.packedBytes > 0 ? picture.packedBytes : picture.bytes.size();
    }
    return bytes < few;
}

std::vector<const ExportedItem*> picturesOf(const ExportPlan& plan) {
    std::vector<const ExportedItem*> pictures;
    for (const ExportedItem& item : plan.items) {
        if (pictureOf(item) != nullptr) pictures.push_back(&item);
    }
    return pictures;
}

}  // namespace vexa::frontend
