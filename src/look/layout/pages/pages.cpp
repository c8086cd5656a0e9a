#include "look/layout/pages/pages.h"

#include "look/layout/pages/page_breaks.h"
#include "look/layout/pages/paper.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace orrery::look {
namespace {

using book::CellRange;

/// The paper without its margins.
struct PrintableArea {
    PaperSize paper;
    Box box;
};

double MarginInPixels(double inches)
{
    return inches > 0 ? std::min(inches, 100.0) * kPixelsPerInch : 0; // NaN, too, is 0
}

PrintableArea PrintableAreaOf(const book::PageSetup& setup)
{
    constexpr double kLeast = 10; // margins of a damaged file may leave nothing
    const PaperSize paper = PaperOf(setup);
    Box box{MarginInPixels(setup.left), MarginInPixels(setup.top), 0, 0};
    box.width = std::max(paper.width - box.x - MarginInPixels(setup.right), kLeast);
    box.height = std::max(paper.height - box.y - MarginInPixels(setup.bottom), kLeast);
    return {paper, box};
}

/// One print area, divided into pages.
struct DividedArea {
    std::vector<PageSpan> columns;
    std::vector<PageSpan> rows;
};

class PageMaker {
public:
    PageMaker(const book::SheetLook& sheet, const Layout& layout, const TextMeasure& measure,
              const PageOptions& options)
        : setup_(sheet.page), headerPictures_(sheet.headerPictures), layout_(layout),
          measure_(measure), options_(options), area_(PrintableAreaOf(sheet.page)),
          isRightToLeft_(sheet.view.isRightToLeft), fields_(options.fields)
    {
        if (fields_.sheetName.empty())
            fields_.sheetName = sheet.name;
    }

    std::vector<PageBox> Make()
    {
        const std::vector<CellRange> areas = PrintedRanges();
        scale_ = setup_.fitsPages ? FittingScale(areas)
                                  : std::clamp(setup_.scale, kSmallest, kLargest) / 100.0;
        for (const CellRange& area : areas)
            AddPages(Divide(area, scale_, setup_.fitsPages));
        AddHeaders();
        return std::move(pages_);
    }

private:
    static constexpr std::int32_t kSmallest = 10; // percent
    static constexpr std::int32_t kLargest = 400;

    std::vector<CellRange> PrintedRanges() const
    {
        constexpr std::int64_t kMostRowsAndColumns = 4'000'000; // of all areas
        std::int64_t lines = 0;
        std::vector<CellRange> ranges;
        const CellRange& all = layout_.range;
        for (const CellRange& area : setup_.printAreas) {
            if (lines > kMostRowsAndColumns || ranges.size() >= options_.mostPages)
                break; // more than Excel has pages for
            const CellRange common{{std::max(area.first.row, all.first.row),
                                    std::max(area.first.column, all.first.column)},
                                   {std::min(area.last.row, all.last.row),
                                    std::min(area.last.column, all.last.column)}};
            if (common.first.row > common.last.row || common.first.column > common.last.column)
                continue;
            ranges.push_back(common);
            lines += common.last.row - common.first.row + common.last.column - common.first.column;
        }
        if (ranges.empty())
            ranges.push_back(all);
        return ranges;
    }

    /// Titles that are not laid out count as absent.
    std::optional<CellRange> TitleRows() const
    {
        const auto& titles = setup_.titleRows;
        const bool isThere = titles && titles->first.row >= layout_.range.first.row &&
                             titles->first.row <= titles->last.row &&
                             titles->last.row <= layout_.range.last.row;
        return isThere ? titles : std::nullopt;
    }

    std::optional<CellRange> TitleColumns() const
    {
        const auto& titles = setup_.titleColumns;
        const bool isThere = titles && titles->first.column >= layout_.range.first.column &&
                             titles->first.column <= titles->last.column &&
                             titles->last.column <= layout_.range.last.column;
        return isThere ? titles : std::nullopt;
    }

    Box RowsBox(std::int32_t first, std::int32_t last) const
    {
        return layout_.BoxOf(
            {{first, layout_.range.first.column}, {last, layout_.range.last.column}});
    }
    Box ColumnsBox(std::int32_t first, std::int32_t last) const
    {
        return layout_.BoxOf({{layout_.range.first.row, first}, {layout_.range.last.row, last}});
    }

    PageDivision Columns(const CellRange& area, bool ignoresBreaks) const
    {
        PageDivision division;
        division.first = area.first.column;
        for (std::int32_t i = area.first.column; i <= area.last.column; ++i)
            division.sizes.push_back(ColumnsBox(i, i).width);
        if (!ignoresBreaks)
            division.breaks = setup_.columnBreaks;
        if (const auto titles = TitleColumns()) {
            division.lastTitle = titles->last.column;
            division.titleSize = ColumnsBox(titles->first.column, titles->last.column).width;
        }
        return division;
    }

    PageDivision Rows(const CellRange& area, bool ignoresBreaks) const
    {
        PageDivision division;
        division.first = area.first.row;
        for (std::int32_t i = area.first.row; i <= area.last.row; ++i)
            division.sizes.push_back(RowsBox(i, i).height);
        if (!ignoresBreaks)
            division.breaks = setup_.rowBreaks;
        if (const auto titles = TitleRows()) {
            division.lastTitle = titles->last.row;
            division.titleSize = RowsBox(titles->first.row, titles->last.row).height;
        }
        return division;
    }

    DividedArea Divide(const CellRange& area, double scale, bool ignoresBreaks) const
    {
        return {DivideIntoPages(Columns(area, ignoresBreaks), area_.box.width / scale,
                                options_.mostPages),
                DivideIntoPages(Rows(area, ignoresBreaks), area_.box.height / scale,
                                options_.mostPages)};
    }

