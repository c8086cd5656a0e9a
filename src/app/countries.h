#pragma once

#include "holidays/language/rule_set.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::app {

/// A country or territory with a holiday file that the program ships.
struct Country {
    std::string file;                    ///< its name in the holiday folder
    std::string code;                    ///< ISO 3166-1, two letters
    std::string name;                    ///< in English
    std::vector<std::string> ownNames;   ///< in its own languages
    std::vector<std::string> otherNames; ///< by which it is found, too
    std::vector<holidays::Region> regions;
};

/// A country, or a region of it.
struct CountryPlace {
    std::string file;
    std::string region; ///< its code; empty for the whole country
    friend bool operator==(const CountryPlace&, const CountryPlace&) = default;
};

/// The countries in the order of their English names, from the index that is installed with the
/// holiday files. None without it. `installed` is as in `SystemFolders`.
std::vector<Country> ReadCountries(const std::string& installed);

/// Finds countries and regions of which every word of a text begins a word of a name or is the
/// code; accents and case do not count. An empty text finds all countries. Countries come before
/// regions.
std::vector<CountryPlace> FindPlaces(const std::vector<Country>& countries, std::string_view text);

/// The country code of a locale's name such as "de_AT.UTF-8"; empty if it has none.
std::string CountryOfLocale(std::string_view locale);

/// The places that the user chose last, the latest first.
std::vector<CountryPlace> LastPlaces(const std::string& settingsFile);
/// Puts a place before the others that the user chose. A settings file that cannot be written
/// stays as it is.
void RememberPlace(const std::string& settingsFile, const CountryPlace& place);

} // namespace orrery::app
