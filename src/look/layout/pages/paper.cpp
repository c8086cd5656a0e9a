#include "look/layout/pages/paper.h"

#include "look/values/geometry.h"

#include <algorithm>
#include <array>
#include <utility>

namespace orrery::look {
namespace {

constexpr double kMillimeter = kPixelsPerInch / 25.4;

struct Paper {
    std::int32_t number;
    double width;
    double height;
    double unit; ///< pixels
};

constexpr Paper Inches(std::int32_t number, double width, double height)
{
    return {number, width, height, kPixelsPerInch};
}
constexpr Paper Millimeters(std::int32_t number, double width, double height)
{
    return {number, width, height, kMillimeter};
}

// Rising.
constexpr auto kPapers = std::to_array<Paper>({
    Inches(1, 8.5, 11),                                                             // Letter
    Inches(2, 8.5, 11),        Inches(3, 11, 17),                                   // Tabloid
    Inches(4, 17, 11),                                                              // Ledger
    Inches(5, 8.5, 14),                                                             // Legal
    Inches(6, 5.5, 8.5),       Inches(7, 7.25, 10.5),     Millimeters(8, 297, 420), // A3
    Millimeters(9, 210, 297),                                                       // A4
    Millimeters(10, 210, 297), Millimeters(11, 148, 210),                           // A5
    Millimeters(12, 250, 353),                                                      // B4
    Millimeters(13, 176, 250),                                                      // B5
    Inches(14, 8.5, 13),       Millimeters(15, 215, 275), Inches(16, 10, 14),
    Inches(17, 11, 17),        Inches(18, 8.5, 11),       Inches(19, 3.875, 8.875), // envelopes
    Inches(20, 4.125, 9.5),    Inches(21, 4.5, 10.375),   Inches(22, 4.75, 11),
    Inches(23, 5, 11.5),       Inches(24, 17, 22),        Inches(25, 22, 34),
    Inches(26, 34, 44),        Millimeters(27, 110, 220), // envelopes
    Millimeters(28, 162, 229), Millimeters(29, 324, 458), Millimeters(30, 229, 324),
    Millimeters(31, 114, 162), Millimeters(32, 114, 229), Millimeters(33, 250, 353),
    Millimeters(34, 176, 250), Millimeters(35, 176, 125), Millimeters(36, 110, 230),
    Inches(37, 3.875, 7.5),    Inches(38, 3.625, 6.5),    Inches(39, 14.875, 11), // fanfold
    Inches(40, 8.5, 12),       Inches(41, 8.5, 13),       Millimeters(42, 250, 353),
    Millimeters(43, 200, 148), Inches(44, 9, 11),         Inches(45, 10, 11),
    Inches(46, 15, 11),        Millimeters(47, 220, 220), Inches(50, 9.275, 12),
    Inches(51, 9.275, 15),     Inches(52, 11.69, 18),     Millimeters(53, 236, 322),
    Inches(54, 8.275, 11),     Millimeters(55, 210, 297), Inches(56, 9.275, 12),
    Millimeters(57, 227, 356), Millimeters(58, 305, 487), Inches(59, 8.5, 12.69),
    Millimeters(60, 210, 330), Millimeters(61, 148, 210), Millimeters(62, 182, 257),
    Millimeters(63, 322, 445), Millimeters(64, 174, 235), Millimeters(65, 201, 276),
    Millimeters(66, 420, 594), // A2
    Millimeters(67, 297, 420), Millimeters(68, 322, 445), Millimeters(69, 200, 148),
    Millimeters(70, 105, 148), // A6
    Inches(75, 11, 8.5),       Millimeters(76, 420, 297), Millimeters(77, 297, 210),
    Millimeters(78, 210, 148), Millimeters(79, 364, 257), Millimeters(80, 257, 182),
    Millimeters(81, 148, 100), Millimeters(82, 148, 200), Millimeters(83, 148, 105),
    Millimeters(88, 128, 182), Millimeters(89, 182, 128), Inches(90, 12, 11),
});

} // namespace

PaperSize PaperOfNumber(std::int32_t number)
{
    const auto found = std::lower_bound(
        kPapers.begin(), kPapers.end(), number,
        [](const Paper& paper, std::int32_t wanted) { return paper.number < wanted; });
    const Paper& paper =
        found != kPapers.end() && found->number == number ? *found : kPapers.front();
    return {paper.width * paper.unit, paper.height * paper.unit};
}

PaperSize PaperOf(const book::PageSetup& setup)
{
    PaperSize paper = PaperOfNumber(setup.paper);
    const auto isSensible = [](std::optional<double> inches) {
        return inches && *inches >= 0.5 && *inches <= 200;
    };
    if (isSensible(setup.paperWidth) && isSensible(setup.paperHeight))
        paper = {*setup.paperWidth * kPixelsPerInch, *setup.paperHeight * kPixelsPerInch};
    if (setup.isLandscape)
        std::swap(paper.width, paper.height);
    return paper;
}

} // namespace orrery::look
