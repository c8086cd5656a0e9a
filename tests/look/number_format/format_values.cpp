// Shows values as number formats do: each line of the input is a code, a tab and a value ("n 1.5",
// "s text" or "b TRUE"), each line of the output the text.

#include "look/number_format/number_format.h"

#include <charconv>
#include <iostream>
#include <string>
#include <string_view>

namespace {

using namespace orrery;

book::CellContent ReadContent(std::string_view text)
{
    const auto value = text.substr(2);
    if (text[0] == 'b') {
        return value == "TRUE";
    }
    if (text[0] == 's') {
        return std::string(value);
    }
    double number = 0;
    std::from_chars(value.data(), value.data() + value.size(), number);
    return number;
}

} // namespace

int main()
{
    std::string line;
    while (std::getline(std::cin, line)) {
        const auto tab = line.find('\t');
        if (tab == std::string::npos || line.size() < tab + 3) {
            std::cerr << "not a code and a value: " << line << '\n';
            return 1;
        }
        const look::NumberFormat format(std::string_view(line).substr(0, tab));
        const auto content = ReadContent(std::string_view(line).substr(tab + 1));
        std::cout << format.Format(content, book::DateSystem::From1900).text << '\n';
    }
    return 0;
}
