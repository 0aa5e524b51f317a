#include "frontend/drawing/vector_reader.h"

#include <cairo-pdf.h>

#include <algorithm>
#include <cmath>
#include <exception>
#include <map>
#include <optional>
#include <string_view>

#include "frontend/drawing/cairo_drawing.h"
#include "frontend/drawing/ink_box.h"
#include "frontend/drawing/qpdf_library.h"
#include "frontend/drawing/vector_fonts.h"
#include "frontend/drawing/vector_state.h"

namespace vexa::frontend {

namespace {

/// Forms within forms; what goes deeper is one bitmap.
constexpr int deepestForm = 12;

cairo_status_t appendToPage(void* to, const unsigned char* bytes, unsigned int length) {
    static_cast<std::string*>(to)->append(reinterpret_cast<const char*>(bytes), length);
    return CAIRO_STATUS_SUCCESS;
}

bool drawPage(const Picture& picture, double width, double height, std::string& page, std::string& reason) {
    const CairoSurface surface(cairo_pdf_surface_create_for_stream(appendToPage, &page, width, height));
    {
        const CairoContext context(cairo_create(surface.get()));
        if (!drawOnCairo(context.get(), picture, width, height, reason)) return false;
        cairo_show_page(context.get());
    }
    cairo_surface_finish(surface.get());
    return isWell(cairo_surface_status(surface.get()), reason);
}

/// One content: that of the page, or of a form on it.
class ContentReader : public QPDFObjectHandle::ParserCallbacks {
  public:
    // NOLINTNEXTLINE(modernize-pass-by-value): a handle has nothing to be moved
    ContentReader(const QPDFObjectHandle& resources, const VectorState& state, VectorTarget& target,
                  int depth)
        : resources_(resources), state_(state), target_(target), depth_(depth) {}

    void handleObject(QPDFObjectHandle object) override {
        if (!object.isOperator()) {
            operands_.push_back(object);
            return;
        }
        const std::string name = object.getOperatorValue();
        if (!readState(name) && !readPath(name) && !readPaint(name) && !readText(name)) readOther(name);
        operands_.clear();
    }
    void handleEOF() override {
        // What was left open is closed, so that the target is as it was.
        for (; !saved_.empty(); saved_.pop_back()) target_.restore();
    }

  private:
    [[nodiscard]] double number(std::size_t index) const {
        QPDFObjectHandle operand = index < operands_.size() ? operands_[index] : QPDFObjectHandle::newNull();
        return operand.isNumber() ? operand.getNumericValue() : 0;
    }
    [[nodiscard]] std::string nameAt(std::size_t index) const {
        QPDFObjectHandle operand = index < operands_.size() ? operands_[index] : QPDFObjectHandle::newNull();
        return operand.isName() ? operand.getName() : std::string();
    }
    [[nodiscard]] VectorMatrix matrix() const {
        return {number(0), number(1), number(2), number(3), number(4), number(5)};
    }
    [[nodiscard]] QPDFObjectHandle resource(const char* kind, const std::string& name) const {
        QPDFObjectHandle all = resources_;
        QPDFObjectHandle found = all.isDictionary() ? all.getKey(kind) : QPDFObjectHandle::newNull();
        return found.isDictionary() ? found.getKey(name) : QPDFObjectHandle::newNull();
    }

    bool readState(const std::string& name) {
        if (name == "q") {
            saved_.push_back(state_);
            target_.save();
        } else if (name == "Q") {
            if (saved_.empty()) return true;
            state_ = saved_.back();
            saved_.pop_back();
            target_.restore();
        } else if (name == "cm") {
            state_.matrix = matrix().then(state_.matrix);
        } else if (name == "gs") {
            readGraphicsState(resource("/ExtGState", nameAt(0)));
        } else if (name == "w") {
            state_.line.width = number(0);
        } else if (name == "J") {
            state_.line.cap = number(0) == 1   ? LineCap::round
                              : number(0) == 2 ? LineCap::square
                                               : LineCap::flat;
        } else if (name == "j") {
            state_.line.join = number(0) == 1   ? LineJoin::round
                               : number(0) == 2 ? LineJoin::bevel
                                                : LineJoin::miter;
        } else if (name == "M") {
            state_.line.miterLimit = number(0);
        } else if (name == "d") {
            readDashes();
        } else {
            return readColor(name);
        }
        return true;
    }

    void readGraphicsState(QPDFObjectHandle state) {
        if (!state.isDictionary()) return;
        if (state.getKey("/ca").isNumber()) state_.fillAlpha = state.getKey("/ca").getNumericValue();
        if (state.getKey("/CA").isNumber()) state_.strokeAlpha = state.getKey("/CA").getNumericValue();
        if (state.hasKey("/SMask")) state_.masked = state.getKey("/SMask").isDictionary();
        if (state.hasKey("/BM")) state_.blended = !state.getKey("/BM").isNameAndEquals("/Normal");
    }

    void readDashes() {
        state_.line.dashes.clear();
        if (operands_.empty() || !operands_[0].isArray()) return;
        for (QPDFObjectHandle each : operands_[0].getArrayAsVector()) {
            state_.line.dashes.push_back(each.isNumber() ? each.getNumericValue() : 0);
        }
        state_.line.dashBegin = number(1);
    }

