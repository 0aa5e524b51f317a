// The pictures of a page: within it, or as files beside it.
#pragma once

#include <functional>
#include <string>

#include "frontend/export/html/page_body.h"
#include "frontend/export/picture_styles.h"

namespace vexa::frontend {

class PagePictures : public PicturePlacer {
  public:
    /// Makes the address of a picture that a page holds apart from its text: what comes in are the bytes of a
    /// PNG.
    using Address = std::function<std::string(const std::string& png)>;

    /// Without `address` pictures stand in the page as data, or beside it as files where these are asked for.
    /// With it the page is packed with its pictures, with the files that are asked for as well.
    explicit PagePictures(const ExportTask& task, Address address = {});

    void append(std::string& html, const ExportedItem& item, const std::string& id) override;

  private:
    /// `scale` of its own size.
    void appendImage(std::string& html, const ExportedItem& item, const std::string& address, double scale);
    void appendAlternative(std::string& html, const ExportedItem& item, const std::string& why);

    const ExportTask& task_;
    bool isPacked_;
    Address address_;
    PictureStyles styles_;
};

}  // namespace vexa::frontend
