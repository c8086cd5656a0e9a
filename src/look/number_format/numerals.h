#pragma once

#include "look/number_format/format_code.h"

#include <string>
#include <string_view>

namespace orrery::look {

/// How the words of a number are built from ideographs.
struct Ideographs;

/// The numerals that a section writes numbers in.
class Numerals {
public:
    explicit Numerals(const SectionLocale& locale);

    /// Writes "0" to "9" in these numerals, other characters unchanged.
    void AppendDigit(std::string& text, char digit) const;
    /// Numbers are words, not only digits: "[DBNum1]" and "[DBNum2]".
    bool HasWords() const { return ideographs_ != nullptr; }
    /// A whole number in words, such as 十二 for "12"; its digits if it is too large.
    void AppendWords(std::string& text, std::string_view digits, bool isOfDate) const;

private:
    char32_t zero_ = U'0'; ///< of digits that follow each other
    const Ideographs* ideographs_ = nullptr;
};

} // namespace orrery::look
