#include "look/layout/fit_number.h"

#include "util/numbers.h"

#include <algorithm>
#include <cmath>

namespace orrery::look {
namespace {

void DropZerosAtEnd(std::string& text)
{
    if (text.find('.') == std::string::npos)
        return;
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with('.'))
        text.pop_back();
}

std::string Fixed(double number, int decimals)
{
    std::string text = util::DecimalText(number, decimals);
    DropZerosAtEnd(text);
    return text == "-0" ? "0" : text;
}

/// "1.2E+09"
std::string Scientific(double number, int decimals)
{
    std::string text = ScientificText(util::RoundToDigits(number, decimals + 1));
    const std::size_t power = text.find('e');
    if (power == std::string::npos)
        return text;
    std::string mantissa = text.substr(0, power);
    DropZerosAtEnd(mantissa);
    return mantissa + 'E' + text.substr(power + 1);
}

} // namespace

std::string FitGeneralNumber(double number, const FitsRoom& fits)
{
    const double size = std::abs(number);
    if (!std::isfinite(number))
        return {};
    if (size < 1e11 && (size >= 1e-4 || number == 0)) {
        for (int decimals = 9; decimals >= 0; --decimals) {
            std::string text = Fixed(number, decimals);
            if (fits(text))
                return text;
        }
    }
    for (int decimals = 5; decimals >= 0; --decimals) {
        std::string text = Scientific(number, decimals);
        if (fits(text))
            return text;
    }
    // A small number is rather nothing than number signs.
    return size < 1e-4 && fits("0") ? "0" : std::string();
}

std::string NumberSigns(double room, double widthOfOne)
{
    constexpr double kMost = 1000;
    const double count = widthOfOne > 0 ? std::floor(room / widthOfOne) : 1;
    return std::string(static_cast<std::size_t>(std::clamp(count, 1.0, kMost)), '#');
}

} // namespace orrery::look
