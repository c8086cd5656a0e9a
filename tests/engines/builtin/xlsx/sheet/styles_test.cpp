#include "engines/builtin/xlsx/sheet/styles.h"
#include "util/error.h"

#include <gtest/gtest.h>
#include <string>

namespace orrery::xlsx {
namespace {

TEST(Styles, KnowsWhichFormatsAreLocked)
{
    const Styles formats(R"(<?xml version="1.0"?>
<x:styleSheet xmlns:x="http://schemas.openxmlformats.org/spreadsheetml/2006/main">
<x:cellStyleXfs count="1"><x:xf><x:protection locked="0"/></x:xf></x:cellStyleXfs>
<x:cellXfs count="7">
<x:xf numFmtId="0"/>
<x:xf applyProtection="1"><x:alignment horizontal="center"/><x:protection locked="0"/></x:xf>
<x:xf applyProtection="0"><x:protection locked="false" hidden="1"/></x:xf>
<x:xf><x:protection locked="1"/></x:xf>
<x:xf><x:protection locked="true"/></x:xf>
<x:xf><x:protection hidden="1"/></x:xf>
<x:xf><x:extLst><x:ext><x:protection locked="0"/></x:ext></x:extLst></x:xf>
</x:cellXfs><x:dxfs><x:dxf><x:protection locked="0"/></x:dxf></x:dxfs></x:styleSheet>)",
                         "/xl/styles.xml");
    const bool expected[] = {true, false, false, true, true, true, true};
    for (std::size_t format = 0; format < std::size(expected); ++format)
        EXPECT_EQ(formats.IsLocked(format), expected[format]) << format;
    EXPECT_TRUE(formats.IsLocked(7)) << "a format that does not exist";
}

TEST(Styles, LocksEverythingWithoutAPart)
{
    EXPECT_TRUE(Styles("", "").IsLocked(0));
}

TEST(Styles, RefusesDamage)
{
    EXPECT_THROW(Styles("<styleSheet><cellXfs></styleSheet>", "/xl/styles.xml"), util::Error);
}

} // namespace
} // namespace orrery::xlsx
