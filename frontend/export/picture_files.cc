#include "frontend/export/picture_files.h"

#include <algorithm>
#include <array>
#include <utility>

#include "backend/platform/file_system.h"
#include "backend/strings/dictionary.h"

namespace vexa::frontend {

namespace {

constexpr std::string_view separators = "/\\";
constexpr std::array<std::string_view, 6> names{"PNG", "JPG", "BMP", "EMF", "EPS", "TIF"};
constexpr std::array<std::string_view, 6> extensions{".png", ".jpg", ".bmp", ".emf", ".eps", ".tif"};

std::string_view folderOf(std::string_view path) {
    const std::size_t last = path.find_last_of(separators);
    return last == std::string_view::npos ? std::string_view() : path.substr(0, last + 1);
}

std::string withoutExtension(const std::string& file) {
    const std::size_t folder = folderOf(file).size();
    const std::size_t point = file.rfind('.');
    return point == std::string::npos || point <= folder ? file : file.substr(0, point);
}

/// The length of what two folders have in common, up to behind a separator.
std::size_t commonFolder(std::string_view left, std::string_view right) {
    std::size_t common = 0;
    for (std::size_t i = 0; i < std::min(left.size(), right.size()) && left[i] == right[i]; ++i) {
        if (separators.find(left[i]) != std::string_view::npos) common = i + 1;
    }
    return common;
}

}  // namespace

std::string_view pictureFormatName(PictureFormat format) { return names[static_cast<std::size_t>(format)]; }

const ShownPicture* pictureOf(const ExportedItem& item) {
    if (const auto* const chart = std::get_if<ChartContent>(&item.item().content)) return chart;
    return std::get_if<TreeContent>(&item.item().content);
}

std::string alternativeOf(const ExportedItem& item) {
    const ShownPicture* const picture = pictureOf(item);
    return picture == nullptr || picture->alternativeText.empty() ? item.label : picture->alternativeText;
}

std::string relativePath(std::string_view page, std::string_view file) {
    std::string target(file);
    std::string base(folderOf(page));
    std::replace(target.begin(), target.end(), '\\', '/');
    std::replace(base.begin(), base.end(), '\\', '/');
    const std::size_t common = commonFolder(base, target);
    if (common == 0) return target;
    std::string path;
    for (std::size_t i = common; i < base.size(); ++i) {
        if (base[i] == '/') path += "../";
    }
    return path + target.substr(common);
}

PictureFiles::PictureFiles(const ExportRequest& request, const std::string& documentFile,
                           std::optional<PageImageFormat> pageFormat, OutputFiles& files,
                           ExportReport& report)
    : documentFile_(documentFile), files_(files), report_(report) {
    if (request.png) {
        addJob(PictureFormat::png, *request.png, request.png->percentSize);
        jobs_.back().depth = request.png->depth;
    }
    if (request.jpg) addJob(PictureFormat::jpg, *request.jpg, request.jpg->percentSize);
    if (request.bmp) addJob(PictureFormat::bmp, *request.bmp, request.bmp->percentSize);
    if (request.emf) addJob(PictureFormat::emf, *request.emf, request.emf->percentSize);
    if (request.eps) addJob(PictureFormat::eps, *request.eps);
    if (request.tif) addJob(PictureFormat::tif, *request.tif, request.tif->percentSize);
    if (jobs_.empty() && pageFormat) {
        constexpr std::array<PictureFormat, 3> formats{PictureFormat::jpg, PictureFormat::png,
                                                       PictureFormat::bmp};
        addJob(formats[static_cast<std::size_t>(*pageFormat)], {});
    }
}

void PictureFiles::addJob(PictureFormat format, const PictureTarget& target, double percent) {
    jobs_.push_back({format, target.root.empty() ? withoutExtension(documentFile_) : target.root, percent,
                     PngDepth::true24Bit});
}

bool PictureFiles::checkFolders() {
    for (const Job& job : jobs_) {
        const std::string folder(folderOf(job.root));
        if (folder.empty() || FileSystem::current().isFolder(folder)) continue;
        report_.fail(ExportError::noFolder, composed("There is no folder ^1 for the pictures."_text, {folder}));
        return false;
    }
    return true;
}

const PictureFiles::Job* PictureFiles::shownJob() const {
    // PNG, JPG and BMP come first; a page shows no others.
    const bool any = !jobs_.empty() && (documentFile_.empty() || jobs_.front().format <= PictureFormat::bmp);
    return any ? &jobs_.front() : nullptr;
}

std::string PictureFiles::shownRoot() const {
    const Job* const job = shownJob();
    return job == nullptr || count_ == 0 ? std::string() : job->root;
}

std::string PictureFiles::shownFormat() const {
    const Job* const job = shownJob();
    return job == nullptr || count_ == 0 ? std::string() : std::string(pictureFormatName(job->format));
}

bool PictureFiles::canCopy(const Job& job, const ShownPicture& picture) const {
    const bool isWhole = job.depth == PngDepth::true24Bit || job.depth == PngDepth::true32Bit;
    return job.format == PictureFormat::png && picture.picture->form == PictureForm::png &&
           job.percent == 100 && isWhole;
}

bool PictureFiles::write(const Job& job, const ExportedItem& item, std::size_t number) {
    const std::string file =
        job.root + std::to_string(number) + std::string(extensions[static_cast<std::size_t>(job.format)]);
    const ShownPicture& picture = *pictureOf(item);
    if (!canCopy(job, picture)) {
        report_.note(composed("Item ^1 (^2): there is no file ^3, because this version cannot draw pictures yet."_text,
                              {std::to_string(item.number), item.label, file}));
        return false;
    }
    if (const PackageResult result = files_.add(file, picture.picture->bytes); !result) {
        report_.fail(ExportError::cannotWrite, composed("The file ^1 cannot be written: ^2"_text,
                                                        {file, result.shownDetail()}));
        return false;
    }
    return true;
}

const std::string& PictureFiles::add(const ExportedItem& item) {
    const auto [found, isNew] = shown_.try_emplace(item.number);
    if (!isNew) return found->second;
    const std::size_t number = shown_.size();
    bool written = false;
    for (const Job& job : jobs_) {
        if (!write(job, item, number)) continue;
        written = true;
        if (&job == shownJob()) {
            found->second = relativePath(documentFile_, job.root) + std::to_string(number) +
                            std::string(extensions[static_cast<std::size_t>(job.format)]);
        }
    }
    if (written) ++count_;
    return found->second;
}

}  // namespace vexa::frontend
