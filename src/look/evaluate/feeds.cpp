#include "look/evaluate/feeds.h"

#include "look/evaluate/formula/parser.h"

#include <algorithm>
#include <string>
#include <vector>

namespace orrery::formula {
namespace {

constexpr std::size_t kMostCells = 200'000;
constexpr int kMostNames = 64;

/// The areas that a formula may read.
struct Reads {
    std::vector<Area> areas;
    bool isUnknown = false; ///< it may read any cell
};

class ReadsCollector {
public:
    ReadsCollector(Engine& engine, const Place& place) : engine_(engine), place_(place) {}

    Reads Collect(const Formula& formula)
    {
        AddFormula(formula, place_);
        return std::move(reads_);
    }

private:
    void AddFormula(const Formula& formula, const Place& place)
    {
        for (const Node& node : formula.nodes)
            AddNode(formula, node, place);
    }
    void AddNode(const Formula& formula, const Node& node, const Place& place)
    {
        switch (node.kind) {
        case NodeKind::Area:
            if (const auto area = engine_.Names().AreaOf(formula.areas[node.index], place))
                reads_.areas.push_back(*area);
            break;
        case NodeKind::Table: {
            const auto area = engine_.Names().AreaOfTable(formula.tables[node.index], place);
            if (std::holds_alternative<Area>(area))
                reads_.areas.push_back(std::get<Area>(area));
            break;
        }
        case NodeKind::Name:
            AddName(formula.names[node.index], place);
            break;
        case NodeKind::Binary:
            reads_.isUnknown = reads_.isUnknown || node.op == Operator::Range;
            break;
        case NodeKind::Unary:
            reads_.isUnknown = reads_.isUnknown || node.op == Operator::Spill;
            break;
        case NodeKind::Call: {
            const std::string& name = formula.texts[node.index];
            reads_.isUnknown = reads_.isUnknown || name == "INDIRECT" || name == "OFFSET";
            break;
        }
        default:
            break;
        }
    }
    void AddName(const NameText& text, const Place& place)
    {
        const book::DefinedName* name = engine_.Names().FindName(text, place.sheet);
        if (name == nullptr)
            return;
        const auto formula = engine_.Parsed(name->formula);
        if (formula == nullptr || ++names_ > kMostNames) {
            reads_.isUnknown = true;
            return;
        }
        AddFormula(*formula, {place.sheet, place.cell, {1, 1}});
    }

    Engine& engine_;
    Place place_;
    Reads reads_;
    int names_ = 0;
};

bool IsWritten(const Area& area, const std::set<CellKey>& written)
{
    return std::any_of(written.begin(), written.end(), [&](const CellKey& key) {
        return key.sheet >= area.firstSheet && key.sheet <= area.lastSheet &&
               area.range.Contains(key.cell);
    });
}

} // namespace

bool IsFedByWritten(Engine& engine, const CellKey& formula, const std::set<CellKey>& written,
                    std::set<CellKey>& unfed)
{
    if (written.empty() || unfed.count(formula) != 0)
        return false;
    std::set<CellKey> seen = {formula};
    std::vector<CellKey> waiting = {formula};
    while (!waiting.empty()) {
        const CellKey key = waiting.back();
        waiting.pop_back();
        const std::string* text = engine.FormulaText(key);
        const bool isAffordable = text != nullptr && engine.Spend(1 + StepsOfText(text->size()));
        const auto parsed = isAffordable ? ParseFormula(*text) : std::nullopt;
        if (!parsed || seen.size() > kMostCells)
            return true;
        const Reads reads =
            ReadsCollector(engine, {key.sheet, key.cell, key.cell}).Collect(*parsed);
        if (reads.isUnknown)
            return true;
        for (const Area& area : reads.areas) {
            if (IsWritten(area, written) || !engine.Spend(1))
                return true;
            for (std::size_t sheet = area.firstSheet; sheet <= area.lastSheet; ++sheet) {
                const SheetCells& cells = engine.Sheet(sheet);
                cells.ForEach(area.range, [&](std::uint32_t at) {
                    const book::Cell& cell = cells.Look().cells[at];
                    CellKey read{sheet, cell.address};
                    const auto owner = cells.ArrayOwner(cell.address);
                    if (owner)
                        read.cell = cells.Look().cells[*owner].address;
                    if ((cell.formula >= 0 || owner) && unfed.count(read) == 0 &&
                        seen.insert(read).second)
                        waiting.push_back(read);
                    return engine.Spend(1);
                });
            }
        }
    }
    unfed.insert(seen.begin(), seen.end());
    return false;
}

} // namespace orrery::formula
