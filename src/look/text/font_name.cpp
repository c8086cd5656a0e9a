#include "look/text/font_name.h"

#include "util/fixed_text.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace orrery::look {
namespace {

struct KnownFont {
    util::FixedText<31> name; ///< in lower case
    FontMatch match;
};

constexpr FontMatch Sans(OpenFont font)
{
    return {font, FontKind::Sans, false};
}
constexpr FontMatch Serif(OpenFont font)
{
    return {font, FontKind::Serif, false};
}
constexpr FontMatch Mono(OpenFont font)
{
    return {font, FontKind::Mono, false};
}
constexpr FontMatch Script(OpenFont font)
{
    return {font, FontKind::Script, false};
}
constexpr FontMatch EastAsian(FontKind kind)
{
    return {kind == FontKind::Serif ? OpenFont::DejaVuSerif : OpenFont::DejaVuSans, kind, true};
}

constexpr auto kArial = Sans(OpenFont::LiberationSans);
constexpr auto kNarrow = Sans(OpenFont::LiberationSansNarrow);
constexpr auto kCalibri = Sans(OpenFont::Carlito);
constexpr auto kCambria = Serif(OpenFont::Caladea);
constexpr auto kTimes = Serif(OpenFont::LiberationSerif);
constexpr auto kCourier = Mono(OpenFont::LiberationMono);
constexpr auto kWideSans = Sans(OpenFont::DejaVuSans);
constexpr auto kWideSerif = Serif(OpenFont::DejaVuSerif);
constexpr auto kWideMono = Mono(OpenFont::DejaVuSansMono);
constexpr auto kGothic = EastAsian(FontKind::Sans);
constexpr auto kMing = EastAsian(FontKind::Serif);

// Rising, so that a name is found by bisection.
constexpr auto kKnownFonts = std::to_array<KnownFont>({
    {"andale mono", kWideMono},
    {"aptos", kWideSans},
    {"aptos display", kWideSans},
    {"aptos narrow", kWideSans},
    {"arial", kArial},
    {"arial black", kWideSans},
    {"arial ce", kArial},
    {"arial cyr", kArial},
    {"arial greek", kArial},
    {"arial narrow", kNarrow},
    {"arial tur", kArial},
    {"arial unicode ms", kGothic},
    {"arimo", kArial},
    {"batang", kMing},
    {"batangche", kMing},
    {"bitstream vera sans", kWideSans},
    {"bitstream vera sans mono", kWideMono},
    {"bitstream vera serif", kWideSerif},
    {"book antiqua", kWideSerif},
    {"bookman old style", kWideSerif},
    {"brush script mt", Script(OpenFont::LiberationSerif)},
    {"caladea", kCambria},
    {"calibri", kCalibri},
    {"calibri light", kCalibri},
    {"cambria", kCambria},
    {"cambria math", kCambria},
    {"carlito", kCalibri},
    {"century", kWideSerif},
    {"century gothic", kWideSans},
    {"century schoolbook", kWideSerif},
    {"comic sans ms", Script(OpenFont::DejaVuSans)},
    {"consolas", kWideMono},
    {"constantia", kWideSerif},
    {"corbel", kWideSans},
    {"courier", kCourier},
    {"courier new", kCourier},
    {"cousine", kCourier},
    {"dejavu sans", kWideSans},
    {"dejavu sans mono", kWideMono},
    {"dejavu serif", kWideSerif},
    {"dengxian", kGothic},
    {"dotum", kGothic},
    {"dotumche", kGothic},
    {"fangsong", kMing},
    {"fixedsys", kWideMono},
    {"garamond", kWideSerif},
    {"geneva", kWideSans},
    {"georgia", kWideSerif},
    {"gulim", kGothic},
    {"gulimche", kGothic},
    {"helv", kWideSans},
    {"helvetica", kArial},
    {"helvetica neue", kWideSans},
    {"hg mincho light j", kMing},
    {"kaiti", kMing},
    {"liberation mono", kCourier},
    {"liberation sans", kArial},
    {"liberation sans narrow", kNarrow},
    {"liberation serif", kTimes},
    {"lucida console", kWideMono},
    {"lucida sans", kWideSans},
    {"lucida sans unicode", kWideSans},
    {"malgun gothic", kGothic},
    {"meiryo", kGothic},
    {"meiryo ui", kGothic},
    {"menlo", kWideMono},
    {"microsoft jhenghei", kGothic},
    {"microsoft sans serif", kWideSans},
    {"microsoft yahei", kGothic},
    {"mingliu", kMing},
    {"monaco", kWideMono},
    {"monospace", kWideMono},
    {"ms gothic", kGothic},
    {"ms mincho", kMing},
    {"ms pgothic", kGothic},
    {"ms pmincho", kMing},
    {"ms sans serif", kWideSans},
    {"ms serif", kWideSerif},
    {"ms ui gothic", kGothic},
    {"nimbus mono l", kCourier},
    {"nimbus roman no9 l", kTimes},
    {"nimbus sans l", kArial},
    {"noto sans cjk jp", kGothic},
    {"noto sans cjk kr", kGothic},
    {"noto sans cjk sc", kGothic},
    {"noto sans cjk tc", kGothic},
    {"nsimsun", kMing},
    {"osaka", kGothic},
    {"palatino linotype", kTimes},
    {"pmingliu", kMing},
    {"sans", kWideSans},
    {"sans-serif", kWideSans},
    {"segoe print", Script(OpenFont::DejaVuSans)},
    {"segoe script", Script(OpenFont::DejaVuSans)},
    {"segoe ui", kWideSans},
    {"serif", kWideSerif},
    {"simhei", kGothic},
    {"simsun", kMing},
    {"sylfaen", kWideSerif},
    {"system", kWideSans},
    {"tahoma", kWideSans},
    {"terminal", kWideMono},
    {"times", kTimes},
    {"times new roman", kTimes},
    {"times new roman ce", kTimes},
    {"times new roman cyr", kTimes},
    {"times new roman greek", kTimes},
    {"times new roman tur", kTimes},
    {"tinos", kTimes},
    {"tms rmn", kWideSerif},
    {"trebuchet ms", kWideSans},
    {"univers", kWideSans},
    {"verdana", kWideSans},
    {"yu gothic", kGothic},
    {"yu gothic ui", kGothic},
    {"yu mincho", kMing},
    {"\xE3\x83\x92\xE3\x83\xA9\xE3\x82\xAE\xE3\x83\x8E\xE8\xA7\x92\xE3\x82\xB4", kGothic},
    {"\xE5\xAE\x8B\xE4\xBD\x93", kMing},
    {"\xE6\x96\xB0\xE7\xB4\xB0\xE6\x98\x8E\xE9\xAB\x94", kMing},
    {"\xE6\xB8\xB8\xE3\x82\xB4\xE3\x82\xB7\xE3\x83\x83\xE3\x82\xAF", kGothic},
    {"\xEA\xB5\xB4\xEB\xA6\xBC", kGothic},
    {"\xEB\x8F\x8B\xEC\x9B\x80", kGothic},
    {"\xEB\xA7\x91\xEC\x9D\x80 \xEA\xB3\xA0\xEB\x94\x95", kGothic},
    {"\xEF\xBC\xAD\xEF\xBC\xB3 "
     "\xE3\x82\xB4\xE3\x82\xB7\xE3\x83\x83\xE3\x82\xAF",
     kGothic},
    {"\xEF\xBC\xAD\xEF\xBC\xB3 "
     "\xE6\x98\x8E\xE6\x9C\x9D",
     kMing},
    {"\xEF\xBC\xAD\xEF\xBC\xB3 "
     "\xEF\xBC\xB0\xE3\x82\xB4\xE3\x82\xB7\xE3\x83\x83\xE3\x82\xAF",
     kGothic},
    {"\xEF\xBC\xAD\xEF\xBC\xB3 "
     "\xEF\xBC\xB0\xE6\x98\x8E\xE6\x9C\x9D",
     kMing},
});

constexpr std::array<std::string_view, 9> kOpenFontNames = {
    "Carlito",          "Caladea",         "Liberation Sans", "Liberation Sans Narrow",
    "Liberation Serif", "Liberation Mono", "DejaVu Sans",     "DejaVu Serif",
    "DejaVu Sans Mono"};

constexpr std::string_view GenericFamily(FontKind kind)
{
    switch (kind) {
    case FontKind::Sans:
        return "sans-serif";
    case FontKind::Serif:
        return "serif";
    case FontKind::Mono:
        return "monospace";
    case FontKind::Script:
        return "cursive";
    }
    return "sans-serif";
}

constexpr char Lower(char character)
{
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                : character;
}

/// Compares a name in lower case with one in any case.
int Compare(std::string_view lower, std::string_view name)
{
    const std::size_t length = std::min(lower.size(), name.size());
    for (std::size_t i = 0; i < length; ++i) {
        const auto left = static_cast<unsigned char>(lower[i]);
        const auto right = static_cast<unsigned char>(Lower(name[i]));
        if (left != right)
            return left < right ? -1 : 1;
    }
    return lower.size() == name.size() ? 0 : lower.size() < name.size() ? -1 : 1;
}

/// Styles of a family are fonts of their own in old files: "Arial Bold".
bool BeginsWith(std::string_view name, std::string_view lower)
{
    return name.size() > lower.size() && name[lower.size()] == ' ' &&
           Compare(lower, name.substr(0, lower.size())) == 0;
}

bool HasEastAsianCharacters(std::string_view name)
{
    return std::any_of(name.begin(), name.end(),
                       [](char c) { return static_cast<unsigned char>(c) >= 0xE2; });
}

bool IsWord(std::string_view name)
{
    return !name.empty() && std::all_of(name.begin(), name.end(), [](char c) {
        return (Lower(c) >= 'a' && Lower(c) <= 'z') || c == '-';
    });
}

void AddFamily(std::string& families, std::string_view name)
{
    if (!families.empty())
        families += ", ";
    if (IsWord(name))
        families += name;
    else
        (families += '\'').append(name) += '\'';
}

/// Without characters that end a quoted name, or are none.
std::string Harmless(std::string_view name)
{
    constexpr std::size_t kLongest = 64; // more than any font's name has
    std::string harmless;
    for (const char c : name) {
        if (static_cast<unsigned char>(c) >= 0x20 && c != 0x7F && c != '\'' && c != '"' &&
            c != '\\' && c != ';' && c != '<' && c != '>' && c != '&')
            harmless += c;
    }
    return harmless.size() <= kLongest ? harmless : std::string();
}

} // namespace

