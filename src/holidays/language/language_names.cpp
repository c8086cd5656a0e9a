#include "holidays/language/language_names.h"

#include "util/text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace orrery::holidays {
namespace {

using Language = std::pair<std::string_view, std::string_view>;

constexpr std::array<Language, 62> kLanguages = {{
    {"am", "Amharic"},
    {"ar", "Arabic"},
    {"az", "Azerbaijani"},
    {"be", "Belarusian"},
    {"bg", "Bulgarian"},
    {"bn", "Bengali"},
    {"bs", "Bosnian"},
    {"ca", "Catalan"},
    {"cs", "Czech"},
    {"cy", "Welsh"},
    {"da", "Danish"},
    {"de", "German"},
    {"el", "Greek"},
    {"en", "English"},
    {"es", "Spanish"},
    {"et", "Estonian"},
    {"eu", "Basque"},
    {"fa", "Persian"},
    {"fi", "Finnish"},
    {"fr", "French"},
    {"ga", "Irish"},
    {"gl", "Galician"},
    {"he", "Hebrew"},
    {"hi", "Hindi"},
    {"hr", "Croatian"},
    {"hu", "Hungarian"},
    {"hy", "Armenian"},
    {"id", "Indonesian"},
    {"is", "Icelandic"},
    {"it", "Italian"},
    {"ja", "Japanese"},
    {"ka", "Georgian"},
    {"kk", "Kazakh"},
    {"ko", "Korean"},
    {"lb", "Luxembourgish"},
    {"lt", "Lithuanian"},
    {"lv", "Latvian"},
    {"mk", "Macedonian"},
    {"ms", "Malay"},
    {"mt", "Maltese"},
    {"nb", "Norwegian"},
    {"nl", "Dutch"},
    {"nn", "Norwegian Nynorsk"},
    {"pl", "Polish"},
    {"pt", "Portuguese"},
    {"rm", "Romansh"},
    {"ro", "Romanian"},
    {"ru", "Russian"},
    {"sk", "Slovak"},
    {"sl", "Slovenian"},
    {"sq", "Albanian"},
    {"sr", "Serbian"},
    {"sv", "Swedish"},
    {"sw", "Swahili"},
    {"ta", "Tamil"},
    {"th", "Thai"},
    {"tl", "Filipino"},
    {"tr", "Turkish"},
    {"uk", "Ukrainian"},
    {"ur", "Urdu"},
    {"vi", "Vietnamese"},
    {"zh", "Chinese"},
}};

} // namespace

std::string LanguageName(std::string_view code)
{
    const auto* const found =
        std::find_if(kLanguages.begin(), kLanguages.end(), [code](const Language& language) {
            return util::EqualIgnoringCase(language.first, code);
        });
    return std::string(found == kLanguages.end() ? code : found->second);
}

} // namespace orrery::holidays
