// usage: draw_samples FOLDER
//
// Draws sample pictures as SVG into the folder, for the comparison of programs that show them. The
// folder holds sample.png, sample.jpeg, sample.gif and sample.bmp.

#include "look/canvas/samples.h"
#include "look/canvas/svg_canvas.h"

#include <filesystem>
#include <fstream>

int main(int count, char** arguments)
{
    using namespace orrery::look;
    if (count != 2)
        return 2;
    const std::filesystem::path folder = arguments[1];
    for (const Sample& sample : Samples(folder)) {
        SvgCanvas canvas(kSampleWidth, kSampleHeight, sample.name);
        sample.draw(canvas);
        std::ofstream(folder / (sample.name + ".svg"), std::ios::binary) << canvas.Finish();
    }
    return 0;
}
