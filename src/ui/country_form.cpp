#include "ui/country_form.h"

#include "util/text.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace orrery::ui {

CountryForm::CountryForm(std::vector<app::Country> countries,
                         const std::vector<app::CountryPlace>& first)
    : Form("frmCountry", "Country", "holidays"), countries_(std::move(countries))
{
    for (const app::CountryPlace& place : first) {
        const bool isNew = std::ranges::find(first_, place) == first_.end();
        if (isNew && CountryOf(place) != nullptr)
            first_.push_back(place);
    }
    Find();
}

void CountryForm::Find()
{
    const bool isAll = util::Trim(txtFind.text).empty();
    shown_ = app::FindPlaces(countries_, txtFind.text);
    // What was used before comes first, a region even where countries alone are shown.
    std::vector<app::CountryPlace> known;
    std::ranges::copy_if(first_, std::back_inserter(known), [&](const app::CountryPlace& place) {
        return isAll || std::ranges::find(shown_, place) != shown_.end();
    });
    for (const app::CountryPlace& place : known)
        std::erase(shown_, place);
    shown_.insert(shown_.begin(), known.begin(), known.end());

    lstPlaces.lines.clear();
    for (const app::CountryPlace& place : shown_)
        lstPlaces.lines.push_back(LineOf(place));
    lstPlaces.selected = shown_.empty() ? -1 : 0;
    cmdOK.enabled = lstPlaces.HasSelection();
    lblNone.ShowText(shown_.empty() ? "No country or region has that name." : "");
}

void CountryForm::Move(int lines)
{
    if (!shown_.empty())
        lstPlaces.Select(
            std::clamp(lstPlaces.selected + lines, 0, static_cast<int>(shown_.size()) - 1));
}

void CountryForm::cmdOK_Click()
{
    if (Chosen())
        Accept();
}

std::optional<app::CountryPlace> CountryForm::Chosen() const
{
    if (!lstPlaces.HasSelection())
        return std::nullopt;
    return shown_.at(static_cast<std::size_t>(lstPlaces.selected));
}

const app::Country* CountryForm::CountryOf(const app::CountryPlace& place) const
{
    const auto found = std::ranges::find(countries_, place.file, &app::Country::file);
    return found == countries_.end() ? nullptr : &*found;
}

/// "Germany: Bayern", and "Deutschland" in the next column.
std::string CountryForm::LineOf(const app::CountryPlace& place) const
{
    const app::Country& country = *CountryOf(place);
    std::string line = country.name;
    if (!place.region.empty()) {
        const auto region =
            std::ranges::find(country.regions, place.region, &holidays::Region::code);
        line += ": " + (region == country.regions.end() ? place.region : region->name);
    }
    std::vector<std::string> own = country.ownNames;
    std::erase(own, country.name);
    return line + '\t' + util::Join(own, ", ");
}

} // namespace orrery::ui
