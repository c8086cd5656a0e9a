// A code shows any value, in a text that is valid and bounded. The input is eight bytes of a number
// and the code.

#include "require.h"

#include "look/number_format/number_format.h"
#include "util/text.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace {

using namespace orrery;

void Check(const look::NumberFormat& format, const book::CellContent& content, bool isCodeValid)
{
    for (const auto dates : {book::DateSystem::From1900, book::DateSystem::From1904}) {
        const auto value = format.Format(content, dates);
        fuzz::Require(value.text.size() < 4'000'000);
        fuzz::Require(!isCodeValid || util::IsValidUtf8(value.text));
        fuzz::Require(!value.fillAt || *value.fillAt <= value.text.size());
        fuzz::Require(value.fillAt.has_value() == !value.fillCharacter.empty());
        fuzz::Require(value == format.Format(content, dates));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    double number = 0;
    if (size < sizeof number) {
        return 0;
    }
    std::memcpy(&number, data, sizeof number);
    const std::string_view code(reinterpret_cast<const char*>(data) + sizeof number,
                                size - sizeof number);
    const look::NumberFormat format(code);
    const bool isValid = util::IsValidUtf8(code);
    Check(format, number, isValid);
    Check(format, -number, isValid);
    Check(format, 44000.6, isValid);
    Check(format, std::string("täxt"), isValid);
    Check(format, true, isValid);
    Check(format, book::CellError::Name, isValid);
    fuzz::Require(!(format.IsDate() && format.IsGeneral()));
    const auto general = look::FormatGeneral(number, static_cast<int>(size % 20));
    fuzz::Require(!general.empty() && general.size() <= 32);
    fuzz::Require(std::isfinite(number) || general == "#NUM!");
    return 0;
}
