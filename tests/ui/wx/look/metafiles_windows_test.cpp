#include "ui/wx/look/wx_canvas.h"

#include <gtest/gtest.h>
#include <initializer_list>
#include <memory>
#include <string>
#include <wx/app.h>
#include <wx/image.h>
#include <wx/init.h>

namespace orrery::ui::wx {
namespace {

constexpr unsigned kWidth = 80; // pixels of the pictures, which are blue with a red left half
constexpr unsigned kHeight = 40;

void Append16(std::string& bytes, std::initializer_list<unsigned> numbers)
{
    for (const unsigned number : numbers)
        bytes += {static_cast<char>(number & 0xFFU), static_cast<char>(number >> 8U & 0xFFU)};
}

void Append32(std::string& bytes, std::initializer_list<unsigned> numbers)
{
    for (const unsigned number : numbers)
        Append16(bytes, {number & 0xFFFFU, number >> 16U});
}

/// [MS-EMF] 2.3: a header, a blue brush, no pen, a rectangle, a red one, the end.
std::string MadeEmf()
{
    constexpr unsigned kMillimeters = 2117; // hundredths of them, 80 pixels at 96 dpi
    std::string records;
    Append32(records, {39, 24, 1, 0, 0x00FF0000, 0}); // create a blue brush
    Append32(records, {39, 24, 2, 0, 0x000000FF, 0}); // create a red brush
    Append32(records, {37, 12, 0x80000008});          // no pen
    Append32(records, {37, 12, 1});
    Append32(records, {43, 24, 0, 0, kWidth, kHeight});
    Append32(records, {37, 12, 2});
    Append32(records, {43, 24, 0, 0, kWidth / 2, kHeight});
    Append32(records, {14, 20, 0, 16, 20});
    std::string file;
    Append32(file, {1, 88, 0, 0, kWidth - 1, kHeight - 1, 0, 0, kMillimeters, kMillimeters / 2});
    Append32(file, {0x464D4520, 0x10000, static_cast<unsigned>(88 + records.size()), 9});
    Append16(file, {3, 0});
    Append32(file, {0, 0, 0, 1920, 1080, 508, 286}); // the device: pixels and millimetres
    return file + records;
}

/// [MS-WMF] 2.3: the same with a header of its place.
std::string MadeWmf()
{
    std::string records;
    Append32(records, {4});
    Append16(records, {0x0103, 8}); // anisotropic coordinates
    Append32(records, {5});
    Append16(records, {0x020B, 0, 0}); // from 0, 0
    Append32(records, {5});
    Append16(records, {0x020C, kHeight, kWidth}); // to 80, 40
    Append32(records, {7});
    Append16(records, {0x02FC, 0, 0, 0x00FF, 0}); // create a blue brush
    Append32(records, {7});
    Append16(records, {0x02FC, 0, 0x00FF, 0, 0}); // create a red brush
    Append32(records, {8});
    Append16(records, {0x02FA, 5, 0, 0, 0, 0}); // create no pen
    for (const unsigned object : {2U, 0U, 1U}) {
        Append32(records, {4});
        Append16(records, {0x012D, object}); // select it
        if (object == 2)
            continue;
        Append32(records, {7}); // a rectangle
        Append16(records, {0x041B, kHeight, object == 0 ? kWidth : kWidth / 2, 0, 0});
    }
    Append32(records, {3});
    Append16(records, {0});
    std::string header;
    Append32(header, {0x9AC6CDD7});
    Append16(header, {0, 0, 0, kWidth, kHeight, 96, 0, 0});
    unsigned checksum = 0;
    for (std::size_t at = 0; at < header.size(); at += 2)
        checksum ^= static_cast<unsigned char>(header[at]) |
                    static_cast<unsigned>(static_cast<unsigned char>(header[at + 1])) << 8U;
    Append16(header, {checksum, 1, 9, 0x0300});
    Append32(header, {static_cast<unsigned>(9 + records.size() / 2)});
    Append16(header, {3});
    Append32(header, {8});
    Append16(header, {0});
    return header + records;
}

class MetafileTest : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        wxApp::SetInstance(new wxAppConsole);
        wxInitialize();
    }
    static void TearDownTestSuite() { wxUninitialize(); }

    /// The picture in the middle of a white page.
    static void ExpectRedAndBlue(const std::string& bytes)
    {
        wxImage image(120, 60, false);
        image.SetRGB(wxRect(0, 0, 120, 60), 255, 255, 255);
        {
            const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(image));
            PictureCache pictures;
            WxCanvas canvas(*context, pictures);
            EXPECT_TRUE(canvas.DrawPicture({20, 10, kWidth, kHeight}, {bytes, "", {0, 0, 1, 1}}));
        }
        const auto color = [&image](int x, int y) {
            return image.GetRed(x, y) << 16 | image.GetGreen(x, y) << 8 | image.GetBlue(x, y);
        };
        constexpr int kRed = 0xFF0000;
        constexpr int kBlue = 0x0000FF;
        constexpr int kWhite = 0xFFFFFF;
        EXPECT_EQ(color(22, 12), kRed);
        EXPECT_EQ(color(57, 47), kRed);
        EXPECT_EQ(color(63, 12), kBlue);
        EXPECT_EQ(color(97, 47), kBlue);
        EXPECT_EQ(color(103, 30), kWhite);
        EXPECT_EQ(color(16, 30), kWhite);
        EXPECT_EQ(color(40, 53), kWhite);
    }
};

TEST_F(MetafileTest, EnhancedOnesAreDrawn)
{
    ExpectRedAndBlue(MadeEmf());
}

TEST_F(MetafileTest, OldOnesAreDrawn)
{
    ExpectRedAndBlue(MadeWmf());
}

TEST_F(MetafileTest, DamagedOnesAreNot)
{
    for (const std::string& whole : {MadeEmf(), MadeWmf()}) {
        wxImage image(20, 20, false);
        const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(image));
        PictureCache pictures;
        WxCanvas canvas(*context, pictures);
        const std::string cut = whole.substr(0, 30);
        EXPECT_FALSE(canvas.DrawPicture({0, 0, 20, 20}, {cut, "", {0, 0, 1, 1}}));
    }
}

} // namespace
} // namespace orrery::ui::wx