    bool readColor(const std::string& name) {
        if (name == "rg" || name == "RG") {
            state_.paint(name == "RG") = {true, colorOf(number(0), number(1), number(2))};
        } else if (name == "g" || name == "G") {
            state_.paint(name == "G") = {true, colorOf(number(0), number(0), number(0))};
        } else if (name == "cs" || name == "CS" || name == "scn" || name == "SCN" || name == "sc" ||
                   name == "SC" || name == "k" || name == "K") {
            state_.paint(name[0] == 'C' || name[0] == 'S' || name[0] == 'K').solid = false;
        } else {
            return false;
        }
        return true;
    }

    VectorPoint point(std::size_t first) const { return state_.matrix.at(number(first), number(first + 1)); }

    bool readPath(const std::string& name) {
        std::vector<PathPart>& parts = path_.parts;
        if (name == "m") {
            parts.push_back({PathStep::move, {point(0)}});
        } else if (name == "l") {
            parts.push_back({PathStep::line, {point(0)}});
        } else if (name == "c") {
            parts.push_back({PathStep::curve, {point(0), point(2), point(4)}});
        } else if (name == "h") {
            parts.push_back({PathStep::close, {}});
        } else if (name == "re") {
            const double x = number(0);
            const double y = number(1);
            const double right = x + number(2);
            const double bottom = y + number(3);
            parts.push_back({PathStep::move, {state_.matrix.at(x, y)}});
            parts.push_back({PathStep::line, {state_.matrix.at(right, y)}});
            parts.push_back({PathStep::line, {state_.matrix.at(right, bottom)}});
            parts.push_back({PathStep::line, {state_.matrix.at(x, bottom)}});
            parts.push_back({PathStep::close, {}});
        } else if (name == "W" || name == "W*") {
            clips_ = true;
            clipsEvenOdd_ = name == "W*";
        } else {
            return false;
        }
        return true;
    }

    bool readPaint(const std::string& name) {
        const bool evenOdd = name.ends_with('*');
        if (name == "f" || name == "F" || name == "f*") {
            fill(evenOdd);
        } else if (name == "S" || name == "s") {
            if (name == "s") path_.parts.push_back({PathStep::close, {}});
            stroke();
        } else if (name == "B" || name == "B*" || name == "b" || name == "b*") {
            if (name[0] == 'b') path_.parts.push_back({PathStep::close, {}});
            fill(evenOdd);
            stroke();
        } else if (name != "n") {
            return false;
        }
        if (clips_) {
            target_.clip(path_, clipsEvenOdd_);
            state_.clip = state_.clip.within(path_.box());
        }
        clips_ = false;
        path_.parts.clear();
        return true;
    }

    void fill(bool evenOdd) {
        if (path_.parts.empty()) return;
        if (state_.showsSolid(false)) {
            if (!state_.textsOnly) target_.fill(path_, evenOdd, state_.fill.color);
        } else {
            bitmap(path_.box());
        }
    }

    void stroke() {
        if (path_.parts.empty()) return;
        const double scale = state_.matrix.scale();
        VectorLine line = state_.line;
        line.width *= scale;
        line.dashBegin *= scale;
        for (double& each : line.dashes) each *= scale;
        if (state_.showsSolid(true)) {
            if (!state_.textsOnly) target_.stroke(path_, line, state_.stroke.color);
            return;
        }
        bitmap(boxOfLine(path_, line));
    }

    void bitmap(const VectorBox& box) {
        const VectorBox shown = box.within(state_.clip);
        if (!shown.isEmpty() && !state_.textsOnly) target_.bitmap(shown);
    }

    bool readText(const std::string& name) {
        if (name == "BT") {
            textMatrix_ = lineMatrix_ = {};
        } else if (name == "Tm") {
            textMatrix_ = lineMatrix_ = matrix();
        } else if (name == "Td" || name == "TD") {
            textMatrix_ = lineMatrix_ = VectorMatrix{1, 0, 0, 1, number(0), number(1)}.then(lineMatrix_);
        } else if (name == "Tf") {
            fontName_ = nameAt(0);
            fontSize_ = number(1);
        } else if (name == "Tj") {
            show(operands_);
        } else if (name == "TJ") {
            if (!operands_.empty() && operands_[0].isArray()) show(operands_[0].getArrayAsVector());
        } else if (name == "BDC") {
            beginSpan();
        } else if (name == "EMC") {
            endSpan();
        } else {
            return name == "ET";
        }
        return true;
    }

    const VectorPageFont* font() {
        const auto known = fonts_.find(fontName_);
        if (known != fonts_.end()) return &known->second;
        QPDFObjectHandle found = resource("/Font", fontName_);
        return found.isDictionary() ? &fonts_.emplace(fontName_, VectorPageFont(found)).first->second
                                    : nullptr;
    }

