#include "engines/builtin/xls/look/page_reader.h"

#include "engines/builtin/xls/look/records/byte_cursor.h"
#include "engines/builtin/xls/records/unicode_string.h"
#include "util/unicode.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <vector>

namespace orrery::xls {
namespace {

constexpr double kLargestMargin = 49; // inches, [MS-XLS] 2.4.156

bool IsTrue(std::string_view data)
{
    return ReadU16(data, 0) != 0;
}

void SetMargin(double inches, double& margin)
{
    if (inches >= 0 && inches < kLargestMargin) // and no NaN
        margin = inches;
}

/// [MS-XLS] 2.4.257
void ReadSettings(std::string_view data, book::PageSetup& page)
{
    enum Flag : std::uint16_t {
        Across = 1,
        Upright = 2,
        NoPrinter = 4,
        NoTurn = 64,
        OwnFirst = 128
    };
    constexpr int kMostPages = 32767;
    ByteCursor cursor(data);
    const int paper = cursor.U16();
    const int scale = cursor.U16();
    const int first = cursor.I16();
    page.pagesWide = std::min<int>(cursor.U16(), kMostPages);
    page.pagesHigh = std::min<int>(cursor.U16(), kMostPages);
    const auto flags = cursor.U16();
    cursor.Skip(4);
    SetMargin(cursor.Double(), page.headerMargin);
    SetMargin(cursor.Double(), page.footerMargin);
    page.isOverThenDown = (flags & Across) != 0;
    if ((flags & OwnFirst) != 0)
        page.firstPageNumber = first;
    if ((flags & NoPrinter) != 0)
        return;
    page.paper = paper > 0 ? paper : 1;
    if (scale > 0)
        page.scale = std::clamp(scale, 10, 400);
    page.isLandscape = (flags & (Upright | NoTurn)) == 0;
}

/// The rows below, or the columns right of breaks. [MS-XLS] 2.4.142, 2.4.343
std::vector<std::int32_t> ReadBreaks(std::string_view data)
{
    std::vector<std::int32_t> breaks;
    ByteCursor cursor(data);
    for (std::size_t count = cursor.U16(); count > 0; --count) {
        if (const int place = cursor.U16(); place > 0)
            breaks.push_back(place + 1);
        cursor.Skip(4); // how far they go
    }
    std::sort(breaks.begin(), breaks.end());
    breaks.erase(std::unique(breaks.begin(), breaks.end()), breaks.end());
    return breaks;
}

std::string ReadPageText(const LookRecord& record)
{
    return record.data.empty() ? std::string() : util::FromUtf16(ReadContinuedText(record, 0));
}

/// The texts for first and even pages. [MS-XLS] 2.4.137
void ReadOtherTexts(std::string_view data, book::PageSetup& page)
{
    constexpr std::size_t kHead = 28; // of newer records, and of whose view it is
    enum Flag : std::uint16_t { Even = 1, First = 2, Scaled = 4 };
    const auto view = Slice(data, 12, 16);
    if (std::any_of(view.begin(), view.end(), [](char byte) { return byte != 0; }))
        return;
    ByteCursor cursor(data, kHead);
    const auto flags = cursor.U16();
    std::array<std::size_t, 4> sizes{};
    for (auto& size : sizes)
        size = cursor.U16();
    std::array<std::string, 4> texts;
    for (std::size_t i = 0; i < 4; ++i) {
        if (sizes[i] == 0)
            continue;
        auto text = ReadUnicodeString(data, cursor.Position());
        cursor.Skip(text.size);
        texts[i] = std::move(text.text);
    }
    page.scalesHeaders = (flags & Scaled) != 0;
    if ((flags & Even) != 0) {
        page.evenHeader = texts[0];
        page.evenFooter = texts[1];
    }
    if ((flags & First) != 0) {
        page.firstHeader = texts[2];
        page.firstFooter = texts[3];
    }
}

bool ReadMargin(const LookRecord& record, book::PageSetup& page)
{
    double* margin = nullptr;
    if (record.type == RecordType::LeftMargin)
        margin = &page.left;
    else if (record.type == RecordType::RightMargin)
        margin = &page.right;
    else if (record.type == RecordType::TopMargin)
        margin = &page.top;
    else if (record.type == RecordType::BottomMargin)
        margin = &page.bottom;
    else
        return false;
    SetMargin(ByteCursor(record.data).Double(), *margin);
    return true;
}

} // namespace

book::PageSetup DefaultPage()
{
    book::PageSetup page;
    page.left = page.right = 0.75;
    page.top = page.bottom = 1;
    page.headerMargin = page.footerMargin = 0.5;
    return page;
}

bool ReadPageRecord(const LookRecord& record, book::PageSetup& page)
{
    constexpr std::uint16_t kFitsPages = 0x0100;
    switch (record.type) {
    case RecordType::PageSettings:
        ReadSettings(record.data, page);
        return true;
    case RecordType::HorizontalCenter:
        page.centersHorizontally = IsTrue(record.data);
        return true;
    case RecordType::VerticalCenter:
        page.centersVertically = IsTrue(record.data);
        return true;
    case RecordType::PrintGrid:
        page.printsGridLines = IsTrue(record.data);
        return true;
    case RecordType::PrintHeadings:
        page.printsHeadings = IsTrue(record.data);
        return true;
    case RecordType::SheetProperties:
        page.fitsPages = (ReadU16(record.data, 0) & kFitsPages) != 0;
        return true;
    case RecordType::HorizontalPageBreaks:
        page.rowBreaks = ReadBreaks(record.data);
        return true;
    case RecordType::VerticalPageBreaks:
        page.columnBreaks = ReadBreaks(record.data);
        return true;
    case RecordType::Header:
        page.header = ReadPageText(record);
        return true;
    case RecordType::Footer:
        page.footer = ReadPageText(record);
        return true;
    case RecordType::HeaderFooter: {
        std::string joined;
        ReadOtherTexts(record.Whole(joined), page);
        return true;
    }
    default:
        return ReadMargin(record, page);
    }
}

} // namespace orrery::xls
