#include "look/number_format/numerals.h"

#include "look/number_format/locale_names.h"
#include "util/fixed_text.h"
#include "util/unicode.h"

#include <array>

namespace orrery::look {

struct Ideographs {
    std::array<util::FixedText<3>, 10> digits;
    std::array<util::FixedText<3>, 4> units; ///< of a digit before the last ones of a group of four
    std::array<util::FixedText<6>, 4> groups; ///< of a group of four digits before the last ones
    bool saysOne;                             ///< 一百, not 百
    bool saysZero;                            ///< 一百〇五, not 百五
};

namespace {

constexpr std::uint16_t kChinese = 0x0004;
constexpr std::uint16_t kChineseOfChina = 0x0804;
constexpr std::uint16_t kChineseOfSingapore = 0x1004;
constexpr char32_t kFullWidthZero = U'０';

/// The zeros of the numerals by Windows' identifier of their shape; 0: European digits.
constexpr std::array<char32_t, 19> kZeros{0,      0,      0x0660, 0x06F0, 0x0966, 0x09E6, 0x0A66,
                                          0x0AE6, 0x0B66, 0x0BE6, 0x0C66, 0x0CE6, 0x0D66, 0x0E50,
                                          0x0ED0, 0x0F20, 0x1040, 0,      0x17E0};

constexpr Ideographs kSimplified{{"〇", "一", "二", "三", "四", "五", "六", "七", "八", "九"},
                                 {"", "十", "百", "千"},
                                 {"", "万", "亿", "万亿"},
                                 true,
                                 true};
constexpr Ideographs kTraditional{{"〇", "一", "二", "三", "四", "五", "六", "七", "八", "九"},
                                  {"", "十", "百", "千"},
                                  {"", "萬", "億", "兆"},
                                  true,
                                  true};
constexpr Ideographs kJapaneseWords{{"〇", "一", "二", "三", "四", "五", "六", "七", "八", "九"},
                                    {"", "十", "百", "千"},
                                    {"", "万", "億", "兆"},
                                    false,
                                    false};
constexpr Ideographs kSimplifiedFormal{{"零", "壹", "贰", "叁", "肆", "伍", "陆", "柒", "捌", "玖"},
                                       {"", "拾", "佰", "仟"},
                                       {"", "万", "亿", "万亿"},
                                       true,
                                       true};
constexpr Ideographs kTraditionalFormal{
    {"零", "壹", "貳", "參", "肆", "伍", "陸", "柒", "捌", "玖"},
    {"", "拾", "佰", "仟"},
    {"", "萬", "億", "兆"},
    true,
    true};
constexpr Ideographs kJapaneseFormal{{"〇", "壱", "弐", "参", "四", "伍", "六", "七", "八", "九"},
                                     {"", "拾", "百", "阡"},
                                     {"", "萬", "億", "兆"},
                                     true,
                                     false};

/// "[DBNum1]" and "[DBNum2]" mean something in Chinese and Japanese.
const Ideographs* IdeographsOf(const SectionLocale& locale)
{
    if (locale.ideographs != 1 && locale.ideographs != 2) {
        return nullptr;
    }
    const bool isFormal = locale.ideographs == 2;
    switch (locale.language & kPrimaryLanguage) {
    case kChinese:
        if (locale.language == kChineseOfChina || locale.language == kChineseOfSingapore) {
            return isFormal ? &kSimplifiedFormal : &kSimplified;
        }
        return isFormal ? &kTraditionalFormal : &kTraditional;
    case kJapanese:
        return isFormal ? &kJapaneseFormal : &kJapaneseWords;
    default:
        return nullptr;
    }
}

} // namespace

Numerals::Numerals(const SectionLocale& locale) : ideographs_(IdeographsOf(locale))
{
    if (locale.numerals < kZeros.size() && kZeros[locale.numerals] != 0) {
        zero_ = kZeros[locale.numerals];
    }
    const auto language = locale.language & kPrimaryLanguage;
    if (locale.ideographs == 3 && (language == kChinese || language == kJapanese)) {
        zero_ = kFullWidthZero;
    }
}

void Numerals::AppendDigit(std::string& text, char digit) const
{
    if (digit < '0' || digit > '9') {
        text += digit;
    }
    else if (ideographs_ != nullptr) {
        text += ideographs_->digits[static_cast<std::size_t>(digit - '0')];
    }
    else {
        util::AppendUtf8(text, zero_ + static_cast<char32_t>(digit - '0'));
    }
}

void Numerals::AppendWords(std::string& text, std::string_view digits, bool isOfDate) const
{
    constexpr std::size_t kGroup = 4;
    if (ideographs_ == nullptr || digits.size() > kGroup * ideographs_->groups.size()) {
        for (const char digit : digits) {
            AppendDigit(text, digit);
        }
        return;
    }
    const auto begin = text.size();
    bool isZeroDue = false;
    bool hasGroup = false;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        const auto place = digits.size() - 1 - i;
        const std::string_view unit = ideographs_->units[place % kGroup];
        if (digits[i] == '0') {
            isZeroDue = true;
        }
        else {
            const bool isFirst = text.size() == begin;
            if (isZeroDue && !isFirst && ideographs_->saysZero) {
                text += ideographs_->digits[0];
            }
            // 十二 of a date, but 一十二 as a number
            const bool isOneSaid = ideographs_->saysOne && !(isOfDate && isFirst);
            if (digits[i] != '1' || unit.empty() || isOneSaid) {
                AppendDigit(text, digits[i]);
            }
            text += unit;
            isZeroDue = false;
            hasGroup = true;
        }
        if (place % kGroup == 0) {
            text += hasGroup ? std::string_view(ideographs_->groups[place / kGroup]) : "";
            hasGroup = false;
        }
    }
    if (text.size() == begin) {
        text += ideographs_->digits[0];
    }
}

} // namespace orrery::look
