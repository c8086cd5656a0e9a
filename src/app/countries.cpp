#include "app/countries.h"

#include "util/file_read.h"
#include "util/paths.h"
#include "util/profile.h"
#include "util/text.h"

#include <utf8proc.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <utility>

namespace orrery::app {
namespace {

using Words = std::vector<std::string>;

constexpr const char* kIndexName = "countries.tsv";
constexpr const char* kSection = "Holidays";
constexpr const char* kLastCountries = "LastCountries";
constexpr std::size_t kMostLast = 5;

Words Split(std::string_view text, char separator)
{
    Words parts;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(separator), text.size());
        if (const auto part = util::Trim(text.substr(0, end)); !part.empty())
            parts.emplace_back(part);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return parts;
}

/// In small letters, without accents.
std::string Fold(std::string_view text)
{
    utf8proc_uint8_t* folded = nullptr;
    const auto size =
        utf8proc_map(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                     static_cast<utf8proc_ssize_t>(text.size()), &folded,
                     static_cast<utf8proc_option_t>(UTF8PROC_STABLE | UTF8PROC_DECOMPOSE |
                                                    UTF8PROC_CASEFOLD | UTF8PROC_STRIPMARK));
    const std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> owner(folded, &std::free);
    if (size < 0)
        return std::string(text);
    return {reinterpret_cast<const char*>(folded), static_cast<std::size_t>(size)};
}

/// The words of a text, folded; what is between words in names separates them.
Words FoldedWords(std::string_view text)
{
    std::string folded = Fold(text);
    std::ranges::replace_if(
        folded,
        [](char c) { return std::string_view("-().,/'").find(c) != std::string_view::npos; }, ' ');
    return Split(folded, ' ');
}

void Append(Words& words, std::string_view text)
{
    for (std::string& word : FoldedWords(text))
        words.push_back(std::move(word));
}

Words WordsOf(const Country& country)
{
    Words words = FoldedWords(country.name);
    for (const auto* names : {&country.ownNames, &country.otherNames}) {
        for (const std::string& name : *names)
            Append(words, name);
    }
    words.push_back(Fold(country.code));
    return words;
}

bool HasBeginning(const Words& words, const std::string& beginning)
{
    return std::ranges::any_of(
        words, [&](const std::string& word) { return word.starts_with(beginning); });
}

std::optional<Country> CountryOf(std::string_view line)
{
    enum Column { File, Code, Name, OwnNames, OtherNames, Languages, Regions, Count };
    std::array<std::string_view, Count> columns;
    for (std::string_view& column : columns) {
        const std::size_t end = std::min(line.find('\t'), line.size());
        column = line.substr(0, end);
        line.remove_prefix(std::min(end + 1, line.size()));
    }
    if (columns[File].starts_with('#') || columns[Name].empty())
        return std::nullopt;
    Country country{std::string(columns[File]),      std::string(columns[Code]),
                    std::string(columns[Name]),      Split(columns[OwnNames], '|'),
                    Split(columns[OtherNames], '|'), {}};
    for (const std::string& region : Split(columns[Regions], ';')) {
        const std::size_t blank = std::min(region.find(' '), region.size());
        country.regions.push_back(
            {region.substr(0, blank), std::string(util::Trim(region.substr(blank)))});
    }
    return country;
}

/// "Germany.txt/BY".
std::string TextOf(const CountryPlace& place)
{
    return place.region.empty() ? place.file : place.file + '/' + place.region;
}

} // namespace

std::vector<Country> ReadCountries(const std::string& installed)
{
    std::vector<Country> countries;
    if (installed.empty())
        return countries;
    const std::string text =
        util::ReadTextFile(util::ToPath(installed + kIndexName)).value_or(std::string());
    for (const std::string_view line : util::SplitLines(text)) {
        if (auto country = CountryOf(line))
            countries.push_back(std::move(*country));
    }
    std::ranges::stable_sort(countries, {}, [](const Country& each) { return Fold(each.name); });
    return countries;
}

std::vector<CountryPlace> FindPlaces(const std::vector<Country>& countries, std::string_view text)
{
    const Words typed = FoldedWords(text);
    std::vector<CountryPlace> found;
    std::vector<CountryPlace> regions;
    for (const Country& country : countries) {
        const Words words = WordsOf(country);
        Words rest; // what the country's names do not have
        std::ranges::copy_if(typed, std::back_inserter(rest),
                             [&](const std::string& each) { return !HasBeginning(words, each); });
        if (rest.empty())
            found.push_back({country.file, ""});
        for (const holidays::Region& region : country.regions) {
            Words own = FoldedWords(region.name);
            own.push_back(Fold(region.code));
            const auto isOwn = [&](const std::string& each) { return HasBeginning(own, each); };
            if (std::ranges::all_of(rest, isOwn) && std::ranges::any_of(typed, isOwn))
                regions.push_back({country.file, region.code});
        }
    }
    found.insert(found.end(), regions.begin(), regions.end());
    return found;
}

std::string CountryOfLocale(std::string_view locale)
{
    const std::size_t line = locale.find('_');
    if (line == std::string_view::npos)
        return {};
    const std::string_view code = locale.substr(line + 1);
    const std::size_t end = std::min(code.find_first_of(".@"), code.size());
    return end == 2 ? util::ToUpperAscii(code.substr(0, end)) : std::string();
}

std::vector<CountryPlace> LastPlaces(const std::string& settingsFile)
{
    std::vector<CountryPlace> places;
    const util::Profile profile(util::ToPath(settingsFile));
    for (const std::string& place : Split(profile.Read(kSection, kLastCountries, ""), ',')) {
        const std::size_t slash = std::min(place.find('/'), place.size());
        places.push_back({place.substr(0, slash), place.substr(std::min(slash + 1, place.size()))});
    }
    return places;
}

void RememberPlace(const std::string& settingsFile, const CountryPlace& place)
{
    std::vector<CountryPlace> places = LastPlaces(settingsFile);
    std::erase(places, place);
    places.insert(places.begin(), place);
    places.resize(std::min(places.size(), kMostLast));
    Words texts;
    std::ranges::transform(places, std::back_inserter(texts), TextOf);
    util::Profile(util::ToPath(settingsFile))
        .Write(kSection, kLastCountries, util::Join(texts, ","));
}

} // namespace orrery::app
