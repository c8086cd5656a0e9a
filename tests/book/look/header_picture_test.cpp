#include "book/look/header_picture.h"

#include <gtest/gtest.h>

namespace orrery::book {
namespace {

TEST(ParseHeaderSlot, ReadsPartAndPages)
{
    EXPECT_EQ(ParseHeaderSlot("LH"), (HeaderSlot{HeaderPages::Usual, HeaderPart::Left, false}));
    EXPECT_EQ(ParseHeaderSlot("CFEVEN"), (HeaderSlot{HeaderPages::Even, HeaderPart::Middle, true}));
    EXPECT_EQ(ParseHeaderSlot("RHFIRST"),
              (HeaderSlot{HeaderPages::First, HeaderPart::Right, false}));
}

TEST(ParseHeaderSlot, OtherNamesAreNoPlaces)
{
    for (const char* name : {"", "L", "H", "HL", "LX", "XH", "lh", "LHX", "LHFIRSTX", "Picture 1"})
        EXPECT_FALSE(ParseHeaderSlot(name)) << name;
}

} // namespace
} // namespace orrery::book
