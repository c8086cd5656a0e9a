#include "look/cairo/text_drawing.h"

#include "look/cairo/cairo_fills.h"
#include "look/cairo/fonts_windows.h"
#include "look/canvas/text_limits.h"
#include "util/wide.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace orrery::look {
namespace {

/// A part of a line in one font and one direction, as glyphs.
struct GlyphRun {
    WindowsFont* font = nullptr;
    std::wstring text;
    bool isBackward = false;    ///< from right to left
    std::vector<WORD> glyphs;   ///< from left to right
    std::vector<WORD> clusters; ///< of each character its first glyph, in the order of reading
    std::vector<int> advances;
    std::vector<GOFFSET> offsets;

    double Width() const
    {
        double width = 0;
        for (const int advance : advances)
            width += advance;
        return width / kFontUnits;
    }
};

/// A device for measuring, with a font.
class MeasuringDevice {
public:
    MeasuringDevice()
        : device_(::CreateCompatibleDC(nullptr)), old_(::GetCurrentObject(device_, OBJ_FONT))
    {
    }
    ~MeasuringDevice()
    {
        ::SelectObject(device_, old_);
        ::DeleteDC(device_);
    }
    MeasuringDevice(const MeasuringDevice&) = delete;
    MeasuringDevice& operator=(const MeasuringDevice&) = delete;
    HDC With(const WindowsFont& font) const
    {
        ::SelectObject(device_, font.Handle());
        return device_;
    }

private:
    HDC device_;
    HGDIOBJ old_;
};

std::wstring LineOf(std::string_view text, double fontSize)
{
    text = text.substr(0, static_cast<std::size_t>(kLongestText / std::max(fontSize, 1.0)));
    std::wstring line = util::ToWide(text);
    std::replace_if(
        line.begin(), line.end(), [](wchar_t c) { return c < L' '; }, L' ');
    return line;
}

/// The parts of a line in the order of reading, each with what Uniscribe knows of it.
std::vector<std::pair<std::wstring, SCRIPT_ANALYSIS>> Itemize(const std::wstring& line,
                                                              bool isRightToLeft)
{
    std::vector<SCRIPT_ITEM> items(line.size() + 2);
    SCRIPT_CONTROL control = {};
    SCRIPT_STATE state = {};
    state.uBidiLevel = isRightToLeft ? 1 : 0;
    int count = 0;
    std::vector<std::pair<std::wstring, SCRIPT_ANALYSIS>> parts;
    if (FAILED(::ScriptItemize(line.data(), static_cast<int>(line.size()),
                               static_cast<int>(items.size() - 1), &control, &state, items.data(),
                               &count)))
        return parts;
    for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
        const auto begin = static_cast<std::size_t>(items[i].iCharPos);
        const auto end = static_cast<std::size_t>(items[i + 1].iCharPos);
        parts.emplace_back(line.substr(begin, end - begin), items[i].a);
    }
    return parts;
}

bool IsSurrogate(wchar_t unit)
{
    return unit >= 0xD800 && unit < 0xE000;
}

bool IsJoined(wchar_t unit) // to the character before it
{
    return (unit >= 0x300 && unit < 0x370) || unit == 0x200D || (unit >= 0xFE00 && unit < 0xFE10) ||
           (unit >= 0xDC00 && unit < 0xE000);
}

class UniscribeDrawing final : public TextDrawing {
public:
    explicit UniscribeDrawing(cairo_t* cairo) : cairo_(cairo) {}

    void Draw(Point at, std::string_view text, const TextStyle& style, double width) override
    {
        const double size = std::min(style.font.size * kPixelsPerPoint, kLargestFont);
        const auto runs = RunsOf(LineOf(text, size), style);
        double drawn = 0;
        for (const GlyphRun& run : runs)
            drawn += run.Width() * size;
        const bool isStretched =
            width > 0 && drawn > 0 && text.size() > 1 && std::abs(drawn - width) > kWidthTolerance;
        cairo_save(cairo_);
        cairo_translate(cairo_, at.x, at.y);
        if (isStretched)
            cairo_scale(cairo_, width / drawn, 1);
        SetColor(cairo_, style.color, 1);
        double x = 0;
        for (const GlyphRun& run : runs) {
            Show(run, x, size);
            x += run.Width() * size;
        }
        cairo_new_path(cairo_);
        cairo_restore(cairo_);
    }

private:
    /// The runs of a line, from left to right.
    std::vector<GlyphRun> RunsOf(const std::wstring& line, const TextStyle& style)
    {
        const auto fonts = fonts_.FontsFor(style.font.name, style.font.bold, style.font.italic);
        std::vector<GlyphRun> runs;
        std::vector<BYTE> levels;
        for (const auto& [text, analysis] : Itemize(line, style.isRightToLeft)) {
            for (auto& [part, font] : SplitByFont(text, fonts)) {
                runs.push_back(Shape(std::move(part), *font, analysis));
                levels.push_back(static_cast<BYTE>(analysis.s.uBidiLevel));
            }
        }
        std::vector<int> order(runs.size());
        if (runs.empty() || FAILED(::ScriptLayout(static_cast<int>(levels.size()), levels.data(),
                                                  order.data(), nullptr)))
            return runs;
        std::vector<GlyphRun> visual;
        for (const int index : order)
            visual.push_back(std::move(runs[static_cast<std::size_t>(index)]));
        return visual;
    }

