#include "look/evaluate/functions/functions.h"

#include "look/evaluate/functions/date/date.h"
#include "look/evaluate/functions/financial/financial.h"
#include "look/evaluate/functions/information/information.h"
#include "look/evaluate/functions/logical/logical.h"
#include "look/evaluate/functions/lookup/lookup.h"
#include "look/evaluate/functions/math/math.h"
#include "look/evaluate/functions/statistics/statistics.h"
#include "look/evaluate/functions/text/text.h"

#include <unordered_map>

namespace orrery::formula {

const FunctionEntry* FindFunction(std::string_view name)
{
    static const auto kByName = [] {
        std::unordered_map<std::string_view, const FunctionEntry*> byName;
        for (const FunctionList* list :
             {&LogicalFunctions(), &InformationFunctions(), &MathFunctions(), &RoundingFunctions(),
              &SumFunctions(), &NotationFunctions(), &TextFunctions(), &CharacterFunctions(),
              &TextValueFunctions(), &DateFunctions(), &DaySpanFunctions(), &CountFunctions(),
              &StatisticsFunctions(), &ConditionFunctions(), &SubtotalFunctions(),
              &LookupFunctions(), &ReferenceFunctions(), &TableFunctions(),
              &FinancialFunctions()}) {
            for (const FunctionEntry& entry : *list)
                byName.emplace(entry.name, &entry);
        }
        return byName;
    }();
    const auto found = kByName.find(name);
    return found == kByName.end() ? nullptr : found->second;
}

} // namespace orrery::formula
