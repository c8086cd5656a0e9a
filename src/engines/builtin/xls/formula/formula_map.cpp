#include "engines/builtin/xls/formula/formula_map.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/formula/formula_places.h"
#include "engines/builtin/xls/formula/formula_tokens.h"

namespace orrery::xls {
namespace {

using Kind = FormulaUse::Kind;

void RemapUse(std::string& records, std::size_t rgce, const FormulaUse& use, const FormulaMap& map)
{
    const std::size_t nameAt = rgce + use.nameAt;
    if (use.kind == Kind::Name) {
        PutU32(records, nameAt, map.name(ReadU32(records, nameAt)));
        return;
    }
    const std::size_t sheetAt = rgce + use.sheetAt;
    const auto sheet = ReadU16(records, sheetAt);
    if (use.kind == Kind::ExternName)
        PutU32(records, nameAt, map.externName(sheet, ReadU32(records, nameAt)));
    PutU16(records, sheetAt, map.sheet(sheet));
}

/// Charts, controls and rules store no result that could be stale.
bool HasResult(RecordType type)
{
    return type == RecordType::Formula || type == RecordType::SharedFormula ||
           type == RecordType::Array || type == RecordType::Name;
}

void CollectUse(std::string_view rgce, const FormulaUse& use, FormulaFacts& facts)
{
    switch (use.kind) {
    case Kind::Sheet:
        facts.sheets.insert(ReadU16(rgce, use.sheetAt));
        break;
    case Kind::Name:
        facts.names.insert(ReadU32(rgce, use.nameAt));
        break;
    case Kind::ExternName:
        facts.externNames.insert(ReadU16(rgce, use.sheetAt));
        break;
    }
}

void CollectFacts(std::string_view rgce, FormulaFacts& facts)
{
    FormulaTokenReader reader(rgce);
    while (const auto token = reader.Next()) {
        if (const auto use = UseOf(*token))
            CollectUse(rgce, *use, facts);
        facts.readsElsewhere |= IsVolatile(rgce, *token);
    }
    facts.readsElsewhere |= !reader.Complete();
}

} // namespace

void RemapFormulas(std::string& records, const FormulaMap& map)
{
    // The edits keep sizes and change no record's header, so the places stay right.
    ForEachFormula(records, [&](const FormulaPlace& place) {
        FormulaTokenReader reader(std::string_view(records).substr(place.begin, place.size));
        while (const auto token = reader.Next()) {
            if (const auto use = UseOf(*token))
                RemapUse(records, place.begin, *use, map);
        }
    });
}

FormulaFacts ReadFacts(std::string_view records)
{
    FormulaFacts facts;
    const bool complete = ForEachFormula(records, [&](const FormulaPlace& place) {
        facts.hasFormulas |= place.record == RecordType::Formula;
        if (HasResult(place.record))
            CollectFacts(records.substr(place.begin, place.size), facts);
    });
    facts.readsElsewhere |= !complete;
    return facts;
}

} // namespace orrery::xls
