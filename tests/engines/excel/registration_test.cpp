#include "engines/excel/registration.h"

#include "book/error.h"
#include "util/error_text.h"

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

TEST(HasFoundTest, OnlyAMissingClassIsNoError)
{
    EXPECT_TRUE(HasFound(S_OK));
    EXPECT_FALSE(HasFound(CO_E_CLASSSTRING));
    EXPECT_FALSE(HasFound(REGDB_E_CLASSNOTREG));
    for (const HRESULT failure : {CO_E_NOTINITIALIZED, REGDB_E_READREGDB, E_OUTOFMEMORY}) {
        try {
            HasFound(failure);
            ADD_FAILURE() << "nothing was thrown";
        }
        catch (const Error& error) {
            EXPECT_EQ(error.Kind(), book::ErrorKind::ApplicationFailure);
            EXPECT_TRUE(util::ErrorText(error).starts_with("Excel could not be looked up: "));
        }
    }
}

TEST(ServerImageTest, IsTheUsualOneForAClassThatIsNotRegistered)
{
    constexpr CLSID nobodys = {0x1b2c3d4e, 0x1111, 0x2222, {1, 2, 3, 4, 5, 6, 7, 8}};
    EXPECT_EQ(ServerImage(nobodys), L"EXCEL.EXE");
}

} // namespace
} // namespace orrery::excel
