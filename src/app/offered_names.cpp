#include "app/offered_names.h"

#include "util/file_read.h"
#include "util/paths.h"
#include "util/text.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <set>
#include <string_view>
#include <utility>

namespace orrery::app {
namespace {

constexpr const char* kFileName = "languages.ini";

/// Offers the lists of one kind behind the user's own.
template <std::size_t NamesPerList> class Offer {
public:
    explicit Offer(model::NameLists<NamesPerList>& lists) : lists_(lists)
    {
        for (std::int16_t index = 0; index < lists.Count(); ++index)
            known_.insert(lists.Title(index));
    }

    void Add(std::string title, std::string_view text)
    {
        auto names = model::SplitNames<NamesPerList>(text);
        if (names && !known_.contains(title) && lists_.HasRoom())
            lists_.Append(std::move(*names), std::move(title));
    }

private:
    model::NameLists<NamesPerList>& lists_;
    std::set<std::string, std::less<>> known_; ///< titles of the user's lists
};

/// What a key's list is called behind its language: "Short" of "MonthsShort" gives ", short".
std::string TitleEnd(std::string_view width)
{
    return width.empty() ? std::string() : ", " + util::ToLowerAscii(width);
}

template <std::size_t NamesPerList>
std::int16_t Adopt(const model::NameLists<NamesPerList>& offered,
                   model::NameLists<NamesPerList>& own, std::int16_t index)
{
    if (index < own.Count())
        return index;
    const auto& names = offered.At(index);
    const std::int16_t known = own.Find(names);
    return known >= 0 ? known : own.Append(names, offered.Title(index));
}

} // namespace

model::NameTables OfferedNames(const model::NameTables& own, const std::string& installed)
{
    constexpr std::string_view months = "Months";
    constexpr std::string_view weekdays = "Weekdays";
    model::NameTables offered = own;
    if (installed.empty())
        return offered;
    Offer monthOffer(offered.Months);
    Offer weekdayOffer(offered.Weekdays);
    std::string language;
    const std::string text =
        util::ReadTextFile(util::ToPath(installed + kFileName)).value_or(std::string());
    for (const std::string_view line : util::SplitLines(text)) {
        const std::size_t equals = line.find('=');
        const std::string_view key = line.substr(0, equals);
        if (line.starts_with('['))
            language = line.substr(1, line.find(']') - 1);
        else if (equals == std::string::npos)
            continue;
        else if (key.starts_with(months))
            monthOffer.Add(language + TitleEnd(key.substr(months.size())), line.substr(equals + 1));
        else if (key.starts_with(weekdays))
            weekdayOffer.Add(language + TitleEnd(key.substr(weekdays.size())),
                             line.substr(equals + 1));
    }
    return offered;
}

void AdoptNames(const model::NameTables& offered, model::NameTables& own,
                model::ParameterSets& sets)
{
    for (model::CalendarParameters* set :
         std::initializer_list<model::CalendarParameters*>{&sets.Monthly, &sets.Yearly}) {
        set->MonthName = Adopt(offered.Months, own.Months, set->MonthName);
        set->WeekdayName = Adopt(offered.Weekdays, own.Weekdays, set->WeekdayName);
    }
}

} // namespace orrery::app