    /// The largest whole percentage at which the pages are as few as asked for, as Excel does.
    double FittingScale(const std::vector<CellRange>& areas) const
    {
        std::int32_t fits = kSmallest;
        std::int32_t tooLarge = 101;
        while (tooLarge - fits > 1) {
            const std::int32_t middle = (fits + tooLarge) / 2;
            (Fits(areas, middle / 100.0) ? fits : tooLarge) = middle;
        }
        return fits / 100.0;
    }

    bool Fits(const std::vector<CellRange>& areas, double scale) const
    {
        const auto isFew = [](std::size_t count, std::int32_t wanted) {
            return wanted <= 0 || count <= static_cast<std::size_t>(wanted);
        };
        return std::all_of(areas.begin(), areas.end(), [&](const CellRange& area) {
            const DividedArea divided = Divide(area, scale, true);
            return isFew(divided.columns.size(), setup_.pagesWide) &&
                   isFew(divided.rows.size(), setup_.pagesHigh);
        });
    }

    void AddPages(const DividedArea& area)
    {
        const std::size_t across = area.columns.size();
        const std::size_t down = area.rows.size();
        for (std::size_t i = 0; i < across * down && pages_.size() < options_.mostPages; ++i) {
            const bool isOver = setup_.isOverThenDown;
            AddPage(area.columns[isOver ? i % across : i / down],
                    area.rows[isOver ? i / across : i % down]);
        }
    }

    void AddPage(PageSpan columns, PageSpan rows)
    {
        PageBox page;
        page.scale = scale_;
        page.paperWidth = area_.paper.width;
        page.paperHeight = area_.paper.height;
        page.area = layout_.BoxOf({{rows.first, columns.first}, {rows.last, columns.last}});
        const auto titleRows = TitleRows();
        if (titleRows && rows.first > titleRows->last.row) {
            page.titleRows = RowsBox(titleRows->first.row, titleRows->last.row);
            page.titleRows.x = page.area.x;
            page.titleRows.width = page.area.width;
        }
        const auto titleColumns = TitleColumns();
        if (titleColumns && columns.first > titleColumns->last.column) {
            page.titleColumns = ColumnsBox(titleColumns->first.column, titleColumns->last.column);
            page.titleColumns.y = page.area.y;
            page.titleColumns.height = page.area.height;
        }
        Place(page);
        pages_.push_back(std::move(page));
    }

    void Place(PageBox& page) const
    {
        const double width = (page.titleColumns.width + page.area.width) * scale_;
        const double height = (page.titleRows.height + page.area.height) * scale_;
        double x = area_.box.x;
        double y = area_.box.y;
        if (setup_.centersHorizontally)
            x += (area_.box.width - width) / 2;
        else if (isRightToLeft_)
            x += area_.box.width - width;
        if (setup_.centersVertically)
            y += (area_.box.height - height) / 2;
        page.place = {x + page.titleColumns.width * scale_, y + page.titleRows.height * scale_};
    }

    void AddHeaders()
    {
        if (fields_.pages == 0)
            fields_.pages = static_cast<std::int32_t>(pages_.size());
        const std::int32_t first =
            setup_.firstPageNumber == 1 ? fields_.page : setup_.firstPageNumber;
        for (std::size_t i = 0; i < pages_.size(); ++i) {
            fields_.page = first + static_cast<std::int32_t>(i);
            AddHeader(HeaderOf(i, setup_.header, setup_.firstHeader, setup_.evenHeader), false,
                      pages_[i]);
            AddHeader(HeaderOf(i, setup_.footer, setup_.firstFooter, setup_.evenFooter), true,
                      pages_[i]);
        }
    }

    struct ChosenHeader {
        book::HeaderPages pages;
        const std::string& text;
    };
    ChosenHeader HeaderOf(std::size_t page, const std::string& usual,
                          const std::optional<std::string>& first,
                          const std::optional<std::string>& even) const
    {
        if (page == 0 && first)
            return {book::HeaderPages::First, *first};
        if (fields_.page % 2 == 0 && even)
            return {book::HeaderPages::Even, *even};
        return {book::HeaderPages::Usual, usual};
    }

    void AddHeader(const ChosenHeader& header, bool isFooter, PageBox& page) const
    {
        if (header.text.empty())
            return;
        HeaderPlace place{
            area_.box.x, area_.box.Right(), MarginInPixels(setup_.headerMargin), isFooter, {}};
        for (const book::HeaderPicture& picture : headerPictures_) {
            if (picture.slot.pages == header.pages && picture.slot.isFooter == isFooter)
                place.pictures.at(static_cast<std::size_t>(picture.slot.part)) = &picture;
        }
        if (isFooter)
            place.y = area_.paper.height - MarginInPixels(setup_.footerMargin);
        if (setup_.scalesHeaders)
            place.scale = scale_;
        PlaceHeader(ParseHeader(header.text, options_.font, fields_), place, measure_, page);
    }

    const book::PageSetup& setup_;
    const std::vector<book::HeaderPicture>& headerPictures_;
    const Layout& layout_;
    const TextMeasure& measure_;
    const PageOptions& options_;
    PrintableArea area_;
    bool isRightToLeft_;
    PageFields fields_;
    double scale_ = 1;
    std::vector<PageBox> pages_;
};

} // namespace

std::vector<PageBox> LayOutPages(const book::SheetLook& sheet, const Layout& layout,
                                 const TextMeasure& measure, const PageOptions& options)
{
    return PageMaker(sheet, layout, measure, options).Make();
}

} // namespace orrery::look
