#include "engines/builtin/vba/module_source.h"

#include "util/error.h"

#include <gtest/gtest.h>

#include <string>

namespace orrery::vba {
namespace {

const std::string kAttributes =
    "Attribute VB_Name = \"Sheet1\"\r\n"
    "Attribute VB_Base = \"0{00020820-0000-0000-C000-000000000046}\"\r\n"
    "Attribute VB_Control = \"Button1, 1, 0, MSForms, CommandButton\"\r\n";

TEST(HasCodeTest, AttributesAndEmptyLinesAreNone)
{
    EXPECT_FALSE(HasCode(""));
    EXPECT_FALSE(HasCode(kAttributes));
    EXPECT_FALSE(HasCode(kAttributes + "\r\n  \t\r\n"));
    EXPECT_FALSE(HasCode(kAttributes + std::string(100, '\0'))) << "what fills a last chunk";
}

TEST(HasCodeTest, AnythingElseIs)
{
    EXPECT_TRUE(HasCode(kAttributes + "Option Explicit\r\n"));
    EXPECT_TRUE(HasCode(kAttributes + "\r\n' a remark"));
    EXPECT_TRUE(HasCode(kAttributes + "AttributeOfMine = 1\r\n"));
}

TEST(RenameModuleTest, OnlyTheNameChanges)
{
    const std::string code = "Sub Worksheet_Change()\r\n    Sheet1.Range(\"A1\") = \"Sheet1\"\r\n"
                             "End Sub\r\n";
    const std::string renamed = "Attribute VB_Name = \"Sheet12\"\r\n" +
                                kAttributes.substr(kAttributes.find('\n') + 1) + code;
    EXPECT_EQ(RenameModule(kAttributes + code, "Sheet1", "Sheet12"), renamed);
    EXPECT_EQ(RenameModule(kAttributes + code, "SHEET1", "Sheet12"), renamed);
}

TEST(RenameModuleTest, TheNameIsInTheCodePage)
{
    EXPECT_EQ(RenameModule("Attribute VB_Name = \"\xCB\xE8\xF1\xF2"
                           "1\"\r\n",
                           "\xCB\xE8\xF1\xF2"
                           "1",
                           "\xCB\xE8\xF1\xF2"
                           "2"),
              "Attribute VB_Name = \"\xCB\xE8\xF1\xF2"
              "2\"\r\n");
}

TEST(RenameModuleTest, ASourceOfAnotherNameIsRefused)
{
    EXPECT_THROW(RenameModule(kAttributes, "Sheet2", "Sheet3"), util::Error);
    EXPECT_THROW(RenameModule("", "Sheet1", "Sheet3"), util::Error);
    EXPECT_THROW(RenameModule("Attribute VB_Name = \"Sheet1", "Sheet1", "Sheet3"), util::Error);
    EXPECT_THROW(RenameModule("Attribute VB_Base = \"Sheet1\"\r\n", "Sheet1", "Sheet3"),
                 util::Error);
}

} // namespace
} // namespace orrery::vba