FontMatch MatchFont(std::string_view name)
{
    if (name.starts_with('@'))
        name.remove_prefix(1);
    const auto found = std::lower_bound(kKnownFonts.begin(), kKnownFonts.end(), name,
                                        [](const KnownFont& font, std::string_view wanted) {
                                            return Compare(font.name, wanted) < 0;
                                        });
    if (found != kKnownFonts.end() && Compare(found->name, name) == 0)
        return found->match;
    for (const KnownFont& font :
         {KnownFont{"arial", kArial}, KnownFont{"calibri", kCalibri},
          KnownFont{"cambria", kCambria}, KnownFont{"helvetica", kArial},
          KnownFont{"times new roman", kTimes}, KnownFont{"courier new", kCourier}}) {
        if (BeginsWith(name, font.name))
            return font.match;
    }
    return HasEastAsianCharacters(name) ? kGothic : FontMatch{};
}

std::string_view OpenFontName(OpenFont font)
{
    return kOpenFontNames[static_cast<std::size_t>(font)];
}

std::string FontFamilies(std::string_view name)
{
    if (name.starts_with('@'))
        name.remove_prefix(1);
    const FontMatch match = MatchFont(name);
    const std::string_view substitute = OpenFontName(match.font);
    std::string families;
    if (const std::string own = Harmless(name); !own.empty() && own != substitute)
        AddFamily(families, own);
    AddFamily(families, substitute);
    return families.append(", ").append(GenericFamily(match.kind));
}

} // namespace orrery::look