    /// Texts, and numbers between them that move what follows. What stands further away than any letter
    /// spacing is a text of its own, as the labels of an axis are.
    void show(const std::vector<QPDFObjectHandle>& pieces) {
        const VectorPageFont* const page = font();
        if (page == nullptr) return;
        TextRun run(textMatrix_, fontSize_);
        for (QPDFObjectHandle piece : pieces) {
            if (piece.isString()) run.add(page->glyphs(piece.getStringValue()));
            if (!piece.isNumber()) continue;
            const double distance = -piece.getNumericValue() / 1000;
            run.move(distance);
            if (distance < 1 || span_) continue;
            emit(run, page->font());
            run = TextRun(run.behind(), fontSize_);
        }
        textMatrix_ = run.behind();
        if (span_) {
            if (!spanRun_)
                spanRun_ = TextRun(run);
            else
                spanRun_->join(run);
        } else {
            emit(run, page->font());
        }
        lastFont_ = page->font();
    }

    /// Glyphs that stand for a text as a whole: the text is told, not the glyphs.
    void beginSpan() {
        QPDFObjectHandle properties = operands_.size() > 1 ? operands_[1] : QPDFObjectHandle::newNull();
        if (!properties.isDictionary() || !properties.getKey("/ActualText").isString()) return;
        const std::string text = properties.getKey("/ActualText").getStringValue();
        span_ = fromBigEndian(std::string_view(text).substr(text.starts_with("\xFE\xFF") ? 2 : 0));
    }

    void endSpan() {
        if (span_ && spanRun_) {
            spanRun_->replaceText(*span_);
            emit(*spanRun_, lastFont_);
        }
        span_.reset();
        spanRun_.reset();
    }

    void emit(const TextRun& run, const VectorFont& font) {
        if (std::optional<VectorText> text = run.text(state_.matrix)) {
            text->font = font;
            text->color = state_.textColor();
            target_.text(*text);
        }
    }

    void readOther(const std::string& name) {
        if (name == "sh") {
            bitmap(state_.clip);
        } else if (name == "EI") {
            bitmap(unitBox(state_.matrix));
        } else if (name == "Do") {
            QPDFObjectHandle object = resource("/XObject", nameAt(0));
            if (!object.isStream()) return;
            if (object.getDict().getKey("/Subtype").isNameAndEquals("/Form")) {
                readForm(object);
            } else {
                bitmap(unitBox(state_.matrix));
            }
        }
    }

    void readForm(QPDFObjectHandle form) {
        VectorState inner = state_;
        const VectorMatrix own = matrixOf(form.getDict().getKey("/Matrix"));
        inner.matrix = own.then(state_.matrix);
        const VectorBox box = boxOf(form.getDict().getKey("/BBox"), inner.matrix);
        const bool isPlain = state_.isOpaque(false) && depth_ < deepestForm;
        inner.clip = state_.clip.within(box);
        inner.fillAlpha = inner.strokeAlpha = 1;
        inner.masked = inner.blended = false;
        if (!isPlain) {
            if (depth_ >= deepestForm) {
                bitmap(box);
                return;
            }
            InkBox ink(inner.clip);
            readInner(form, inner, ink);
            bitmap(ink.boxWithoutTexts());
            // Its texts are told all the same, in the colour that they have on white.
            inner.textsOnly = true;
            inner.groupAlpha *= state_.fillAlpha;
        }
        target_.save();
        readInner(form, inner, target_);
        target_.restore();
    }

    void readInner(QPDFObjectHandle form, const VectorState& state, VectorTarget& target) const {
        QPDFObjectHandle resources = form.getDict().getKey("/Resources");
        ContentReader reader(resources.isDictionary() ? resources : resources_, state, target, depth_ + 1);
        QPDFObjectHandle::parseContentStream(form, &reader);
    }

    QPDFObjectHandle resources_;
    VectorState state_;
    VectorTarget& target_;
    int depth_;
    std::vector<QPDFObjectHandle> operands_;
    std::vector<VectorState> saved_;
    VectorPath path_;
    bool clips_ = false;
    bool clipsEvenOdd_ = false;
    VectorMatrix textMatrix_;
    VectorMatrix lineMatrix_;
    std::string fontName_;
    double fontSize_ = 0;
    std::map<std::string, VectorPageFont> fonts_;
    std::optional<std::u32string> span_;
    std::optional<TextRun> spanRun_;
    VectorFont lastFont_;
};

}  // namespace

bool readVectors(const Picture& picture, double width, double height, VectorTarget& target,
                 std::string& reason) {
    std::string bytes;
    if (!drawPage(picture, width, height, bytes, reason)) return false;
    try {
        QPDF file;
        file.setSuppressWarnings(true);
        file.processMemoryFile("picture", bytes.data(), bytes.size());
        QPDFObjectHandle page = file.getAllPages().at(0);
        VectorState state;
        state.matrix = {1, 0, 0, -1, 0, height};
        state.clip = {0, 0, width, height};
        ContentReader reader(page.getKey("/Resources"), state, target, 0);
        QPDFObjectHandle::parseContentStream(page.getKey("/Contents"), &reader);
    } catch (const std::exception& problem) {
        reason = problem.what();
        return false;
    }
    return true;
}

}  // namespace vexa::frontend