    /// Stretches of characters with the first of the fonts that has them; marks stay with what they
    /// stand on.
    std::vector<std::pair<std::wstring, WindowsFont*>>
    SplitByFont(std::wstring_view text, const std::vector<WindowsFont*>& fonts) const
    {
        std::vector<std::pair<std::wstring, WindowsFont*>> parts;
        for (std::size_t begin = 0; begin < text.size();) {
            std::size_t end = begin + 1;
            while (end < text.size() && IsJoined(text[end]))
                ++end;
            const std::wstring_view whole = text.substr(begin, end - begin);
            WindowsFont* const font = FontWith(whole, fonts);
            if (parts.empty() || parts.back().second != font)
                parts.emplace_back(std::wstring(), font);
            parts.back().first += whole;
            begin = end;
        }
        return parts;
    }

    /// The first font with all of the characters, else with the first of them.
    WindowsFont* FontWith(std::wstring_view whole, const std::vector<WindowsFont*>& fonts) const
    {
        if (IsSurrogate(whole.front()))
            return fonts.back(); // of those with signs; GDI tells nothing of them
        WindowsFont* first = nullptr;
        for (WindowsFont* const font : fonts) {
            std::vector<WORD> glyphs(whole.size());
            ::GetGlyphIndicesW(device_.With(*font), whole.data(), static_cast<int>(whole.size()),
                               glyphs.data(), GGI_MARK_NONEXISTING_GLYPHS);
            constexpr WORD missing = 0xFFFF;
            if (first == nullptr && glyphs.front() != missing)
                first = font;
            if (std::find(glyphs.begin(), glyphs.end(), missing) == glyphs.end())
                return font;
        }
        return first != nullptr ? first : fonts.front();
    }

    /// What cannot be shaped has no glyphs.
    GlyphRun Shape(std::wstring text, WindowsFont& font, SCRIPT_ANALYSIS analysis) const
    {
        GlyphRun run;
        run.font = &font;
        run.text = std::move(text);
        run.isBackward = analysis.fRTL != 0;
        run.clusters.resize(run.text.size());
        run.glyphs.resize(run.text.size() * 3 / 2 + 16);
        std::vector<SCRIPT_VISATTR> attributes(run.glyphs.size());
        const HDC device = device_.With(font);
        const auto length = static_cast<int>(run.text.size());
        int count = 0;
        const auto shape = [&] {
            return ::ScriptShape(device, font.Cache(), run.text.data(), length,
                                 static_cast<int>(run.glyphs.size()), &analysis, run.glyphs.data(),
                                 run.clusters.data(), attributes.data(), &count);
        };
        HRESULT result = shape();
        if (FAILED(result)) { // the font does not know the script, but has the characters
            analysis.eScript = SCRIPT_UNDEFINED;
            result = shape();
        }
        const auto glyphs = static_cast<std::size_t>(FAILED(result) ? 0 : count);
        run.glyphs.resize(glyphs);
        run.advances.resize(glyphs);
        run.offsets.resize(glyphs);
        ABC whole = {};
        if (glyphs > 0 &&
            FAILED(::ScriptPlace(device, font.Cache(), run.glyphs.data(), count, attributes.data(),
                                 &analysis, run.advances.data(), run.offsets.data(), &whole)))
            run.glyphs.clear();
        return run;
    }

    /// How many glyphs and bytes belong together, in the order of reading.
    static std::vector<cairo_text_cluster_t> ClustersOf(const GlyphRun& run, std::string& utf8)
    {
        std::vector<cairo_text_cluster_t> clusters;
        const std::size_t length = run.text.size();
        for (std::size_t begin = 0; begin < length;) {
            std::size_t end = begin + 1;
            while (end < length && run.clusters[end] == run.clusters[begin])
                ++end;
            const int first = run.clusters[begin];
            const int next = end < length     ? run.clusters[end]
                             : run.isBackward ? -1
                                              : static_cast<int>(run.glyphs.size());
            const std::string part =
                util::FromWide(std::wstring_view(run.text).substr(begin, end - begin));
            clusters.push_back({static_cast<int>(part.size()), std::abs(next - first)});
            utf8 += part;
            begin = end;
        }
        return clusters;
    }

    void Show(const GlyphRun& run, double x, double size)
    {
        const double scale = size / kFontUnits;
        std::vector<cairo_glyph_t> glyphs;
        for (std::size_t i = 0; i < run.glyphs.size(); ++i) {
            glyphs.push_back(
                {run.glyphs[i], x + run.offsets[i].du * scale, -run.offsets[i].dv * scale});
            x += run.advances[i] * scale;
        }
        if (glyphs.empty())
            return;
        std::string utf8;
        const auto clusters = ClustersOf(run, utf8);
        cairo_set_font_face(cairo_, run.font->Face());
        cairo_set_font_size(cairo_, size);
        cairo_show_text_glyphs(
            cairo_, utf8.data(), static_cast<int>(utf8.size()), glyphs.data(),
            static_cast<int>(glyphs.size()), clusters.data(), static_cast<int>(clusters.size()),
            run.isBackward ? CAIRO_TEXT_CLUSTER_FLAG_BACKWARD : cairo_text_cluster_flags_t{});
    }

    cairo_t* cairo_;
    MeasuringDevice device_;
    WindowsFonts fonts_;
};

} // namespace

std::unique_ptr<TextDrawing> MakeTextDrawing(cairo_t* cairo, TextsAs /*textsAs*/)
{
    return std::make_unique<UniscribeDrawing>(cairo);
}

} // namespace orrery::look
