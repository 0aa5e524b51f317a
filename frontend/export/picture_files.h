// Pictures as files: alone, or beside a page. ROOT1.png, ROOT2.png, ...
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "frontend/drawing/picture_drawing.h"
#include "frontend/export/drawings_ahead.h"
#include "frontend/export/export_plan.h"
#include "frontend/export/export_report.h"
#include "frontend/export/picture_styles.h"
#include "frontend/package/output_files.h"
#include "frontend/requests/export_request.h"

namespace vexa::frontend {

enum class PictureFormat : std::uint8_t { png, jpg, bmp, emf, eps, tif };

/// "PNG", as commands name it.
[[nodiscard]] std::string_view pictureFormatName(PictureFormat format);

/// What a page has instead of a picture that cannot be shown, and what is read out.
[[nodiscard]] std::string alternativeOf(const ExportedItem& item);
/// The picture of a chart or tree; never null for these.
[[nodiscard]] const ShownPicture* pictureOf(const ExportedItem& item);

/// The files of one command. Pictures are numbered as they are added. What is of the asked form and size
/// already is copied, everything else is drawn; a picture that cannot be drawn has a placeholder with its
/// alternative text, and a warning. A build that cannot draw makes no file of it, with a warning.
class PictureFiles {
  public:
    /// `documentFile` is empty for pictures alone. `pageFormat` is that of IMAGEFORMAT, which counts where no
    /// picture's subcommand is given.
    PictureFiles(const ExportRequest& request, std::string documentFile,
                 std::optional<PageImageFormat> pageFormat, std::vector<std::string> styleFolders,
                 OutputFiles& files, ExportReport& report);

    /// The folders that files go to are there; otherwise error 7 is reported.
    [[nodiscard]] bool checkFolders();
    /// The pictures that are going to be added, in this order; some may be left out. `plan` must live until
    /// the last one is. Without it each is drawn when it is added.
    void expect(const ExportPlan& plan);
    /// Takes what a page shows into the page's own file as well, and gives the address there. What comes in
    /// is the content of a file and its format.
    using Packer = std::function<std::string(const std::string& content, PictureFormat format)>;
    void packInto(Packer packer) { packer_ = std::move(packer); }
    /// Writes a picture in each format that is asked for; again the same answer for the same item: the path
    /// of the file that a page shows, as seen from the document's folder, or its packed address, and empty
    /// where the page has to show its own.
    const std::string& add(const ExportedItem& item);

    /// Pictures of which there is a file.
    [[nodiscard]] std::size_t count() const { return count_; }
    /// What the page shows, else what is written; empty without pictures.
    [[nodiscard]] std::string shownRoot() const;
    [[nodiscard]] std::string shownFormat() const;
    /// How large the files that a page shows are; 1 is the pictures' own size.
    [[nodiscard]] double shownScale() const;

  private:
    struct Job {
        PictureFormat format = PictureFormat::png;
        std::string root;  ///< as it came
        double percent = 100;
        std::optional<double> widthPoints;  ///< instead of the percentage
        DrawingOrder drawing;               ///< without a size
        std::unique_ptr<DrawingsAhead<std::unique_ptr<PendingDrawing>>> drawings;
    };
    Job& addJob(PictureFormat format, const PictureTarget& target, double percent = 100);
    [[nodiscard]] const Job* shownJob() const;
    [[nodiscard]] bool canCopy(const Job& job, const ExportedItem& item) const;
    [[nodiscard]] std::unique_ptr<PendingDrawing> begin(const Job& job, const ExportedItem& item);
    /// The bytes of the file; empty, with a note, where none can be made.
    [[nodiscard]] std::string content(const Job& job, const ExportedItem& item, const std::string& file);
    /// The path as seen from the document's folder, or the packed address; nothing where no file was made.
    [[nodiscard]] std::string write(const Job& job, const ExportedItem& item, std::size_t number);

    std::string documentFile_;
    OutputFiles& files_;
    ExportReport& report_;
    PictureStyles styles_;
    std::vector<Job> jobs_;
    Packer packer_;
    std::map<std::size_t, std::string> shown_;  // by item
    std::size_t count_ = 0;
};

/// `file` as a page in the folder of `page` refers to it: both whole paths, either separator. Slashes in
/// between, not encoded.
[[nodiscard]] std::string relativePath(std::string_view page, std::string_view file);

}  // namespace vexa::frontend
