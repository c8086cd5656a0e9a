#include "engines/builtin/xls/formula_text/formula_parts.h"

#include <utility>

namespace orrery::xls {

bool FormulaParts::Add(std::string text, Binding binding)
{
    size_ += text.size();
    pieces_.push_back({std::move(text), kNone});
    operands_.push_back({pieces_.size() - 1, pieces_.size() - 1, binding});
    return FitsText();
}

bool FormulaParts::Join(std::string_view op, Binding binding)
{
    if (operands_.size() < 2)
        return false;
    Operand right = operands_.back();
    operands_.pop_back();
    Operand& left = operands_.back();
    // Operators of one kind are computed from left to right.
    EncloseIf(left, left.binding < binding);
    EncloseIf(right, right.binding <= binding);
    Append(left, op);
    Append(left, right);
    left.binding = binding;
    return FitsText();
}

bool FormulaParts::PutBefore(std::string_view op, Binding binding)
{
    if (operands_.empty())
        return false;
    Operand& operand = operands_.back();
    EncloseIf(operand, operand.binding < Binding::Percent);
    Prepend(operand, op);
    operand.binding = binding;
    return FitsText();
}

bool FormulaParts::PutAfter(std::string_view op, Binding binding)
{
    if (operands_.empty())
        return false;
    Operand& operand = operands_.back();
    EncloseIf(operand, operand.binding < binding);
    Append(operand, op);
    operand.binding = binding;
    return FitsText();
}

bool FormulaParts::Enclose()
{
    if (operands_.empty())
        return false;
    EncloseIf(operands_.back(), true);
    return FitsText();
}

bool FormulaParts::Call(std::string_view name, std::size_t count)
{
    const bool isNamed = !name.empty();
    if (operands_.size() < count || (!isNamed && count == 0))
        return false;
    const std::size_t first = operands_.size() - count;
    if (isNamed)
        operands_.insert(operands_.begin() + static_cast<std::ptrdiff_t>(first),
                         {AddPiece(name), pieces_.size() - 1, Binding::Operand});
    Operand call = operands_[first];
    Append(call, "(");
    for (std::size_t i = first + 1; i < operands_.size(); ++i) {
        if (i > first + 1)
            Append(call, ",");
        EncloseIf(operands_[i], operands_[i].binding == Binding::Union);
        Append(call, operands_[i]);
    }
    Append(call, ")");
    call.binding = Binding::Operand;
    operands_.resize(first);
    operands_.push_back(call);
    return FitsText();
}

std::optional<std::string> FormulaParts::Take() const
{
    if (operands_.size() != 1)
        return std::nullopt;
    std::string text;
    text.reserve(size_);
    for (std::size_t at = operands_[0].first; at != kNone; at = pieces_[at].next)
        text += pieces_[at].text;
    return text;
}

std::size_t FormulaParts::AddPiece(std::string_view text)
{
    size_ += text.size();
    pieces_.push_back({std::string(text), kNone});
    return pieces_.size() - 1;
}

void FormulaParts::Prepend(Operand& operand, std::string_view text)
{
    const std::size_t piece = AddPiece(text);
    pieces_[piece].next = operand.first;
    operand.first = piece;
}

void FormulaParts::Append(Operand& operand, std::string_view text)
{
    const std::size_t piece = AddPiece(text);
    pieces_[operand.last].next = piece;
    operand.last = piece;
}

void FormulaParts::Append(Operand& operand, const Operand& other)
{
    pieces_[operand.last].next = other.first;
    operand.last = other.last;
}

void FormulaParts::EncloseIf(Operand& operand, bool isNeeded)
{
    if (!isNeeded)
        return;
    Prepend(operand, "(");
    Append(operand, ")");
    operand.binding = Binding::Operand;
}

} // namespace orrery::xls
