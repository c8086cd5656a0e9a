#include "engines/excel/registration.h"

#include <gtest/gtest.h>

namespace orrery::excel {
namespace {

TEST(ImageOfCommandTest, FindsTheFileName)
{
    EXPECT_EQ(ImageOfCommand(LR"("C:\Program Files\Office\EXCEL.EXE" /automation)"), L"EXCEL.EXE");
    EXPECT_EQ(ImageOfCommand(LR"(C:\Program Files\Office\Excel.exe /automation)"), L"Excel.exe");
    EXPECT_EQ(ImageOfCommand(LR"(C:\PROGRA~1\MICROS~1\Office14\EXCEL.EXE)"), L"EXCEL.EXE");
    EXPECT_EQ(ImageOfCommand(LR"("C:\a.exe b\server.exe" -x)"), L"server.exe");
    EXPECT_EQ(ImageOfCommand(L"excel.exe"), L"excel.exe");
    EXPECT_EQ(ImageOfCommand(LR"("C:\unclosed\server.exe)"), L"server.exe");
}

TEST(ServerImageTest, IsTheUsualOneForAClassThatIsNotRegistered)
{
    constexpr CLSID nobodys = {0x1b2c3d4e, 0x1111, 0x2222, {1, 2, 3, 4, 5, 6, 7, 8}};
    EXPECT_EQ(ServerImage(nobodys), L"EXCEL.EXE");
}

} // namespace
} // namespace orrery::excel
