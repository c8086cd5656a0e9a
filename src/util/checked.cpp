#include "util/checked.h"

#include "util/error.h"

#include <limits>

namespace orrery::util {

namespace {

template <typename Narrow> Narrow NarrowTo(std::int64_t value)
{
    if (value < std::numeric_limits<Narrow>::min() || value > std::numeric_limits<Narrow>::max())
        throw OverflowError();
    return static_cast<Narrow>(value);
}

} // namespace

std::int16_t Add16(std::int16_t left, std::int16_t right)
{
    return Narrow16(std::int64_t{left} + right);
}

std::int16_t Subtract16(std::int16_t left, std::int16_t right)
{
    return Narrow16(std::int64_t{left} - right);
}

std::int16_t Multiply16(std::int16_t left, std::int16_t right)
{
    return Narrow16(std::int64_t{left} * right);
}

std::int32_t Add32(std::int32_t left, std::int32_t right)
{
    return NarrowTo<std::int32_t>(std::int64_t{left} + right);
}

std::int32_t Multiply32(std::int32_t left, std::int32_t right)
{
    return NarrowTo<std::int32_t>(std::int64_t{left} * right);
}

std::int16_t Narrow16(std::int64_t value)
{
    return NarrowTo<std::int16_t>(value);
}

} // namespace orrery::util
