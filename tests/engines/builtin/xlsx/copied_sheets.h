#pragma once

#include "engines/builtin/xlsx/workbook.h"
#include "util/error.h"
#include "util/scratch_folder.h"
#include "xlsx/built_book.h"
#include "xlsx/saved_package.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

/// A workbook whose sheet is copied twice, and what the three sheets have.
namespace orrery::xlsx {

using test::BuiltBook;
using test::SavedPackage;
using Texts = std::vector<std::string>;

inline constexpr const char* kModel = "xl/worksheets/sheet1.xml";
inline constexpr const char* kModelLinks = "xl/worksheets/_rels/sheet1.xml.rels";
/// A GUID with that last digit.
inline std::string Guid(char digit)
{
    return std::string("{ABCDEF01-0000-4000-8000-00000000000") + digit + "}";
}

class CopiedSheetsTest : public testing::Test {
protected:
    /// Saves the book with three months: the model and two copies.
    SavedPackage Save()
    {
        Workbook workbook(book.WriteTo(folder_));
        auto& model = *workbook.FindWorksheet("Model");
        model.SetName("January");
        model.CopyAfter(model);
        model.Next()->SetName("February");
        model.Next()->CopyAfter(*model.Next());
        model.Next()->Next()->SetName("March");
        workbook.SaveAs(folder_ / "saved.xlsx", book::AccessMode::NoChange);
        losses = workbook.Losses();
        return SavedPackage(folder_ / "saved.xlsx");
    }

    /// The parts of a kind that belong to the sheets of the three months, in their order.
    static Texts PartsOf(const SavedPackage& saved, const std::string& kind)
    {
        Texts parts;
        for (const char* month : {"January", "February", "March"}) {
            for (const auto& target : saved.Targets(saved.SheetPart(month))) {
                if (target.type.ends_with("/" + kind))
                    parts.push_back(target.target);
            }
        }
        return parts;
    }
    /// The one value that an XPath finds in each of the parts.
    static Texts EachOf(const SavedPackage& saved, const Texts& parts, const char* xpath)
    {
        Texts values;
        for (const auto& part : parts) {
            const auto found = saved.Values(part, xpath);
            EXPECT_THAT(found, testing::SizeIs(1)) << part << ' ' << xpath;
            values.insert(values.end(), found.begin(), found.end());
        }
        return values;
    }
    static Texts SheetsOf(const SavedPackage& saved)
    {
        return {saved.SheetPart("January"), saved.SheetPart("February"), saved.SheetPart("March")};
    }
    /// That the values are three, the model's first, and all different.
    static void ExpectOwn(const Texts& values, const std::string& model)
    {
        ASSERT_THAT(values, testing::SizeIs(3));
        EXPECT_EQ(values[0], model);
        EXPECT_THAT(std::set<std::string>(values.begin(), values.end()), testing::SizeIs(3));
    }

    BuiltBook book;
    std::vector<util::Error> losses; ///< of the last save

private:
    testing_support::ScratchFolder folder_;
};

} // namespace orrery::xlsx
