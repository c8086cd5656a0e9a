#pragma once

#include "app/countries.h"
#include "ui/form.h"

#include <optional>
#include <string>
#include <vector>

namespace orrery::ui {

/// The dialog in which the user finds the holidays of a country or region (frmCountry).
class CountryForm : public Form {
public:
    /// Offers the countries, `first` before all others where the user typed nothing. Places that
    /// are none of the countries are left out.
    CountryForm(std::vector<app::Country> countries, const std::vector<app::CountryPlace>& first);

    /// The user typed: shows what is found and selects the first.
    void Find();
    /// Selects a line further down; negative counts up. Stays at the ends.
    void Move(int lines);
    /// Closes the dialog if a place is selected.
    void cmdOK_Click();
    void cmdCancel_Click() { Close(); }

    /// The selected place.
    std::optional<app::CountryPlace> Chosen() const;

    Label lblFind{"lblFind", "Fi&nd:"};
    TextBox txtFind{"txtFind"};
    Label lblPlaces{"lblPlaces", "Countries and &Regions:"};
    ListBox lstPlaces{"lstPlaces"}; ///< name, own names
    Label lblNone{"lblNone"};       ///< that nothing is found
    Button cmdOK{"cmdOK", "&OK"};
    Button cmdCancel{"cmdCancel", "&Cancel"};

private:
    const app::Country* CountryOf(const app::CountryPlace& place) const;
    std::string LineOf(const app::CountryPlace& place) const;

    const std::vector<app::Country> countries_;
    std::vector<app::CountryPlace> first_;
    std::vector<app::CountryPlace> shown_; ///< by line of the list
};

} // namespace orrery::ui
