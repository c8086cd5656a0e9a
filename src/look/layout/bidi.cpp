#include "look/layout/bidi.h"

#include "look/text/characters.h"
#include "util/unicode.h"

#include <algorithm>
#include <cstdint>

namespace orrery::look {
namespace {

/// Characters of one level: even ones are read from left to right, odd ones from right to left.
struct LevelRun {
    TextSpan span;
    std::int32_t level = 0;
    bool isNeutral = false;
};

std::int32_t LevelOf(Direction direction, std::int32_t base, bool isAfterRightToLeft)
{
    if (direction == Direction::RightToLeft)
        return 1;
    if (direction == Direction::Digit)
        return base == 1 || isAfterRightToLeft ? 2 : 0;
    return base == 1 ? 2 : 0;
}

std::vector<LevelRun> RunsOfOneClass(std::string_view text, TextSpan line, std::int32_t base)
{
    std::vector<LevelRun> runs;
    bool isAfterRightToLeft = base == 1;
    for (std::size_t at = line.begin; at < line.end;) {
        const std::size_t begin = at;
        const Direction direction = DirectionOf(util::NextCharacter(text, at));
        at = std::min(at, line.end);
        const bool isNeutral = direction == Direction::Neutral;
        const std::int32_t level = isNeutral ? base : LevelOf(direction, base, isAfterRightToLeft);
        if (direction == Direction::RightToLeft || direction == Direction::LeftToRight)
            isAfterRightToLeft = direction == Direction::RightToLeft;
        if (!runs.empty() && runs.back().level == level && runs.back().isNeutral == isNeutral)
            runs.back().span.end = at;
        else
            runs.push_back({{begin, at}, level, isNeutral});
    }
    return runs;
}

/// Neutral characters between runs of one direction are of that direction, others of the line's.
void SettleNeutrals(std::vector<LevelRun>& runs)
{
    for (std::size_t i = 1; i + 1 < runs.size(); ++i) {
        if (!runs[i].isNeutral || runs[i - 1].isNeutral || runs[i + 1].isNeutral)
            continue;
        // Digits count as right-to-left here, as rule N1 says.
        const auto side = [&runs](std::size_t at, std::size_t other) {
            return runs[at].level == 2 && runs[other].level == 1 ? 1 : runs[at].level;
        };
        if (side(i - 1, i + 1) == side(i + 1, i - 1))
            runs[i].level = side(i - 1, i + 1);
    }
}

void Reorder(std::vector<LevelRun>& runs)
{
    for (std::int32_t level = 2; level >= 1; --level) {
        for (auto from = runs.begin(); from != runs.end();) {
            if (from->level < level) {
                ++from;
                continue;
            }
            const auto to = std::find_if(
                from, runs.end(), [level](const LevelRun& run) { return run.level < level; });
            std::reverse(from, to);
            from = to;
        }
    }
}

} // namespace

std::vector<DirectionalRun> VisualRuns(std::string_view text, TextSpan line, bool isRightToLeft)
{
    std::vector<LevelRun> runs = RunsOfOneClass(text, line, isRightToLeft ? 1 : 0);
    SettleNeutrals(runs);
    std::vector<LevelRun> joined;
    for (const LevelRun& run : runs) {
        if (!joined.empty() && joined.back().level == run.level)
            joined.back().span.end = run.span.end;
        else
            joined.push_back(run);
    }
    Reorder(joined);
    std::vector<DirectionalRun> visual;
    visual.reserve(joined.size());
    for (const LevelRun& run : joined)
        visual.push_back({run.span, run.level == 1});
    return visual;
}

} // namespace orrery::look
