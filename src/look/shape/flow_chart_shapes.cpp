#include "look/shape/shape_table.h"

#include <algorithm>
#include <array>

namespace orrery::look {

namespace {

void PlainBox(ShapeDraft& draft)
{
    draft.Polygon({{0, 0}, {draft.width, 0}, {draft.width, draft.height}, {0, draft.height}});
}

void PredefinedProcess(ShapeDraft& draft)
{
    PlainBox(draft);
    const double x = draft.width / 8;
    draft.Part(false, true).Move(x, 0).Line(x, draft.height);
    draft.Move(draft.width - x, 0).Line(draft.width - x, draft.height);
    draft.Text(x, 0, draft.width - x, draft.height);
}

void InternalStorage(ShapeDraft& draft)
{
    PlainBox(draft);
    const double x = draft.width / 8;
    const double y = draft.height / 8;
    draft.Part(false, true).Move(x, 0).Line(x, draft.height);
    draft.Move(0, y).Line(draft.width, y);
    draft.Text(x, y, draft.width, draft.height);
}

/// A sheet of paper with a wave below.
void DrawDocument(ShapeDraft& draft, const Box& box)
{
    const double low = box.y + box.height * 0.8;
    const double wave = box.height * 0.33;
    draft.Part().Move(box.x, box.y).Line(box.Right(), box.y).Line(box.Right(), low);
    draft.Curve({box.x + box.width / 2, low}, {box.x + box.width / 2, low + wave},
                {box.x, low + wave * 0.4});
    draft.Close();
}

void Document(ShapeDraft& draft)
{
    DrawDocument(draft, {0, 0, draft.width, draft.height});
    draft.Text(0, 0, draft.width, draft.height * 0.8);
}

void Multidocument(ShapeDraft& draft)
{
    const double x = draft.width * 0.07;
    const double y = draft.height * 0.085;
    for (const int place : {2, 1, 0})
        DrawDocument(draft,
                     {place * x, (2 - place) * y, draft.width - 2 * x, draft.height - 2 * y});
    draft.Text(0, 2 * y, draft.width - 2 * x, draft.height * 0.8);
}

void Terminator(ShapeDraft& draft)
{
    const double y = draft.height / 2;
    const double x = std::min(draft.width * 0.161, draft.width / 2);
    draft.Part().Move(x, 0).Arc({draft.width - x, y}, x, y, 270, 180);
    draft.Arc({x, y}, x, y, 90, 180).Close();
    draft.Text(x * 0.3, draft.height * 0.15, draft.width - x * 0.3, draft.height * 0.85);
}

void ManualInput(ShapeDraft& draft)
{
    const double h = draft.height;
    draft.Polygon({{0, h / 5}, {draft.width, 0}, {draft.width, h}, {0, h}});
    draft.Text(0, h / 5, draft.width, h);
}

void OffpageConnector(ShapeDraft& draft)
{
    const double w = draft.width;
    const double y = draft.height * 0.8;
    draft.Polygon({{0, 0}, {w, 0}, {w, y}, {w / 2, draft.height}, {0, y}});
    draft.Text(0, 0, w, y);
}

void PunchedCard(ShapeDraft& draft)
{
    const double w = draft.width;
    const double h = draft.height;
    draft.Polygon({{0, h / 5}, {w / 5, 0}, {w, 0}, {w, h}, {0, h}});
    draft.Text(0, h / 5, w, h);
}

/// Waves above and below, as high as `wave`, moved against each other by `shift` to both sides.
void DrawWave(ShapeDraft& draft, double wave, double shift, int waves)
{
    const double left = std::max(0.0, shift);
    const double right = draft.width - std::max(0.0, -shift);
    const double length = (right - left) / waves;
    const double swing = wave * 10 / 3;
    draft.Part().Move(left, wave);
    for (int i = 0; i < waves; ++i) {
        const double x = left + i * length;
        draft.Curve({x + length / 3, wave - swing}, {x + length * 2 / 3, wave + swing},
                    {x + length, wave});
    }
    const double low = draft.height - wave;
    const double end = right - left;
    draft.Line(right - shift, low);
    for (int i = 0; i < waves; ++i) {
        const double x = right - shift - i * end / waves;
        draft.Curve({x - length / 3, low + swing}, {x - length * 2 / 3, low - swing},
                    {x - length, low});
    }
    draft.Close();
    draft.Text(left, 2 * wave, right, draft.height - 2 * wave);
}

void Wave(ShapeDraft& draft)
{
    DrawWave(draft, draft.height * draft.Share(0, 0.125, 0, 0.2),
             draft.width * draft.Share(1, 0, -0.1, 0.1), 1);
}

void DoubleWave(ShapeDraft& draft)
{
    DrawWave(draft, draft.height * draft.Share(0, 0.0625, 0, 0.125),
             draft.width * draft.Share(1, 0, -0.1, 0.1), 2);
}

void PunchedTape(ShapeDraft& draft)
{
    DrawWave(draft, draft.height / 10, 0, 1);
}

void Collate(ShapeDraft& draft)
{
    const double w = draft.width;
    const double h = draft.height;
    draft.Polygon({{0, 0}, {w, 0}, {w / 2, h / 2}, {w, h}, {0, h}, {w / 2, h / 2}});
}

void Sort(ShapeDraft& draft)
{
    const double w = draft.width;
    const double h = draft.height;
    draft.Polygon({{0, h / 2}, {w / 2, 0}, {w, h / 2}, {w / 2, h}});
    draft.Part(false, true).Move(0, h / 2).Line(w, h / 2);
}

void OnlineStorage(ShapeDraft& draft)
{
    const double w = draft.width;
    const double y = draft.height / 2;
    draft.Part().Move(w / 6, 0).Line(w, 0).Arc({w, y}, w / 6, y, 270, -180);
    draft.Line(w / 6, draft.height).Arc({w / 6, y}, w / 6, y, 90, 180).Close();
    draft.Text(w / 6, 0, w * 5 / 6, draft.height);
}

void Delay(ShapeDraft& draft)
{
    const double x = draft.width / 2;
    const double y = draft.height / 2;
    draft.Part().Move(0, 0).Arc({x, y}, x, y, 270, 180).Line(0, draft.height).Close();
    draft.Text(0, draft.height * 0.15, draft.width * 0.85, draft.height * 0.85);
}

void MagneticTape(ShapeDraft& draft)
{
    const double x = draft.width / 2;
    const double y = draft.height / 2;
    // Around almost the whole circle, then along the tape below.
    draft.Part().Move(x, draft.height).Arc({x, y}, x, y, 90, 315);
    draft.Line(draft.width, draft.height * 0.8536).Line(draft.width, draft.height).Close();
    draft.Text(draft.width * 0.15, draft.height * 0.15, draft.width * 0.85, draft.height * 0.85);
}

void Display(ShapeDraft& draft)
{
    const double w = draft.width;
    const double y = draft.height / 2;
    draft.Part().Move(0, y).Line(w / 6, 0).Line(w * 5 / 6, 0);
    draft.Arc({w * 5 / 6, y}, w / 6, y, 270, 180).Line(w / 6, draft.height).Close();
    draft.Text(w / 6, 0, w * 5 / 6, draft.height);
}

constexpr std::array kFlowChartShapes{ShapeRule{"flowChartPredefinedProcess", PredefinedProcess},
                                      ShapeRule{"flowChartInternalStorage", InternalStorage},
                                      ShapeRule{"flowChartDocument", Document},
                                      ShapeRule{"flowChartMultidocument", Multidocument},
                                      ShapeRule{"flowChartTerminator", Terminator},
                                      ShapeRule{"flowChartManualInput", ManualInput},
                                      ShapeRule{"flowChartOffpageConnector", OffpageConnector},
                                      ShapeRule{"flowChartPunchedCard", PunchedCard},
                                      ShapeRule{"flowChartPunchedTape", PunchedTape},
                                      ShapeRule{"flowChartCollate", Collate},
                                      ShapeRule{"flowChartSort", Sort},
                                      ShapeRule{"flowChartOnlineStorage", OnlineStorage},
                                      ShapeRule{"flowChartDelay", Delay},
                                      ShapeRule{"flowChartMagneticTape", MagneticTape},
                                      ShapeRule{"flowChartDisplay", Display},
                                      ShapeRule{"wave", Wave},
                                      ShapeRule{"doubleWave", DoubleWave}};

} // namespace

std::span<const ShapeRule> FlowChartShapes()
{
    return kFlowChartShapes;
}

} // namespace orrery::look
