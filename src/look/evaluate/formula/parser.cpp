#include "look/evaluate/formula/parser.h"

#include "look/evaluate/formula/lexer.h"
#include "look/evaluate/formula/table_text.h"
#include "util/text.h"

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

namespace orrery::formula {
namespace {

struct BinarySymbol {
    std::string_view symbol;
    Operator op;
    int level; ///< operators of a higher one bind more
};
constexpr std::array<BinarySymbol, 12> kBinarySymbols = {{{"=", Operator::Equal, 0},
                                                          {"<>", Operator::NotEqual, 0},
                                                          {"<", Operator::Less, 0},
                                                          {"<=", Operator::LessOrEqual, 0},
                                                          {">", Operator::Greater, 0},
                                                          {">=", Operator::GreaterOrEqual, 0},
                                                          {"&", Operator::Concatenate, 1},
                                                          {"+", Operator::Add, 2},
                                                          {"-", Operator::Subtract, 2},
                                                          {"*", Operator::Multiply, 3},
                                                          {"/", Operator::Divide, 3},
                                                          {"^", Operator::Power, 4}}};
constexpr int kHighestLevel = 4;

/// Functions that came after the formats have such a prefix in files.
std::string FunctionName(std::string_view name)
{
    std::string upper = util::ToUpperAscii(name);
    for (const std::string_view prefix : {"_XLFN.", "_XLWS.", "_XLUDF."}) {
        if (upper.starts_with(prefix))
            upper.erase(0, prefix.size());
    }
    return upper;
}

class Parser {
public:
    Parser(std::string_view text, const FormulaLimits& limits) : lexer_(text), limits_(limits)
    {
        Advance();
    }
    std::optional<Formula> Parse();

private:
    using NodeIndex = std::uint32_t;

    NodeIndex Expression(int level);
    NodeIndex Signed();
    NodeIndex Union();
    NodeIndex Intersection();
    NodeIndex Section();
    NodeIndex Primary();
    NodeIndex AfterSheet();
    NodeIndex Word();
    NodeIndex Call();
    NodeIndex InBrackets();
    NodeIndex ArrayConstant();
    std::optional<Value> ArrayItem();
    bool BeginsOperand() const;

    NodeIndex Add(NodeKind kind, std::size_t index = 0);
    NodeIndex AddOperator(Operator op, std::initializer_list<NodeIndex> operands);
    template <class Item> NodeIndex AddItem(NodeKind kind, std::vector<Item>& list, Item item)
    {
        list.push_back(std::move(item));
        return Add(kind, list.size() - 1);
    }
    NodeIndex Fail()
    {
        failed_ = true;
        return 0;
    }
    void Advance() { token_ = lexer_.Next(); }
    bool IsSymbol(std::string_view symbol) const
    {
        return token_.kind == TokenKind::Symbol && token_.text == symbol;
    }
    bool Take(std::string_view symbol)
    {
        const bool is = IsSymbol(symbol);
        if (is)
            Advance();
        return is;
    }

