// Prints what an iCalendar file says.
//   read_ics FILE FIRST_YEAR LAST_YEAR
// A line for each event: "event", line, name, days ("2027-05-01/2027-05-02 ..."), rule, year of
// birth; for each thing that is passed over: "passed", line, reason. Fields are separated by tabs.
#include "exchange/ics/ics_reader.h"
#include "util/error.h"
#include "util/error_text.h"

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <variant>

namespace {

using namespace orrery;

std::string TextOf(holidays::Date date)
{
    const std::chrono::year_month_day parts(date);
    char text[32];
    std::snprintf(text, sizeof text, "%04d-%02u-%02u", static_cast<int>(parts.year()),
                  static_cast<unsigned>(parts.month()), static_cast<unsigned>(parts.day()));
    return text;
}

std::string TextOf(const exchange::Yearly& yearly)
{
    const auto* const plain = std::get_if<holidays::PlainDay>(&yearly.day.kind);
    const std::string day =
        plain != nullptr ? std::to_string(plain->dateCode) + ',' + std::to_string(plain->kind)
                         : "leap day";
    return day + ' ' + std::to_string(yearly.years.first) + '-' +
           (yearly.years.last > 9999 ? "" : std::to_string(yearly.years.last));
}

void Print(const exchange::Event& event)
{
    std::cout << "event\t" << event.line << '\t' << event.name << '\t';
    for (const auto& [first, last] : event.days)
        std::cout << (&first == &event.days.front().first ? "" : " ") << TextOf(first) << '/'
                  << TextOf(last);
    std::cout << '\t' << (event.yearly ? TextOf(*event.yearly) : "") << '\t'
              << (event.born ? std::to_string(*event.born) : "") << '\n';
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4)
        return 2;
    try {
        const auto calendar = exchange::ReadIcs(argv[1], {std::atoi(argv[2]), std::atoi(argv[3])});
        for (const exchange::Event& event : calendar.events)
            Print(event);
        for (const exchange::PassedOver& passed : calendar.passedOver)
            std::cout << "passed\t" << passed.line << '\t' << passed.reason << '\n';
    }
    catch (const util::Error& error) {
        std::cout << "error\t" << util::ErrorText(error) << '\n';
        return 1;
    }
    return 0;
}
