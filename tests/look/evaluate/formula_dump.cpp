// Computes the formulas of workbooks, for check_formulas.py: a path on each line of standard input,
// and on standard output a line of JSON for each: {"sheets": [name, ...], "cells": [[sheet from 0,
// row, column, formula, source, value, stored result], ...]}, or null where the workbook is not
// opened.
//
//     formula_dump NOW

#include "book/look/workbook_view.h"
#include "engines/builtin/xls/look/look.h"
#include "engines/builtin/xlsx/look/look.h"
#include "look/evaluate/evaluator.h"
#include "look/number_format/number_format.h"
#include "util/error.h"
#include "util/numbers.h"

#include <array>
#include <charconv>
#include <filesystem>
#include <iostream>
#include <string>
#include <string_view>
#include <variant>

namespace {

using namespace orrery;

std::string Quoted(std::string_view text)
{
    std::string json = "\"";
    for (const char c : text) {
        constexpr std::string_view digits = "0123456789abcdef";
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\')
            (json += '\\') += c;
        else if (byte < 0x20)
            ((json += "\\u00") += digits[byte >> 4U]) += digits[byte & 0xFU];
        else
            json += c;
    }
    return json + '"';
}

std::string Digits(double number)
{
    std::array<char, 40> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    return {digits.data(), end};
}

struct ToJson {
    std::string operator()(std::monostate) const { return "null"; }
    std::string operator()(double number) const { return Digits(number); }
    std::string operator()(const std::string& text) const { return Quoted(text); }
    std::string operator()(bool logical) const { return logical ? "true" : "false"; }
    std::string operator()(book::CellError error) const
    {
        return "{\"error\":" + Quoted(look::ErrorText(error)) + "}";
    }
};

std::string_view SourceName(look::EvaluatedCell::Source source)
{
    static constexpr std::array<std::string_view, 4> kNames = {"constant", "computed", "stored",
                                                               "not computed"};
    return kNames[static_cast<std::size_t>(source)];
}

std::string DumpSheet(look::Evaluator& evaluator, const book::SheetLook& look, std::size_t sheet)
{
    std::string json;
    for (const book::Cell& cell : look.cells) {
        const auto formula = static_cast<std::size_t>(cell.formula);
        const auto found = evaluator.ValueOf(sheet, cell.address);
        if (found.source == look::EvaluatedCell::Source::Constant)
            continue;
        const std::string text = cell.formula < 0 ? "" : look.formulas[formula].text;
        json += (json.empty() ? "[" : ",[") + std::to_string(sheet) + "," +
                std::to_string(cell.address.row) + "," + std::to_string(cell.address.column) + "," +
                Quoted(text) + ",\"" + std::string(SourceName(found.source)) + "\"," +
                std::visit(ToJson(), found.value) + "," + std::visit(ToJson(), cell.content) + "]";
    }
    return json;
}

std::string Dump(const std::filesystem::path& path, double now)
{
    const std::string extension = path.extension().string();
    const auto view = extension == ".xls" ? xls::OpenLook(path) : xlsx::OpenLook(path);
    look::Evaluator evaluator(*view, now);
    std::string json;
    for (std::size_t sheet = 0; sheet < view->Workbook().sheets.size(); ++sheet) {
        try {
            const std::string cells = DumpSheet(evaluator, view->Sheet(sheet), sheet);
            json += (json.empty() || cells.empty() ? "" : ",") + cells;
        }
        catch (const util::Error&) {
            continue; // a damaged sheet
        }
    }
    std::string names;
    for (const auto& summary : view->Workbook().sheets)
        names += (names.empty() ? "" : ",") + Quoted(summary.name);
    return "{\"sheets\":[" + names + "],\"cells\":[" + json + "]}";
}

} // namespace

int main(int count, char** arguments)
{
    const auto now = count == 2 ? util::ReadNumber(arguments[1]) : std::nullopt;
    if (!now)
        return 2;
    for (std::string line; std::getline(std::cin, line);) {
        try {
            std::cout << Dump(line, *now) << std::endl;
        }
        catch (const util::Error&) {
            std::cout << "null" << std::endl;
        }
    }
    return 0;
}
