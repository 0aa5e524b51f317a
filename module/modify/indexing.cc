// INDEXING: appends a running number, letter or roman numeral to the labels of the selected items.

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

#include "backend/text/character_set.h"
#include "module/frame/xml_text.h"
#include "module/modify/modify_spec.h"
#include "module/modify/parameter_values.h"

namespace vexa {

namespace {

constexpr std::string_view kTypes[] = {"NUMBER", "LETTERLOW", "LETTERCAP", "ROMANLOW", "ROMANCAP"};

constexpr ParameterRow kParameters[] = {
    optionalParameter("INDEXTYPE", UPSpecTypes::ParamSpec::word).of(kTypes),
    optionalParameter("INDEXSTART", UPSpecTypes::ParamSpec::tokens, "{number|letters|numeral}"),
};

constexpr SubcommandRow kGrammar{
    "INDEXING", UPSpecTypes::SubComSpec::keywordParameters, false, false, kParameters, true};

constexpr SystemText kMismatch = "Index start value (^1) does not match the index type (^2)"_text;
constexpr SystemText kNotRoman = "Parameter ^1 of subcommand ^2 is not a valid roman numeral"_text;

enum class Notation { number, letters, roman };

struct IndexType {
    std::string_view keyword;
    std::string_view attribute;  // letterCAP and romanCap are spelt unlike each other; this is meant
    Notation notation;
    std::string_view characters;  // what a start may hold
};

constexpr IndexType kIndexTypes[] = {
    {"NUMBER", "number", Notation::number, ""},
    {"LETTERLOW", "letter", Notation::letters, "abcdefghijklmnopqrstuvwxyz"},
    {"LETTERCAP", "letterCAP", Notation::letters, "ABCDEFGHIJKLMNOPQRSTUVWXYZ"},
    {"ROMANLOW", "roman", Notation::roman, "ivxlcdm"},
    {"ROMANCAP", "romanCap", Notation::roman, "IVXLCDM"},
};

struct IndexSettings {
    const IndexType* type = &kIndexTypes[0];
    std::int32_t start = 1;
};

/// Letters as digits of base 26 without a zero: a 1, z 26, aa 27. Nothing beyond 32 bits.
std::optional<std::int32_t> readLetters(std::string_view letters, std::string_view alphabet) {
    std::int64_t start = 0;
    for (const char letter : letters) {
        start = start * static_cast<std::int64_t>(alphabet.size()) +
                static_cast<std::int64_t>(alphabet.find(letter)) + 1;
        if (start > std::numeric_limits<std::int32_t>::max()) {
            return std::nullopt;
        }
    }
    return static_cast<std::int32_t>(start);
}

struct RomanLetter {
    char letter;
    std::int32_t value;
    int count = 0;
};

struct RomanPair {
    std::string_view letters;
    std::int32_t value;
    char counted;  // the letter that has stood three times once the pair has stood
    bool found = false;
};

/// Consumes a numeral in capitals from the left. The order of its letters is not checked.
class RomanReader {
  public:
    std::optional<std::int32_t> read(std::string_view numeral) {
        std::int32_t start = 0;
        while (!numeral.empty()) {
            RomanPair* const pair = findPair(numeral);
            const bool accepted = pair != nullptr ? take(*pair) : take(letterOf(numeral.front()));
            if (!accepted) {
                return std::nullopt;
            }
            start += pair != nullptr ? pair->value : letterOf(numeral.front()).value;
            numeral.remove_prefix(pair != nullptr ? 2 : 1);
        }
        return start;
    }

  private:
    static constexpr int kMostInARow = 4;
    static constexpr int kCountAfterPair = 3;

    RomanPair* findPair(std::string_view numeral) {
        auto* const found =
            std::find_if(std::begin(pairs_), std::end(pairs_),
                         [numeral](const RomanPair& pair) { return numeral.starts_with(pair.letters); });
        return found == std::end(pairs_) ? nullptr : found;
    }

    RomanLetter& letterOf(char letter) {
        return *std::find_if(std::begin(letters_), std::end(letters_),
                             [letter](const RomanLetter& each) { return each.letter == letter; });
    }

    bool take(RomanPair& pair) {
        letterOf(pair.counted).count = kCountAfterPair;
        return !std::exchange(pair.found, true);
    }

    static bool take(RomanLetter& letter) { return letter.count++ < kMostInARow; }

    RomanPair pairs_[6] = {{"CM", 900, 'M'}, {"CD", 400, 'C'}, {"XC", 90, 'X'},
                           {"XL", 40, 'X'},  {"IX", 9, 'I'},   {"IV", 4, 'I'}};
    // L is worth 500, as D is; this is meant.
    RomanLetter letters_[7] = {{'M', 1000}, {'D', 500}, {'C', 100}, {'L', 500},
                               {'X', 10},   {'V', 5},   {'I', 1}};
};

bool readLetterStart(const SubComObj& given, const ParamObj& value, ParserMessage& messages,
                     IndexSettings& settings) {
    const std::optional<TextValue> text = textValue(value);
    const std::string letters = text ? std::string(text->text) : value.joinedTokens();
    std::optional<std::int32_t> start;
    if (letters.find_first_not_of(settings.type->characters) == std::string::npos) {
        const bool roman = settings.type->notation == Notation::roman;
        start = roman ? RomanReader().read(toUpperCase(letters))
                      : readLetters(letters, settings.type->characters);
        if (!start && roman) {
            messages.GenericError(kNotRoman, {"INDEXSTART"});
            return false;
        }
    }
    if (!start) {
        messages.GenericError(kMismatch, {letters, given.getParamObj("INDEXTYPE")->joinedTokens()});
        return false;
    }
    settings.start = *start;
    return true;
}

const IndexType* readType(const SubComObj& given) {
    const ParamObj* const type = given.getParamObj("INDEXTYPE");
    const auto* const found = std::find_if(
        std::begin(kIndexTypes), std::end(kIndexTypes),
        [type](const IndexType& each) { return type != nullptr && type->isStringValue(each.keyword); });
    return found == std::end(kIndexTypes) ? &kIndexTypes[0] : found;
}

bool read(const SubComObj& given, ParserMessage& messages, IndexSettings& settings) {
    settings.type = readType(given);
    const ParamObj* const start = given.getParamObj("INDEXSTART");
    if (start == nullptr) {
        return true;
    }
    if (settings.type->notation != Notation::number) {
        return readLetterStart(given, *start, messages, settings);
    }
    const std::optional<std::int32_t> number = start->getIntegerValue();
    if (!number) {
        messages.ParamNeedInteger("INDEXSTART", "INDEXING");
        return false;
    }
    settings.start = *number;
    return true;
}

void write(const IndexSettings& settings, std::string& request) {
    request += "<indexObject";
    appendAsIs(request, "type", settings.type->attribute);
    appendInteger(request, "indexStart", settings.start);
    request += "/>";
}

}  // namespace

std::unique_ptr<ModifyHandler> makeIndexingHandler() {
    return std::make_unique<SingleHandler<IndexSettings>>(kGrammar, read, write);
}

}  // namespace vexa
