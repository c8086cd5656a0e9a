#include "look/picture/byte_view.h"
#include "look/picture/headers.h"
#include "util/numbers.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <tuple>
#include <utility>

namespace orrery::look {

namespace {

constexpr double kDotsPerInch = 96;
constexpr std::size_t kSvgBeginning = 16'384; ///< where its element is looked for

/// The value of an attribute in the text of a tag, or an empty text.
std::string_view AttributeOf(std::string_view tag, std::string_view name)
{
    for (std::size_t at = tag.find(name); at != std::string_view::npos;
         at = tag.find(name, at + 1)) {
        const char before = at > 0 ? tag[at - 1] : 'x';
        if (before != ' ' && before != '\t' && before != '\n' && before != '\r')
            continue;
        auto rest = tag.substr(at + name.size());
        const auto quote = rest.find_first_of("\"'");
        if (quote == std::string_view::npos || rest.find_first_not_of(" \t\r\n=") != quote)
            continue;
        const auto end = rest.find(rest[quote], quote + 1);
        if (end == std::string_view::npos)
            return {};
        return rest.substr(quote + 1, end - quote - 1);
    }
    return {};
}

/// A length of CSS in pixels, or 0: "12", "12px", "1in", "10mm".
double SvgLength(std::string_view text)
{
    static constexpr std::array<std::pair<std::string_view, double>, 7> kUnits{{{"px", 1},
                                                                                {"pt", 96.0 / 72},
                                                                                {"pc", 16},
                                                                                {"in", 96},
                                                                                {"mm", 96 / 25.4},
                                                                                {"cm", 96 / 2.54},
                                                                                {"", 1}}};
    for (const auto& [unit, factor] : kUnits) {
        if (text.size() < unit.size() || text.substr(text.size() - unit.size()) != unit)
            continue;
        const auto number = util::ReadNumber(text.substr(0, text.size() - unit.size()));
        return number && std::isfinite(*number) && *number > 0 ? *number * factor : 0;
    }
    return 0;
}

/// Width and height of a viewBox: the last two of four numbers.
std::pair<double, double> ViewBoxSize(std::string_view text)
{
    std::array<double, 4> numbers{};
    for (double& number : numbers) {
        const auto begin = text.find_first_not_of(" ,\t\r\n");
        if (begin == std::string_view::npos)
            return {};
        text.remove_prefix(begin);
        const auto end = std::min(text.find_first_of(" ,\t\r\n"), text.size());
        number = util::ReadNumber(text.substr(0, end)).value_or(0);
        text.remove_prefix(end);
    }
    const auto size = [](double number) {
        return std::isfinite(number) && number > 0 ? number : 0;
    };
    return {size(numbers[2]), size(numbers[3])};
}

} // namespace

std::optional<PictureInfo> ReadEmf(std::string_view bytes)
{
    // [MS-EMF] 2.3.4.2: the frame is in hundredths of a millimetre.
    const ByteView view(bytes, false);
    if (!view.Has(0, 88) || view.U32(0) != 1 || bytes.substr(40, 4) != " EMF")
        return std::nullopt;
    PictureInfo info;
    info.type = PictureType::Emf;
    const auto pixels = [&view](std::size_t low, std::size_t high) {
        return std::abs(static_cast<double>(view.I32(high)) - view.I32(low)) * kDotsPerInch / 2540;
    };
    info.width = pixels(24, 32);
    info.height = pixels(28, 36);
    return info;
}

std::optional<PictureInfo> ReadWmf(std::string_view bytes)
{
    const ByteView view(bytes, false);
    PictureInfo info;
    info.type = PictureType::Wmf;
    if (view.U32(0) == 0x9AC6CDD7 && view.Has(0, 40)) { // [MS-WMF] 2.3.2.3
        const double inch = view.U16(14) > 0 ? view.U16(14) : 1440;
        info.width = std::abs(view.I16(10) - view.I16(6)) * kDotsPerInch / inch;
        info.height = std::abs(view.I16(12) - view.I16(8)) * kDotsPerInch / inch;
        return info;
    }
    const unsigned version = view.U16(4);
    const bool isPlain = (view.U16(0) == 1 || view.U16(0) == 2) && view.U16(2) == 9 &&
                         (version == 0x0100 || version == 0x0300);
    return isPlain ? std::optional(info) : std::nullopt;
}

std::optional<PictureInfo> ReadSvg(std::string_view bytes)
{
    if (bytes.substr(0, 3) == "\xEF\xBB\xBF")
        bytes.remove_prefix(3);
    const auto begin = bytes.find_first_not_of(" \t\r\n");
    if (begin == std::string_view::npos || bytes[begin] != '<')
        return std::nullopt;
    bytes = bytes.substr(0, kSvgBeginning);
    const auto element = bytes.find("<svg");
    const auto end = bytes.find('>', element);
    if (element == std::string_view::npos || end == std::string_view::npos)
        return std::nullopt;
    const auto tag = bytes.substr(element + 4, end - element - 4);
    PictureInfo info;
    info.type = PictureType::Svg;
    info.width = SvgLength(AttributeOf(tag, "width"));
    info.height = SvgLength(AttributeOf(tag, "height"));
    if (info.width == 0 || info.height == 0)
        std::tie(info.width, info.height) = ViewBoxSize(AttributeOf(tag, "viewBox"));
    return info;
}

} // namespace orrery::look
