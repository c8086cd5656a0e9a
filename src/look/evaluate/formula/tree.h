#pragma once

#include "book/cell_address.h"
#include "look/evaluate/values/value.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orrery::formula {

/// A corner of an area as it is written: "$B6".
struct Corner {
    std::int32_t row = 1;
    std::int32_t column = 1;
    bool isRowRelative = false;
    bool isColumnRelative = false;
};

/// A cell, a rectangle, whole columns or rows, with the sheets before it.
struct AreaText {
    bool hasSheet = false;
    std::string firstSheet; ///< with `hasSheet`
    std::string lastSheet;  ///< the same one, but of "Jan:Mar!A1"
    Corner first;
    Corner last;
};

/// "Table1[[#Headers],[Day]:[Week]]". Without a table it is the one around the formula.
struct TableText {
    std::string table;
    bool hasHeaders = false;
    bool hasData = false;
    bool hasTotals = false;
    bool isThisRow = false;
    std::optional<std::string> firstColumn; ///< absent: all columns
    std::optional<std::string> lastColumn;
};

/// A name, perhaps of a sheet.
struct NameText {
    bool hasSheet = false;
    std::string sheet;
    std::string name;
};

enum class NodeKind : std::uint8_t {
    Number,
    Text,
    Logical,
    Error,
    Missing,
    Array,
    Area,
    Name,
    Table,
    External, ///< something of another workbook
    Unary,
    Binary,
    Call
};

enum class Operator : std::uint8_t {
    Equal,
    NotEqual,
    Less,
    LessOrEqual,
    Greater,
    GreaterOrEqual,
    Concatenate,
    Add,
    Subtract,
    Multiply,
    Divide,
    Power,
    Union,
    Intersection,
    Range,
    Plus,
    Minus,
    Percent,
    Single, ///< "@A1:A9"
    Spill   ///< "A1#"
};

struct Node {
    NodeKind kind = NodeKind::Missing;
    Operator op = Operator::Plus;
    std::uint32_t index = 0; ///< of the list of its kind; of logical values and errors the value
    std::uint32_t firstChild = 0; ///< in `Formula::children`
    std::uint32_t childCount = 0;
};

/// A parsed formula. Chains of operators lean to the left and may be as long as the text; all else
/// is nested at most `FormulaLimits::depth` deep.
struct Formula {
    std::vector<Node> nodes;
    std::vector<std::uint32_t> children; ///< indexes of nodes
    std::vector<double> numbers;
    std::vector<std::string> texts; ///< of Text; of Call the function's name, upper case, no prefix
    std::vector<ArrayPointer> arrays;
    std::vector<AreaText> areas;
    std::vector<TableText> tables;
    std::vector<NameText> names;
    std::uint32_t root = 0;

    const Node& Child(const Node& node, std::uint32_t at) const
    {
        return nodes[children[node.firstChild + at]];
    }
};

struct FormulaLimits {
    std::size_t length = 32'768; ///< bytes; Excel accepts 8,192 characters
    std::size_t nodes = 16'384;
    int depth = 100; ///< of brackets, calls and right operands; Excel accepts 64 nested calls
};

} // namespace orrery::formula
