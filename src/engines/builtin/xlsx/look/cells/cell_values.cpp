#include "engines/builtin/xlsx/look/cells/cell_values.h"

#include "engines/builtin/xlsx/formula/escaped_text.h"
#include "engines/builtin/xlsx/look/cells/iso_date.h"
#include "engines/builtin/xlsx/look/cells/limits.h"
#include "engines/builtin/xlsx/look/style/attributes.h"
#include "engines/builtin/xml/reading.h"

namespace orrery::xlsx {
namespace {

using book::CellError;

constexpr Words<ValueType, 7> kTypes = {{
    {"n", ValueType::Number},
    {"s", ValueType::Shared},
    {"str", ValueType::Text},
    {"inlineStr", ValueType::Inline},
    {"b", ValueType::Logical},
    {"e", ValueType::Error},
    {"d", ValueType::Date},
}};

constexpr Words<CellError, 10> kErrors = {{
    {"#NULL!", CellError::Null},
    {"#DIV/0!", CellError::DivisionByZero},
    {"#VALUE!", CellError::Value},
    {"#REF!", CellError::Reference},
    {"#NAME?", CellError::Name},
    {"#NUM!", CellError::Number},
    {"#N/A", CellError::NotAvailable},
    {"#GETTING_DATA", CellError::GettingData},
    {"#SPILL!", CellError::Spill},
    {"#CALC!", CellError::Calculation},
}};

CellError ErrorOf(std::string_view text)
{
    return builtin::ValueOfWord(kErrors, text).value_or(CellError::Value);
}

} // namespace

ValueType ValueTypeOf(std::string_view word)
{
    return builtin::ValueOfWord(kTypes, word).value_or(ValueType::Number);
}

void CellValues::Set(book::Cell& cell, ValueType type, std::string_view text)
{
    switch (type) {
    case ValueType::Number:
        if (const auto number = ParseNumber(text))
            cell.content = *number;
        break;
    case ValueType::Shared:
        SetShared(cell, text);
        break;
    case ValueType::Text:
    case ValueType::Inline:
        SetText(cell, text.find("_x") == text.npos ? std::string(text) : UnescapeText(text));
        break;
    case ValueType::Logical:
        if (!text.empty())
            cell.content = text == "1" || text == "true";
        break;
    case ValueType::Error:
        if (!text.empty())
            cell.content = ErrorOf(text);
        break;
    case ValueType::Date:
        if (const auto date = ParseIsoDate(text, context_.dateSystem))
            cell.content = *date;
        else if (const auto number = ParseNumber(text))
            cell.content = *number;
        break;
    }
}

void CellValues::SetShared(book::Cell& cell, std::string_view text)
{
    const auto index = xml::ReadDigits(text);
    if (!index || *index >= context_.texts.Count()) {
        if (!text.empty())
            context_.leftOut.Add("text", book::FormatCellAddress(cell.address),
                                 "there is no such shared text");
        return;
    }
    const std::uint64_t key = std::uint64_t{*index} << 32U | cell.style;
    const auto known = richTexts_.find(key);
    const bool needsRuns = context_.texts.IsRich(*index) && known == richTexts_.end();
    const book::Font* font = needsRuns ? &context_.look.styles[cell.style].font : nullptr;
    RichText rich = context_.texts.At(*index, context_.Colors(), font);
    SetText(cell, std::move(rich.text));
    if (needsRuns)
        richTexts_.emplace(key, AddRuns(std::move(rich.runs)));
    if (context_.texts.IsRich(*index) && std::holds_alternative<std::string>(cell.content))
        cell.richText = richTexts_.at(key);
}

void CellValues::ReadInline(xml::Scanner& scanner, book::Cell& cell)
{
    const book::Font font = context_.look.styles[cell.style].font;
    RichText rich = ReadRichText(scanner, context_.Colors(), &font);
    SetText(cell, std::move(rich.text));
    if (std::holds_alternative<std::string>(cell.content))
        cell.richText = AddRuns(std::move(rich.runs));
}

void CellValues::SetText(book::Cell& cell, std::string text)
{
    if (text.size() > kMaxCellText || bytes_ + text.size() > context_.limits.textBytes) {
        context_.leftOut.Add("text", book::FormatCellAddress(cell.address),
                             "there is more text than a sheet can have");
        return;
    }
    bytes_ += text.size();
    cell.content = std::move(text);
}

std::int32_t CellValues::AddRuns(std::vector<book::TextRun> runs)
{
    if (runs.empty() || runs_ + runs.size() > kMaxRuns)
        return -1;
    runs_ += runs.size();
    context_.look.richTexts.push_back(std::move(runs));
    return static_cast<std::int32_t>(context_.look.richTexts.size()) - 1;
}

} // namespace orrery::xlsx
