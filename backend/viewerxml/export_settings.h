// Settings that several formats share. Each class holds the setters of one matter; a format inherits those
// that it has, so that code for a matter can be written once, for the class.
//
// Texts are in the back end's character set. They are escaped when they are written, but for
// `setDocumentFile`, which takes text that is escaped for XML already.
#pragma once

#include <string_view>

#include "backend/viewerxml/export_element.h"

namespace vexa {

/// The unit of pages, slides and margins.
enum class MEASUREMENT_TYPE { INCHES = 0, MM = 1 };

class DocumentFileSetting : public virtual ExportFormat {
  public:
    void setDocumentFile(std::string_view escaped) { putText(ExportSetting::documentFile, escaped); }
};

class NotesAndCaptionsSetting : public virtual ExportFormat {
  public:
    void setNotesAndCaptions(bool on) { putFlag(ExportSetting::notesAndCaptions, on); }
};

class WideTablesSetting : public virtual ExportFormat {
  public:
    enum class WIDE_TABLES { ASIS = 0, SHRINK = 1, WRAP = 2 };

    void setWideTables(WIDE_TABLES how) { putChoice(ExportSetting::wideTables, how); }
};

/// `text`, here and below: the number as the user typed it.
class MarginSettings : public virtual ExportFormat {
  public:
    void setTopMargin(MEASUREMENT_TYPE unit, double number, std::string_view text) {
        putMeasure(ExportSetting::topMargin, unit, number, text);
    }
    void setBottomMargin(MEASUREMENT_TYPE unit, double number, std::string_view text) {
        putMeasure(ExportSetting::bottomMargin, unit, number, text);
    }
    void setLeftMargin(MEASUREMENT_TYPE unit, double number, std::string_view text) {
        putMeasure(ExportSetting::leftMargin, unit, number, text);
    }
    void setRightMargin(MEASUREMENT_TYPE unit, double number, std::string_view text) {
        putMeasure(ExportSetting::rightMargin, unit, number, text);
    }
};

/// The format of the images that a document refers to.
class ImageFormatSetting : public virtual ExportFormat {
  public:
    enum class IMAGE_FORMAT { JPG = 0, PNG = 1, BMP = 2 };

    void setImageFormat(IMAGE_FORMAT format) { putChoice(ExportSetting::imageFormat, format); }
};

/// What the names of image files are formed from.
class ImageRootSetting : public virtual ExportFormat {
  public:
    void setImageRoot(std::string_view root) { putText(ExportSetting::imageRoot, root); }
};

class PercentSizeSetting : public virtual ExportFormat {
  public:
    void setPercentSize(double percent, std::string_view text) {
        putNumber(ExportSetting::percentSize, percent);
        putText(ExportSetting::percentSize, text, ExportAttributePart::text);
    }
};

}  // namespace vexa
