// The records that the stream of a binary workbook (BIFF8) is made of: a number, a length, and so many bytes.
// Numbers are little-endian. What does not fit into one record goes on in CONTINUE records behind it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace vexa::frontend::biff {

inline constexpr std::size_t headerBytes = 4;
/// What one record holds at most, without its header.
inline constexpr std::size_t mostBytes = 8224;

namespace id {
/// Numbers of records.
enum RecordId : std::uint16_t {
    formula = 0x0006,
    eof = 0x000A,
    calcCount = 0x000C,
    calcMode = 0x000D,
    precision = 0x000E,
    refMode = 0x000F,
    delta = 0x0010,
    iteration = 0x0011,
    protect = 0x0012,
    password = 0x0013,
    externSheet = 0x0017,
    name = 0x0018,
    windowProtect = 0x0019,
    pageBreaks = 0x001B,
    selection = 0x001D,
    dateMode = 0x0022,
    externalName = 0x0023,
    printHeaders = 0x002A,
    printLines = 0x002B,
    filePass = 0x002F,
    font = 0x0031,
    continued = 0x003C,
    window1 = 0x003D,
    backup = 0x0040,
    pane = 0x0041,
    codePage = 0x0042,
    defColWidth = 0x0055,
    externalCount = 0x0059,
    externalCells = 0x005A,
    fileSharing = 0x005B,
    writeAccess = 0x005C,
    obj = 0x005D,
    saveRecalc = 0x005F,
    colInfo = 0x007D,
    imageData = 0x007F,
    guts = 0x0080,
    wsBool = 0x0081,
    gridSet = 0x0082,
    boundSheet = 0x0085,
    country = 0x008C,
    hideObj = 0x008D,
    sort = 0x0090,
    palette = 0x0092,
    dxGCol = 0x0099,
    functionGroups = 0x009C,
    scale = 0x00A0,
    setup = 0x00A1,
    pivotView = 0x00B0,
    mulRk = 0x00BD,
    mulBlank = 0x00BE,
    interfaceMiddle = 0x00C1,
    rString = 0x00D6,
    dbCell = 0x00D7,
    bookBool = 0x00DA,
    xf = 0x00E0,
    interfaceHeader = 0x00E1,
    interfaceEnd = 0x00E2,
    mergedCells = 0x00E5,
    drawingGroup = 0x00EB,
    drawing = 0x00EC,
    drawingSelection = 0x00ED,
    sst = 0x00FC,
    labelSst = 0x00FD,
    extSst = 0x00FF,
    tabId = 0x013D,
    useSelfs = 0x0160,
    conditions = 0x01B0,
    conditionRule = 0x01B1,
    validations = 0x01B2,
    hyperlink = 0x01B8,
    validation = 0x01BE,
    linkTip = 0x0800,
    laterConditions = 0x0879,
    laterConditionRule = 0x087A,
    laterRule = 0x087B,
    dsf = 0x0161,
    customViewEnd = 0x01AB,
    supBook = 0x01AE,
    revisionProtect = 0x01AF,
    textObject = 0x01B6,
    refreshAll = 0x01B7,
    codeName = 0x01BA,
    revisionPassword = 0x01BC,
    recalcId = 0x01C1,
    dimensions = 0x0200,
    blank = 0x0201,
    number = 0x0203,
    label = 0x0204,
    boolErr = 0x0205,
    formulaString = 0x0207,
    row = 0x0208,
    index = 0x020B,
    array = 0x0221,
    defaultRowHeight = 0x0225,
    table = 0x0236,
    window2 = 0x023E,
    rk = 0x027E,
    style = 0x0293,
    format = 0x041E,
    sharedFormula = 0x04BC,
    bof = 0x0809,
    headerPicture = 0x0866,
    xfCrc = 0x087C,
    pageLayoutView = 0x088B,
    namePublished = 0x0893,
    nameComment = 0x0894,
    nameGroup = 0x0898,
};
}  // namespace id

/// What a BOF says that its records are.
inline constexpr std::uint16_t version8 = 0x0600;
inline constexpr std::uint16_t globalsType = 0x0005;
inline constexpr std::uint16_t worksheetType = 0x0010;

inline constexpr std::size_t columnCount = 256;
inline constexpr std::uint32_t rowCount = 65'536;
/// Bytes of a range of cells in the records that list such.
inline constexpr std::size_t rangeBytes = 8;
inline constexpr double twipsOfPoint = 20;
/// The number of the format of a cell without a style.
inline constexpr std::uint16_t plainFormat = 15;

/// Appends records to a byte string.
class Records {
  public:
    explicit Records(std::string& out) : out_(out) {}

    Records& begin(std::uint16_t id) {
        two(id).two(0);
        begin_ = out_.size();
        return *this;
    }
    Records& one(std::uint32_t value) { return put(value, 1); }
    Records& two(std::uint32_t value) { return put(value, 2); }
    Records& four(std::uint32_t value) { return put(value, 4); }
    Records& real(double value) {
        std::uint64_t bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        return put(bits & 0xFFFFFFFFU, 4).put(bits >> 32U, 4);
    }
    Records& bytes(std::string_view bytes) {
        out_ += bytes;
        return *this;
    }
    /// The record has what it holds: at most `mostBytes`.
    void end() {
        const std::size_t length = out_.size() - begin_;
        out_[begin_ - 2] = static_cast<char>(length & 0xFFU);
        out_[begin_ - 1] = static_cast<char>(length >> 8U & 0xFFU);
    }
    /// Bytes that the record under way holds so far.
    [[nodiscard]] std::size_t length() const { return out_.size() - begin_; }

  private:
    Records& put(std::uint64_t value, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) out_ += static_cast<char>(value >> (8 * i) & 0xFFU);
        return *this;
    }

    std::string& out_;
    std::size_t begin_ = 0;
};

/// A number at a place of `bytes`; 0 where there are not bytes enough.
[[nodiscard]] inline std::uint32_t numberAt(std::string_view bytes, std::size_t at, std::size_t count) {
    if (bytes.size() < count || at > bytes.size() - count) return 0;
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < count; ++i) {
        value |= std::uint32_t{static_cast<unsigned char>(bytes[at + i])} << (8 * i);
    }
    return value;
}
[[nodiscard]] inline std::uint16_t twoAt(std::string_view bytes, std::size_t at) {
    return static_cast<std::uint16_t>(numberAt(bytes, at, 2));
}
[[nodiscard]] inline std::uint32_t fourAt(std::string_view bytes, std::size_t at) {
    return numberAt(bytes, at, 4);
}

/// Writes a number over what stands at a place of `bytes`, which must be there.
inline void setNumber(std::string& bytes, std::size_t at, std::uint32_t value, std::size_t count) {
    std::uint64_t rest = value;
    for (std::size_t i = 0; i < count; ++i, rest >>= 8U) bytes[at + i] = static_cast<char>(rest & 0xFFU);
}

}  // namespace vexa::frontend::biff
