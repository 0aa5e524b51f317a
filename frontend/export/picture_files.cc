#include "frontend/export/picture_files.h"

#include <algorithm>
#include <array>
#include <utility>

#include "backend/platform/file_system.h"
#include "backend/strings/dictionary.h"
#include "frontend/drawing/picture_style.h"
#include "frontend/package/png_data.h"

namespace vexa::frontend {

namespace {

constexpr std::string_view separators = "/\\";
constexpr std::array<std::string_view, 6> names{"PNG", "JPG", "BMP", "EMF", "EPS", "TIF"};
constexpr std::array<std::string_view, 6> extensions{".png", ".jpg", ".bmp", ".emf", ".eps", ".tif"};

std::string_view folderOf(std::string_view path) {
    const std::size_t last = path.find_last_of(separators);
    return last == std::string_view::npos ? std::string_view() : path.substr(0, last + 1);
}

/// The folder as one names it; that at the top of all keeps its separator.
std::string withoutSeparator(std::string_view folder) {
    const bool isTop = folder.size() == 1 || folder.substr(0, folder.size() - 1).ends_with(':');
    return std::string(isTop ? folder : folder.substr(0, folder.size() - 1));
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

DrawnForm drawnForm(PictureFormat format) {
    switch (format) {
        case PictureFormat::jpg:
            return DrawnForm::jpg;
        case PictureFormat::bmp:
            return DrawnForm::bmp;
        case PictureFormat::eps:
            return DrawnForm::eps;
        case PictureFormat::emf:
            return DrawnForm::emf;
        case PictureFormat::tif:
            return DrawnForm::tif;
        case PictureFormat::png:
            break;
    }
    return DrawnForm::png;
}

DrawnDepth drawnDepth(PngDepth depth) {
    constexpr std::array<DrawnDepth, 6> depths{DrawnDepth::blackWhite, DrawnDepth::grays256,
                                               DrawnDepth::colors16,   DrawnDepth::colors256,
                                               DrawnDepth::true24Bit,  DrawnDepth::true32Bit};
    return depths[static_cast<std::size_t>(depth)];
}

/// Whether the PNG, which has been read once, already is a file of that depth with 96 dots an inch.
bool isInDepth(std::string_view png, DrawnDepth depth) {
    constexpr std::size_t depthPlace = 24;
    const std::string_view head = png.substr(0, png.find("IDAT"));
    const std::string_view colors = depth == DrawnDepth::true32Bit ? "\x08\x06" : "\x08\x02";
    const std::string_view dots("pHYs\0\0\x0E\xC4\0\0\x0E\xC4\x01", 13);
    return head.size() > depthPlace && head.substr(depthPlace, colors.size()) == colors &&
           head.find("tRNS") == std::string_view::npos && head.find(dots) != std::string_view::npos;
}

/// Points. A chart always has a size; one of an unreadable file may not.
ItemSize sizeOf(const ExportedItem& item) {
    const ItemSize size = shownSize(item.item()).value_or(ItemSize{});
    return size.width > 0 && size.height > 0 ? size : ItemSize{225, 112.5};
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

PictureFiles::PictureFiles(const ExportRequest& request, std::string documentFile,
                           std::optional<PageImageFormat> pageFormat, std::vector<std::string> styleFolders,
                           OutputFiles& files, ExportReport& report)
    : documentFile_(std::move(documentFile)),
      files_(files),
      report_(report),
      styles_(std::move(styleFolders), report) {
    if (request.png) {
        Job& job = addJob(PictureFormat::png, *request.png, request.png->percentSize);
        job.drawing.depth = drawnDepth(request.png->depth);
    }
    if (request.jpg) {
        Job& job = addJob(PictureFormat::jpg, *request.jpg, request.jpg->percentSize);
        job.drawing.grayscale = request.jpg->grayscale;
    }
    if (request.bmp) {
        Job& job = addJob(PictureFormat::bmp, *request.bmp, request.bmp->percentSize);
        job.drawing.compress = request.bmp->compress;
    }
    if (request.emf) addJob(PictureFormat::emf, *request.emf, request.emf->percentSize);
    if (request.eps) {
        Job& job = addJob(PictureFormat::eps, *request.eps, request.eps->widthPercent);
        job.widthPoints = request.eps->widthPoints;
        job.drawing.preview = request.eps->preview;
        job.drawing.curves = request.eps->fontHandling == FontHandling::curves;
    }
    if (request.tif) addJob(PictureFormat::tif, *request.tif, request.tif->percentSize);
    if (jobs_.empty() && pageFormat) {
        constexpr std::array<PictureFormat, 3> formats{PictureFormat::jpg, PictureFormat::png,
                                                       PictureFormat::bmp};
        addJob(formats[static_cast<std::size_t>(*pageFormat)], {});
    }
}

PictureFiles::Job& PictureFiles::addJob(PictureFormat format, const PictureTarget& target, double percent) {
    Job& job = jobs_.emplace_back();
    job.format = format;
    job.root = target.root.empty() ? withoutExtension(documentFile_) : target.root;
    job.percent = percent;
    job.drawing.form = drawnForm(format);
    return job;
}

bool PictureFiles::checkFolders() {
    for (const Job& job : jobs_) {
        const std::string folder(folderOf(job.root));
        if (folder.empty() || FileSystem::current().isFolder(folder)) continue;
        report_.fail(ExportError::noFolder, composed("There is no folder ^1 for the pictures."_text,
                                                     {toNativePath(withoutSeparator(folder))}));
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

double PictureFiles::shownScale() const {
    const Job* const job = shownJob();
    return job == nullptr ? 1 : job->percent / 100;
}

bool PictureFiles::canCopy(const Job& job, const ExportedItem& item) const {
    const Picture& picture = *pictureOf(item)->picture;
    const bool isWhole =
        job.drawing.depth == DrawnDepth::true24Bit || job.drawing.depth == DrawnDepth::true32Bit;
    if (job.format != PictureFormat::png || picture.form != PictureForm::png || !isWhole) return false;
    const ItemSize size = sizeOf(item);
    const bool isNatural = size.width == picture.width && size.height == picture.height;
    // Where nothing can be drawn, the page that shows the file gives it the item's size.
    const bool isReady = (isNatural && isInDepth(picture.bytes, job.drawing.depth)) || !canDraw();
    return job.percent == 100 && isReady && hasAllPixels(picture.bytes);
}

void PictureFiles::expect(const ExportPlan& plan) {
    for (Job& job : jobs_) {
        const auto begin = [this, &job](const ExportedItem& item) { return this->begin(job, item); };
        job.drawings = std::make_unique<DrawingsAhead<std::unique_ptr<PendingDrawing>>>(
            plan, begin, drawingsAtOnce() / jobs_.size());
    }
}

std::unique_ptr<PendingDrawing> PictureFiles::begin(const Job& job, const ExportedItem& item) {
    if (canCopy(job, item) || !canDraw()) return nullptr;
    const ShownPicture& picture = *pictureOf(item);
    DrawingOrder order = job.drawing;
    const ItemSize size = sizeOf(item);
    const double scale = job.widthPoints ? *job.widthPoints / size.width : job.percent / 100;
    order.width = size.width * scale;
    order.height = size.height * scale;
    order.sharesLittle = job.drawings != nullptr && job.drawings->shareLittle();
    return beginDrawing(*picture.picture, appliedRules(picture, styles_.find(picture.styleSheet)),
                        alternativeOf(item), order);
}

std::string PictureFiles::content(const Job& job, const ExportedItem& item, const std::string& file) {
    const ShownPicture& picture = *pictureOf(item);
    if (canCopy(job, item)) return picture.picture->bytes;
    const std::string number = std::to_string(item.number);
    const auto drawing = job.drawings == nullptr ? begin(job, item) : job.drawings->take(item);
    if (drawing == nullptr) {
        report_.note(
            composed("Item ^1 (^2): there is no file ^3, because this build of the program cannot draw."_text,
                     {number, item.shortLabel(), toNativePath(file)}));
        return {};
    }
    static_cast<void>(styles_.find(picture.styleSheet, item));
    DrawnPicture drawn = drawing->finish();
    if (!drawn.reason.empty()) {
        report_.note(composed(
            "Item ^1 (^2): the picture cannot be drawn, and the file ^3 has its alternative text instead. ^4"_text,
            {number, item.shortLabel(), toNativePath(file), drawn.reason}));
    }
    return std::move(drawn.bytes);
}

std::string PictureFiles::write(const Job& job, const ExportedItem& item, std::size_t number) {
    const std::string name =
        std::to_string(number) + std::string(extensions[static_cast<std::size_t>(job.format)]);
    const std::string file = job.root + name;
    const std::string bytes = content(job, item, file);
    if (bytes.empty()) return {};
    if (const PackageResult result = files_.add(file, bytes); !result) {
        report_.failToWrite(file, result);
        return {};
    }
    return packer_ && &job == shownJob() ? packer_(bytes, job.format)
                                         : relativePath(documentFile_, job.root) + name;
}

const std::string& PictureFiles::add(const ExportedItem& item) {
    const auto [found, isNew] = shown_.try_emplace(item.number);
    if (!isNew) return found->second;
    const std::size_t number = shown_.size();
    bool written = false;
    for (const Job& job : jobs_) {
        std::string address = write(job, item, number);
        if (address.empty()) continue;
        written = true;
        if (&job == shownJob()) found->second = std::move(address);
    }
    if (written) ++count_;
    return found->second;
}

}  // namespace vexa::frontend
