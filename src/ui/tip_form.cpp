#include "ui/tip_form.h"

#include "app/settings.h"
#include "util/error.h"
#include "util/file_read.h"
#include "util/paths.h"
#include "util/profile.h"
#include "util/text.h"

#include <algorithm>
#include <chrono>
#include <random>
#include <string_view>
#include <utility>

namespace orrery::ui {
namespace {

constexpr const char* kSection = "Environment";
constexpr const char* kKey = "ShowTips";
constexpr const char* kMissingFileText =
    "That the tips.txt file was not found? \r\n\r\n"
    "Create a text file named tips.txt using NotePad with 1 tip per line. "
    "Then place it in the same directory as the application. "; // the trailing blank is intended

/// Replaces each "\n", two characters in the file, with a line break.
std::string WithLineBreaks(std::string_view line)
{
    std::string text;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line.substr(i, 2) != "\\n") {
            text += line[i];
            continue;
        }
        text += "\r\n";
        ++i;
    }
    return text;
}

} // namespace

TipForm::TipForm(std::string settingsFile, const std::string& tipsFile)
    : Form("frmTip", "Tip of the Day", "tips"), settingsFile_(std::move(settingsFile))
{
    chkLoadTipsAtStartup.checked = app::ShowsTips(util::Profile(util::ToPath(settingsFile_)));
    if (!LoadTips(tipsFile))
        lblTipText.ShowText(kMissingFileText);
}

bool TipForm::LoadTips(const std::string& path)
{
    const auto bytes = path.empty() ? std::nullopt : util::ReadTextFile(util::ToPath(path));
    if (!bytes)
        return false;
    const std::string text = util::DecodeTextFile(*bytes);
    for (const std::string_view line : util::SplitLines(text)) {
        if (!util::Trim(line).empty())
            tipList.push_back(WithLineBreaks(line));
    }
    PickFirstTip();
    return true;
}

void TipForm::PickFirstTip()
{
    const auto now = std::chrono::system_clock::now().time_since_epoch().count();
    std::mt19937 random(static_cast<std::mt19937::result_type>(now));
    const auto count = std::max(static_cast<std::int32_t>(tipList.size()), 1);
    currentTip = std::uniform_int_distribution<std::int32_t>(1, count)(random);
    DisplayCurrentTip();
}

void TipForm::DisplayCurrentTip()
{
    if (!tipList.empty())
        lblTipText.ShowText(tipList[static_cast<std::size_t>(currentTip) - 1]);
}

void TipForm::AdvanceTip()
{
    ++currentTip;
    if (currentTip > static_cast<std::int32_t>(tipList.size()))
        currentTip = 1;
    DisplayCurrentTip();
}

void TipForm::chkLoadTipsAtStartup_Click()
{
    const util::Profile profile(util::ToPath(settingsFile_));
    if (profile.Write(kSection, kKey, chkLoadTipsAtStartup.checked ? "Y" : "N"))
        return;
    chkLoadTipsAtStartup.checked = !chkLoadTipsAtStartup.checked;
    throw Error(util::ErrorKind::FileNotWritable, settingsFile_);
}

} // namespace orrery::ui