    Lexer lexer_;
    FormulaLimits limits_;
    Token token_;
    Formula formula_;
    int depth_ = 0;
    bool failed_ = false;
};

std::optional<Formula> Parser::Parse()
{
    formula_.root = Expression(0);
    if (failed_ || token_.kind != TokenKind::End)
        return std::nullopt;
    return std::move(formula_);
}

Parser::NodeIndex Parser::Add(NodeKind kind, std::size_t index)
{
    if (formula_.nodes.size() >= limits_.nodes)
        return Fail();
    Node node;
    node.kind = kind;
    node.index = static_cast<std::uint32_t>(index);
    formula_.nodes.push_back(node);
    return static_cast<NodeIndex>(formula_.nodes.size() - 1);
}

Parser::NodeIndex Parser::AddOperator(Operator op, std::initializer_list<NodeIndex> operands)
{
    const NodeIndex added = Add(operands.size() == 1 ? NodeKind::Unary : NodeKind::Binary);
    if (failed_)
        return 0;
    Node& node = formula_.nodes[added];
    node.op = op;
    node.firstChild = static_cast<std::uint32_t>(formula_.children.size());
    node.childCount = static_cast<std::uint32_t>(operands.size());
    formula_.children.insert(formula_.children.end(), operands.begin(), operands.end());
    return added;
}

Parser::NodeIndex Parser::Expression(int level)
{
    if (level > kHighestLevel)
        return Signed();
    NodeIndex left = Expression(level + 1);
    while (!failed_) {
        const auto found =
            std::find_if(kBinarySymbols.begin(), kBinarySymbols.end(), [&](const auto& candidate) {
                return candidate.level == level && IsSymbol(candidate.symbol);
            });
        if (found == kBinarySymbols.end())
            break;
        Advance();
        left = AddOperator(found->op, {left, Expression(level + 1)});
    }
    return left;
}

/// Signs are collected rather than nested: "-----1" may be as long as the text.
Parser::NodeIndex Parser::Signed()
{
    std::vector<Operator> signs;
    while (IsSymbol("-") || IsSymbol("+") || IsSymbol("@")) {
        const Operator sign = token_.text == "-"   ? Operator::Minus
                              : token_.text == "+" ? Operator::Plus
                                                   : Operator::Single;
        // Two signs change nothing but that a text becomes a number.
        if (sign == Operator::Minus && signs.size() > 2 && signs.back() == sign &&
            signs[signs.size() - 2] == sign)
            signs.pop_back();
        else if (signs.empty() || sign == Operator::Minus || signs.back() != sign)
            signs.push_back(sign);
        Advance();
    }
    if (signs.size() > static_cast<std::size_t>(limits_.depth))
        return Fail();
    NodeIndex operand = Intersection();
    for (int percents = 0; !failed_ && IsSymbol("%"); ++percents) {
        if (percents >= limits_.depth)
            return Fail();
        Advance();
        operand = AddOperator(Operator::Percent, {operand});
    }
    while (!failed_ && !signs.empty()) {
        operand = AddOperator(signs.back(), {operand});
        signs.pop_back();
    }
    return operand;
}

/// In brackets, where a comma does not separate arguments.
Parser::NodeIndex Parser::Union()
{
    NodeIndex left = Expression(0);
    while (!failed_ && Take(","))
        left = AddOperator(Operator::Union, {left, Expression(0)});
    return left;
}

bool Parser::BeginsOperand() const
{
    switch (token_.kind) {
    case TokenKind::Area:
    case TokenKind::Word:
    case TokenKind::Function:
    case TokenKind::Sheet:
        return true;
    default:
        return IsSymbol("(");
    }
}

Parser::NodeIndex Parser::Intersection()
{
    NodeIndex left = Section();
    while (!failed_ && token_.hasSpaceBefore && BeginsOperand())
        left = AddOperator(Operator::Intersection, {left, Section()});
    return left;
}

Parser::NodeIndex Parser::Section()
{
    NodeIndex left = Primary();
    while (!failed_ && IsSymbol(":")) {
        Advance();
        left = AddOperator(Operator::Range, {left, Primary()});
    }
    if (!failed_ && IsSymbol("#")) {
        Advance();
        left = AddOperator(Operator::Spill, {left});
    }
    return left;
}

Parser::NodeIndex Parser::Primary()
{
    Token token = token_;
    switch (token.kind) {
    case TokenKind::Number:
        Advance();
        return AddItem(NodeKind::Number, formula_.numbers, token.number);
    case TokenKind::Text:
        Advance();
        return AddItem(NodeKind::Text, formula_.texts, std::move(token.text));
    case TokenKind::Error:
        Advance();
        // "#REF!A1" is of a sheet that is gone.
        if (token.error == CellError::Reference && !token_.hasSpaceBefore &&
            (token_.kind == TokenKind::Area || token_.kind == TokenKind::Word))
            Advance();
        return Add(NodeKind::Error, static_cast<std::size_t>(token.error));
    case TokenKind::Area:
        Advance();
        return AddItem(NodeKind::Area, formula_.areas, std::move(token.area));
    case TokenKind::Word:
        return Word();
    case TokenKind::Function:
        return Call();
    case TokenKind::Sheet:
        return AfterSheet();
    case TokenKind::Brackets: {
        auto table = ReadTableText("", token.text);
        Advance();
        return table ? AddItem(NodeKind::Table, formula_.tables, std::move(*table)) : Fail();
    }
    default:
        return IsSymbol("(") ? InBrackets() : IsSymbol("{") ? ArrayConstant() : Fail();
    }
}

Parser::NodeIndex Parser::InBrackets()
{
    if (++depth_ > limits_.depth)
        return Fail();
    Advance();
    const NodeIndex inner = Union();
    --depth_;
    return Take(")") ? inner : Fail();
}

Parser::NodeIndex Parser::Word()
{
    std::string word = std::move(token_.text);
    Advance();
    const bool isTrue = util::EqualIgnoringCase(word, "TRUE");
    if (isTrue || util::EqualIgnoringCase(word, "FALSE"))
        return Add(NodeKind::Logical, isTrue ? 1 : 0);
    if (token_.kind == TokenKind::Brackets && !token_.hasSpaceBefore) {
        auto table = ReadTableText(word, token_.text);
        Advance();
        return table ? AddItem(NodeKind::Table, formula_.tables, std::move(*table)) : Fail();
    }
    return AddItem(NodeKind::Name, formula_.names, NameText{false, "", std::move(word)});
}

Parser::NodeIndex Parser::AfterSheet()
{
    const Token sheet = std::move(token_);
    Advance();
    const bool isOwnBook = sheet.text == "[0]"; // this workbook, before its names
    const bool isExternal = !isOwnBook && sheet.text.find('[') != std::string::npos;
    Token token = token_;
    if (token.kind == TokenKind::Function && !isExternal)
        return Fail(); // a macro of a sheet
    if (token.kind == TokenKind::Function) {
        Call();
        return failed_ ? 0 : Add(NodeKind::External);
    }
    Advance();
    if (token.kind == TokenKind::Error)
        return Add(NodeKind::Error, static_cast<std::size_t>(token.error));
    if (token.kind != TokenKind::Area && token.kind != TokenKind::Word)
        return Fail();
    if (isExternal)
        return Add(NodeKind::External);
    if (token.kind == TokenKind::Word)
        return AddItem(NodeKind::Name, formula_.names,
                       NameText{!isOwnBook, sheet.text, std::move(token.text)});
    token.area.hasSheet = true;
    token.area.firstSheet = sheet.text;
    token.area.lastSheet = sheet.lastSheet;
    return AddItem(NodeKind::Area, formula_.areas, std::move(token.area));
}

Parser::NodeIndex Parser::Call()
{
    std::string name = FunctionName(token_.text);
    if (++depth_ > limits_.depth)
        return Fail();
    Advance();
    std::vector<NodeIndex> arguments;
    if (!IsSymbol(")")) {
        do {
            arguments.push_back(IsSymbol(",") || IsSymbol(")") ? Add(NodeKind::Missing)
                                                               : Expression(0));
        } while (!failed_ && Take(","));
    }
    --depth_;
    if (failed_ || !Take(")"))
        return Fail();
    const NodeIndex added = AddItem(NodeKind::Call, formula_.texts, std::move(name));
    if (failed_)
        return 0;
    Node& node = formula_.nodes[added];
    node.firstChild = static_cast<std::uint32_t>(formula_.children.size());
    node.childCount = static_cast<std::uint32_t>(arguments.size());
    formula_.children.insert(formula_.children.end(), arguments.begin(), arguments.end());
    return added;
}

std::optional<Value> Parser::ArrayItem()
{
    double sign = 1;
    if (Take("-"))
        sign = -1;
    else
        Take("+");
    Token token = std::move(token_);
    Advance();
    switch (token.kind) {
    case TokenKind::Number:
        return Value(sign * token.number);
    case TokenKind::Text:
        return Value(std::move(token.text));
    case TokenKind::Error:
        return Value(token.error);
    case TokenKind::Word:
        if (util::EqualIgnoringCase(token.text, "TRUE"))
            return Value(true);
        if (util::EqualIgnoringCase(token.text, "FALSE"))
            return Value(false);
        return std::nullopt;
    default:
        return std::nullopt;
    }
}

Parser::NodeIndex Parser::ArrayConstant()
{
    Advance();
    Array array;
    std::int32_t width = 0;
    array.rows = 0;
    for (bool goesOn = true; goesOn;) {
        width = 0;
        do {
            auto item = ArrayItem();
            if (!item || array.values.size() >= limits_.nodes)
                return Fail();
            array.values.push_back(std::move(*item));
            ++width;
        } while (Take(","));
        array.columns = array.rows == 0 ? width : array.columns;
        if (width != array.columns)
            return Fail();
        ++array.rows;
        goesOn = Take(";");
    }
    if (!Take("}"))
        return Fail();
    ArrayPointer pointer = std::make_shared<const Array>(std::move(array));
    return AddItem(NodeKind::Array, formula_.arrays, std::move(pointer));
}

} // namespace

std::optional<Formula> ParseFormula(std::string_view text, const FormulaLimits& limits)
{
    if (text.size() > limits.length)
        return std::nullopt;
    return Parser(text, limits).Parse();
}

} // namespace orrery::formula
