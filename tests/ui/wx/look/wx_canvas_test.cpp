#include "ui/wx/look/wx_canvas.h"

#include "ui/wx/look/dashes.h"

#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <wx/app.h>
#include <wx/image.h>
#include <wx/init.h>

namespace orrery::ui::wx {
namespace {

using namespace std::string_literals;
using enum look::PathStep::Kind;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr book::Color kRed{255, 0, 0};

look::Brush Solid(book::Color color)
{
    return {{book::FillPattern::Solid, color, {}, {}}, 1};
}

class WxCanvasTest : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        wxApp::SetInstance(new wxAppConsole);
        wxInitialize();
    }
    static void TearDownTestSuite() { wxUninitialize(); }

    /// What is painted on a white picture.
    template <typename Draw> static wxImage Painted(const Draw& draw)
    {
        wxImage image(40, 40, false);
        image.SetRGB(wxRect(0, 0, 40, 40), 255, 255, 255);
        {
            const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(image));
            PictureCache pictures;
            WxCanvas canvas(*context, pictures);
            draw(canvas);
        }
        return image;
    }
    static bool IsRed(const wxImage& image, int x, int y)
    {
        return image.GetRed(x, y) == 255 && image.GetGreen(x, y) == 0 && image.GetBlue(x, y) == 0;
    }
    static bool IsWhite(const wxImage& image, int x, int y)
    {
        return image.GetRed(x, y) == 255 && image.GetGreen(x, y) == 255;
    }
};

TEST_F(WxCanvasTest, NestsClipsAndTransforms)
{
    const wxImage image = Painted([](look::Canvas& canvas) {
        canvas.Clip({0, 0, 20, 40});
        canvas.Place({10, 10}, 2);
        canvas.FillBox({0, 0, 10, 5}, Solid(kRed)); // 10 to 30, cut at 20; 10 to 20
        canvas.Restore();
        canvas.Restore();
        canvas.FillBox({30, 30, 5, 5}, Solid(kRed));
    });
    EXPECT_TRUE(IsRed(image, 10, 10));
    EXPECT_TRUE(IsRed(image, 19, 19));
    EXPECT_TRUE(IsWhite(image, 20, 15));
    EXPECT_TRUE(IsWhite(image, 15, 20));
    EXPECT_TRUE(IsRed(image, 32, 32));
}

TEST_F(WxCanvasTest, GoesOnAfterAbsurdNumbers)
{
    const wxImage image = Painted([](look::Canvas& canvas) {
        const look::Pen pen{kRed, kNan, {kNan, kInfinity}, kNan};
        canvas.FillBox({kNan, 0, kInfinity, 1e300}, Solid(kRed));
        canvas.DrawLine({kNan, 0}, {1e300, kInfinity}, pen);
        canvas.DrawPath({{Move, {kNan, 0}, {}, {}}, {Curve, {1, 1}, {kInfinity, 0}, {0, kNan}}},
                        Solid(book::kWhite), look::Pen{book::kWhite, 1, {1e-9}, 1});
        canvas.DrawText({kNan, 1e300}, "text", {}, kNan);
        canvas.Rotate({kNan, kNan}, kInfinity);
        canvas.Place({kInfinity, 0}, kNan);
        canvas.Clip({0, 0, 1e300, 1e300});
        canvas.FillBox({5, 5, 10, 10}, Solid(kRed)); // and nothing is restored
    });
    EXPECT_TRUE(IsRed(image, 10, 10));
}

TEST_F(WxCanvasTest, FillsWhatBeginsFarOutside)
{
    const wxImage image = Painted([](look::Canvas& canvas) {
        canvas.Place({-20e6, -20e6}, 1);
        canvas.FillBox({0, 20e6 + 10, 40e6, 5}, Solid(kRed));
        canvas.DrawLine({20e6 + 30.5, 0}, {20e6 + 30.5, 40e6}, {kRed, 1, {}, 1});
        canvas.Restore();
    });
    EXPECT_TRUE(IsRed(image, 0, 12));
    EXPECT_TRUE(IsRed(image, 39, 12));
    EXPECT_TRUE(IsRed(image, 30, 39));
    EXPECT_TRUE(IsWhite(image, 5, 20));
}

TEST_F(WxCanvasTest, RefusesDamagedAndUnknownPictures)
{
    Painted([](look::Canvas& canvas) {
        const std::string signature = "\x89PNG\r\n\x1A\n"s;
        for (const std::string& bytes : {""s, "text"s, signature, "GIF89a\x05\0\x05\0\x80\0\0"s,
                                         "BM"s, "\xD7\xCD\xC6\x9A"s + std::string(100, '\0')})
            EXPECT_FALSE(canvas.DrawPicture({0, 0, 10, 10}, {bytes, "png", {0, 0, 1, 1}}));
    });
}

TEST(DashedPath, CoversWholeDashesAndGoesAroundCorners)
{
    const look::Path corner{{Move, {0, 0}, {}, {}}, {Line, {5, 0}, {}, {}}, {Line, {5, 5}, {}, {}}};
    const look::Path dashed = DashedPath(corner, {3, 1}, {-10, -10, 100, 100});
    ASSERT_EQ(dashed.size(), 7U); // 0 to 3; 4 to 7, which has the corner; 8 to 10
    EXPECT_EQ(dashed[1].point, (look::Point{3, 0}));
    EXPECT_EQ(dashed[2].point, (look::Point{4, 0}));
    EXPECT_EQ(dashed[3].point, (look::Point{5, 0}));
    EXPECT_EQ(dashed[3].kind, Line);
    EXPECT_EQ(dashed[4].point, (look::Point{5, 2}));
}

TEST(DashedPath, MakesOnlyWhatIsSeen)
{
    const look::Path line{{Move, {0.5, 0}, {}, {}}, {Line, {0.5, 20e6}, {}, {}}};
    const look::Path dashed = DashedPath(line, {1, 1}, {0, 10e6, 40, 40});
    EXPECT_GE(dashed.size(), 40U);
    EXPECT_LE(dashed.size(), 44U);
    EXPECT_EQ(dashed[0].point, (look::Point{0.5, 10e6}));
}

} // namespace
} // namespace orrery::ui::wx
