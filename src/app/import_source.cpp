#include "app/import_source.h"

#include "exchange/holiday_file.h"
#include "exchange/ics/ics_reader.h"
#include "exchange/table/hol_reader.h"
#include "exchange/table/read_table.h"
#include "util/file_read.h"
#include "util/file_replace.h"
#include "util/paths.h"
#include "util/text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace orrery::app {
namespace {

constexpr std::string_view kIcsBegin = "BEGIN:VCALENDAR";

/// ".csv" of a path, in small letters.
std::string EndingOf(const std::filesystem::path& path)
{
    return util::ToLowerAscii(util::FromPath(path.extension()));
}

/// Whether a file begins as calendars do, without its ending being right.
bool BeginsAsIcs(const std::filesystem::path& path)
{
    std::array<char, 64> bytes{};
    const std::size_t count = util::InputFile(path).Read(bytes.data(), bytes.size());
    std::string_view begin(bytes.data(), count);
    if (begin.starts_with(util::kByteOrderMark))
        begin.remove_prefix(util::kByteOrderMark.size());
    begin.remove_prefix(std::min(begin.find_first_not_of(" \t\r\n"), begin.size()));
    return util::EqualIgnoringCase(begin.substr(0, kIcsBegin.size()), kIcsBegin);
}

} // namespace

ImportSource::Content ImportSource::ContentOf(exchange::TableText text, const std::string& name)
{
    if (exchange::IsHol(text))
        return Hol{std::move(text)};
    exchange::FoundTable found = exchange::FindTable(text, name);
    return TextTable{std::move(text), std::move(found)};
}

ImportSource::Content ImportSource::ContentOf(const std::filesystem::path& path)
{
    const std::string ending = EndingOf(path);
    if (ending == ".ics" || (ending != ".hol" && ending != ".csv" && BeginsAsIcs(path)))
        return Ics{path};
    exchange::TableText text = exchange::LoadTableText(path);
    if (ending == ".hol")
        return Hol{std::move(text)};
    return ContentOf(std::move(text), util::FromPath(path));
}

ImportSource::ImportSource(const std::filesystem::path& path) : content_(ContentOf(path)) {}

ImportSource::ImportSource(std::string text)
    : content_(ContentOf(exchange::TableText(std::move(text), ""), ""))
{
}

std::string ImportSource::KindInWords() const
{
    constexpr std::array<const char*, 3> words = {"iCalendar", "Outlook holidays", "table"};
    return words.at(content_.index());
}

std::string ImportSource::KindWord() const
{
    constexpr std::array<const char*, 3> words = {"ics", "hol", "table"};
    return words.at(content_.index());
}

const exchange::FoundTable* ImportSource::Table() const
{
    const auto* const table = std::get_if<TextTable>(&content_);
    return table == nullptr ? nullptr : &table->found;
}

std::vector<std::string> ImportSource::Sections() const
{
    const auto* const hol = std::get_if<Hol>(&content_);
    return hol == nullptr ? std::vector<std::string>() : exchange::HolSections(hol->text);
}

exchange::Calendar ImportSource::Read(const ImportChoices& choices) const
{
    if (const auto* const ics = std::get_if<Ics>(&content_))
        return exchange::ReadIcs(ics->path, choices.years);
    if (const auto* const hol = std::get_if<Hol>(&content_))
        return exchange::ReadHol(hol->text, choices.section);
    const auto& table = std::get<TextTable>(content_);
    exchange::TableLayout layout = table.found.layout;
    layout.dates.order = choices.dateOrder.value_or(layout.dates.order);
    return exchange::ReadTable(table.text, layout);
}

exchange::Years TenYearsFrom(int year)
{
    constexpr int further = 9;
    constexpr int last = 9999;
    return {year, std::min(year + further, last)};
}

void WriteImportedFile(const std::string& file, const exchange::ImportedRules& rules,
                       const std::string& source)
{
    const std::string text = HolidayFileText(rules, util::BaseName(file), source);
    util::ReplaceFile(util::ToPath(file), text);
}

} // namespace orrery::app
