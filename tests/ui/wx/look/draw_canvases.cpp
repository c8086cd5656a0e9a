// usage: draw_canvases SETTINGS FOLDER
//
// Draws samples, and the pages of all templates of a settings file, each with two canvases: as
// NAME.svg, and with the window's canvas as NAME.png. The folder has the samples' pictures.

#include "app/calendar_view.h"
#include "app/settings.h"
#include "app/template_folder.h"
#include "app/working_sets.h"
#include "engines/engine_choice.h"
#include "look/canvas/samples.h"
#include "look/canvas/svg_canvas.h"
#include "look/display/sheet_picture.h"
#include "look/text/font_tables.h"
#include "ui/wx/look/wx_canvas.h"
#include "util/paths.h"

#include <wx/app.h>
#include <wx/image.h>
#include <wx/imagpng.h>
#include <wx/init.h>

#include <algorithm>
#include <cmath>
#include <exception>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <string>

namespace orrery::ui::wx {
namespace {

constexpr std::int16_t kYear = 2027;

using Draw = std::function<void(look::Canvas&)>;

void DrawTwice(const std::filesystem::path& stem, double width, double height, const Draw& draw)
{
    look::SvgCanvas svg(width, height, stem.filename().string());
    draw(svg);
    std::ofstream(stem.string() + ".svg", std::ios::binary) << svg.Finish();

    wxImage image(static_cast<int>(std::ceil(width)), static_cast<int>(std::ceil(height)), false);
    image.SetRGB(wxRect(image.GetSize()), 255, 255, 255);
    {
        const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(image));
        PictureCache pictures;
        WxCanvas canvas(*context, pictures);
        draw(canvas);
    } // the context ends and puts the pixels into the image
    image.SaveFile(wxString::FromUTF8(stem.string() + ".png"), wxBITMAP_TYPE_PNG);
}

void DrawSheet(const std::filesystem::path& stem, book::WorkbookView& view, std::size_t sheet)
{
    const look::FontTables fonts;
    look::SheetPicture picture(view, sheet, fonts, {});
    DrawTwice(stem, picture.Layout().width, picture.Layout().height,
              [&picture](look::Canvas& canvas) { picture.Paint(canvas); });
}

void DrawTemplate(const std::filesystem::path& folder, app::Settings& settings,
                  const std::string& file)
{
    engines::InstalledEngines engines;
    const auto working = app::LoadWorkingSets(settings, file);
    app::CalendarView calendar(
        engines, {util::ToPath(settings.TemplatePath + file), kYear, working.sets, settings.names});
    for (std::int16_t month = 0; month <= 12; month = static_cast<std::int16_t>(month + 6)) {
        if (const auto sheet = calendar.SheetOf(month))
            DrawSheet(folder / (file + "-" + std::to_string(month)), calendar.Sheets(), *sheet);
    }
}

void DrawAll(const std::string& settingsFile, const std::filesystem::path& folder)
{
    for (const look::Sample& sample : look::Samples(folder))
        DrawTwice(folder / sample.name, look::kSampleWidth, look::kSampleHeight, sample.draw);
    app::Settings settings = app::LoadSettings(app::LocationsBeside(settingsFile));
    for (const auto& entry : std::filesystem::directory_iterator(settings.TemplatePath)) {
        const std::string extension = entry.path().extension().string();
        if (extension == ".xls" || extension == ".xlsx")
            DrawTemplate(folder, settings, entry.path().filename().string());
    }
}

} // namespace
} // namespace orrery::ui::wx

int main(int count, char** arguments)
{
    if (count != 3)
        return 2;
    wxApp::SetInstance(new wxAppConsole); // needs no display
    const wxInitializer toolkit;
    wxImage::AddHandler(new wxPNGHandler);
    try {
        orrery::ui::wx::DrawAll(arguments[1], arguments[2]);
    }
    catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    return 0;
}
