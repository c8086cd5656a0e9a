// What the switches do to a document, as LibreOffice itself tells it.
#include "engines/libreoffice/plugin/workbook.h"

#include "office.h"
#include "places/places.h"
#include "util/scratch_folder.h"

#include <com/sun/star/awt/XWindow2.hpp>
#include <com/sun/star/container/XEnumeration.hpp>
#include <com/sun/star/container/XEnumerationAccess.hpp>
#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/frame/XDesktop.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/frame/XModel.hpp>

#include <gtest/gtest.h>

#include <filesystem>
#include <vector>

namespace orrery::libreoffice {
namespace {

using css::uno::UNO_QUERY_THROW;

class OfficeSwitchesTest : public testing::Test {
protected:
    using Document = Reference<css::frame::XModel>;

    /// The only document besides one that the test opens to find it.
    Document Found()
    {
        if (!finder_.is())
            finder_ = office_.Load(template_, LoadMode::AsTemplate, {});
        const auto found = office_.Call([&] { return AllBut(Document(finder_, UNO_QUERY_THROW)); });
        EXPECT_EQ(found.size(), 1U);
        return found.at(0);
    }
    /// Whether its window does not follow what is written.
    bool IsLocked()
    {
        const auto document = Found();
        return office_.Call([&] { return document->hasControllersLocked() != sal_False; });
    }
    bool IsVisible()
    {
        const auto window = WindowOf(Found());
        return office_.Call([&] { return window->isVisible() != sal_False; });
    }
    /// Whether its window takes the user's input.
    bool IsEnabled()
    {
        const auto window = WindowOf(Found());
        return office_.Call([&] { return window->isEnabled() != sal_False; });
    }

    const std::filesystem::path template_ =
        places::SourceFolder() / "tests/engines/builtin/xlsx/data/contract.xlsx";
    testing_support::ScratchFolder folder_;
    Office office_{test::Options()};

private:
    static std::vector<Document> AllBut(const Document& finder)
    {
        const Reference<css::frame::XDesktop> desktop(
            finder->getCurrentController()->getFrame()->getCreator(), UNO_QUERY_THROW);
        const auto all = desktop->getComponents()->createEnumeration();
        std::vector<Document> others;
        while (all->hasMoreElements()) {
            const Document document(all->nextElement(), css::uno::UNO_QUERY);
            if (document.is() && document != finder)
                others.push_back(document);
        }
        return others;
    }
    Reference<css::awt::XWindow2> WindowOf(const Document& document)
    {
        return office_.Call([&] {
            return Reference<css::awt::XWindow2>(
                document->getCurrentController()->getFrame()->getContainerWindow(),
                UNO_QUERY_THROW);
        });
    }

    Reference<css::lang::XComponent> finder_;
};

constexpr Switches kHidden{false, false, false}; // as during a run

TEST_F(OfficeSwitchesTest, WithoutScreenUpdatingTheWindowDoesNotFollow)
{
    Workbook workbook(office_, template_, Switches{}, {});
    EXPECT_FALSE(IsLocked());
    workbook.Show(kHidden);
    workbook.Show(kHidden); // does not count twice
    EXPECT_TRUE(IsLocked());
    workbook.Show(Switches{});
    EXPECT_FALSE(IsLocked());
}

TEST_F(OfficeSwitchesTest, AWorkbookFollowsTheSwitchesFromItsOpeningOn)
{
    const Workbook workbook(office_, template_, kHidden, {});
    EXPECT_TRUE(IsLocked());
}

TEST_F(OfficeSwitchesTest, TheUsersWindowIsVisibleAndTakesInputAsTheSwitchesSay)
{
    Workbook workbook(office_, template_, kHidden, {});
    workbook.Show({true, true, true});
    EXPECT_FALSE(workbook.IsSeen()) << "it is not saved";
    workbook.Show(kHidden);
    workbook.SaveAs(folder_ / "saved.xlsx", book::AccessMode::NoChange);
    workbook.Show({true, false, true});
    EXPECT_TRUE(workbook.IsSeen());
    EXPECT_TRUE(IsVisible());
    EXPECT_FALSE(IsEnabled());
    EXPECT_FALSE(IsLocked());
    workbook.Show({true, true, true});
    EXPECT_TRUE(IsEnabled());
    workbook.Show({false, true, true});
    EXPECT_FALSE(workbook.IsSeen());
    EXPECT_FALSE(IsVisible());
}

} // namespace
} // namespace orrery::libreoffice
