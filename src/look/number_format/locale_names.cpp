#include "look/number_format/locale_names.h"

#include "util/text.h"

#include <algorithm>

namespace orrery::look {
namespace {

constexpr std::uint16_t kEnglish = 0x0409;

const LocaleNames* FindLanguage(std::uint16_t language)
{
    const auto found = std::lower_bound(
        kLocaleTable.begin(), kLocaleTable.end(), language,
        [](const LocaleNames& names, std::uint16_t wanted) { return names.language < wanted; });
    return found != kLocaleTable.end() && found->language == language ? &*found : nullptr;
}

const LocaleNames* FindPrimaryLanguage(std::uint16_t language)
{
    const auto found =
        std::find_if(kLocaleTable.begin(), kLocaleTable.end(), [=](const LocaleNames& names) {
            return (names.language & kPrimaryLanguage) == (language & kPrimaryLanguage);
        });
    return found != kLocaleTable.end() ? &*found : nullptr;
}

/// The first language whose tag begins like that.
std::uint16_t FindTag(std::string_view tag)
{
    for (const auto& names : kLocaleTable) {
        if (util::EqualIgnoringCase(names.tag.substr(0, tag.size()), tag)) {
            return names.language;
        }
    }
    return 0;
}

} // namespace

const LocaleNames& NamesOf(std::uint16_t language)
{
    if (const auto* exact = FindLanguage(language)) {
        return *exact;
    }
    const auto* related = FindPrimaryLanguage(language);
    return related ? *related : *FindLanguage(kEnglish);
}

std::uint16_t LanguageOfTag(std::string_view tag)
{
    constexpr std::size_t kLongestTag = 85; // of Windows
    tag = tag.substr(0, std::min(tag.find(','), kLongestTag));
    while (tag.size() >= 2) {
        if (const auto language = FindTag(tag)) {
            return language;
        }
        const auto dash = tag.rfind('-');
        tag = tag.substr(0, dash == std::string_view::npos ? 0 : dash);
    }
    return 0;
}

} // namespace orrery::look
