#include "engines/engine_choice.h"

#include "book/error.h"
#include "engines/excel/application.h"
#include "engines/libreoffice/libreoffice.h"
#include "util/error.h"
#include "util/error_text.h"

#include <gtest/gtest.h>

namespace orrery::engines {
namespace {

struct NameCase {
    const char* name;
    std::string_view text;
    std::optional<EngineChoice> expected;
};

class ParseEngineChoiceTest : public testing::TestWithParam<NameCase> {};

TEST_P(ParseEngineChoiceTest, KnowsTheFourNames)
{
    EXPECT_EQ(ParseEngineChoice(GetParam().text), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Names, ParseEngineChoiceTest,
    testing::Values(NameCase{"Auto", "auto", EngineChoice::Auto},
                    NameCase{"Excel", "Excel", EngineChoice::Excel},
                    NameCase{"BuiltIn", "BUILTIN", EngineChoice::BuiltIn},
                    NameCase{"LibreOffice", "libreoffice", EngineChoice::LibreOffice},
                    NameCase{"Empty", "", std::nullopt}, NameCase{"Other", "abacus", std::nullopt}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(EngineChoiceTest, NamesReadBackAsTheirChoice)
{
    for (const EngineChoice choice : {EngineChoice::Auto, EngineChoice::Excel,
                                      EngineChoice::BuiltIn, EngineChoice::LibreOffice})
        EXPECT_EQ(ParseEngineChoice(EngineName(choice)), choice);
}

TEST(EngineChoiceTest, AutoIsExcelIfItIsInstalledElseBuiltIn)
{
    EXPECT_EQ(ResolveEngine(EngineChoice::Auto),
              excel::IsInstalled() ? EngineChoice::Excel : EngineChoice::BuiltIn);
    EXPECT_EQ(ResolveEngine(EngineChoice::BuiltIn), EngineChoice::BuiltIn);
}

TEST(EngineChoiceTest, AMissingEngineSuggestsTheBuiltInOne)
{
    for (const EngineChoice choice : {EngineChoice::Excel, EngineChoice::LibreOffice}) {
        if (choice == EngineChoice::Excel ? excel::IsInstalled() : libreoffice::IsInstalled())
            continue; // it is installed
        try {
            CreateApplication(choice, {});
            FAIL() << "nothing was thrown";
        }
        catch (const Error& error) {
            EXPECT_EQ(error.Kind(), book::ErrorKind::EngineMissing);
            EXPECT_EQ(error.Subject(), EngineName(choice));
            EXPECT_NE(util::ErrorText(error).find("\"builtin\""), std::string::npos);
        }
    }
}

TEST(EngineChoiceTest, PdfFilesOfOthersNeedLibreOfficeOrExcel)
{
    InstalledEngines installed;
    const bool hasOffice = libreoffice::IsInstalled() || excel::IsInstalled();
    EXPECT_EQ(installed.CanPrintPdf(book::PdfBy::Office), hasOffice);
    if (hasOffice)
        return; // other tests cover PDF files with either
    try {
        installed.StartPdfPrinter(book::PdfBy::Office, nullptr);
        FAIL() << "nothing was thrown";
    }
    catch (const Error& error) {
        EXPECT_EQ(error.Kind(), book::ErrorKind::PdfNotAvailable);
        EXPECT_EQ(error.Subject(), "");
    }
}

TEST(EngineChoiceTest, PdfFilesOfItsOwnNeedTheLibraryBesideTheProgram)
{
    InstalledEngines installed;
    EXPECT_FALSE(installed.CanPrintPdf(book::PdfBy::BuiltIn)); // no library is beside this test
    EXPECT_EQ(installed.CanPrintPdf(book::PdfBy::Any), installed.CanPrintPdf(book::PdfBy::Office));
    try {
        installed.StartPdfPrinter(book::PdfBy::BuiltIn, nullptr);
        FAIL() << "nothing was thrown";
    }
    catch (const Error& error) {
        EXPECT_EQ(error.Kind(), book::ErrorKind::PdfNotAvailable);
        EXPECT_EQ(error.Subject(), "builtin");
    }
}

TEST(EngineChoiceTest, TheBuiltInApplicationStartsInvisible)
{
    EXPECT_FALSE(CreateApplication(EngineChoice::BuiltIn, {})->Visible());
}

} // namespace
} // namespace orrery::engines
