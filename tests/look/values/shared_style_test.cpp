#include "look/values/shared_style.h"

#include <gtest/gtest.h>

namespace orrery::look {
namespace {

book::CellStyle Large()
{
    book::CellStyle style;
    style.font.size = 40;
    return style;
}

TEST(SharedStyleTest, IsThatOfACellWithoutOne)
{
    EXPECT_EQ(*SharedStyle(), book::CellStyle());
}

TEST(SharedStyleTest, CopiesAreOneStyle)
{
    const SharedStyle style(Large());
    const SharedStyle copy = style; // NOLINT(performance-unnecessary-copy-initialization)
    EXPECT_EQ(copy->font.size, 40);
    EXPECT_EQ(&*copy, &*style);
}

TEST(SharedStyleTest, AnEditedOneLeavesTheOthers)
{
    const SharedStyle style(Large());
    SharedStyle edited = style;
    edited.Edit().font.bold = true;
    EXPECT_TRUE(edited->font.bold);
    EXPECT_EQ(edited->font.size, 40);
    EXPECT_FALSE(style->font.bold);
}

TEST(SharedStyleTest, AnEditedOneStaysItsOwn)
{
    SharedStyle style;
    style.Edit().font.bold = true;
    const book::CellStyle* const own = &*style;
    style.Edit().font.italic = true;
    EXPECT_EQ(&*style, own);
    EXPECT_TRUE(style->font.bold && style->font.italic);
    EXPECT_FALSE(SharedStyle()->font.bold);
}

} // namespace
} // namespace orrery::look
