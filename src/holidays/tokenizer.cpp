#include "holidays/tokenizer.h"

namespace orrery::holidays {

namespace {

bool IsBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

bool IsOperator(char c)
{
    return c == '=' || c == '<' || c == '>';
}

bool IsPunctuation(char c)
{
    return c == '(' || c == ')' || c == ',';
}

/// A line with a read position, counted from 1.
class Scanner {
public:
    Scanner(std::string_view line, std::int32_t& pos) : line_(line), pos_(pos) {}

    bool AtCharacter(std::size_t ahead = 0) const
    {
        return pos_ >= 1 && static_cast<std::size_t>(pos_) + ahead <= line_.size();
    }
    char Peek(std::size_t ahead = 0) const
    {
        return line_[static_cast<std::size_t>(pos_) - 1 + ahead];
    }
    bool NextIs(char c) const { return AtCharacter(1) && Peek(1) == c; }
    void Skip(std::int32_t count = 1) { pos_ += count; }
    void Take(std::string& token)
    {
        token += Peek();
        Skip();
    }

private:
    std::string_view line_;
    std::int32_t& pos_;
};

/// Takes the quoted text that begins at the scanner. Without a closing quote it takes the rest of
/// the line.
void TakeQuotedRun(Scanner& scanner, bool keepQuotes, std::string& token)
{
    const char quote = scanner.Peek();
    if (keepQuotes)
        token += quote;
    scanner.Skip();
    while (scanner.AtCharacter()) {
        if (scanner.Peek() != quote) {
            scanner.Take(token);
        }
        else if (scanner.NextIs(quote)) { // a doubled quote is kept in any case
            scanner.Take(token);
            scanner.Take(token);
        }
        else {
            if (keepQuotes)
                token += quote;
            scanner.Skip();
            return;
        }
    }
}

/// Takes "=", "<", ">" or two of them.
void TakeOperator(Scanner& scanner, std::string& token)
{
    scanner.Take(token);
    if (scanner.AtCharacter() && IsOperator(scanner.Peek()))
        scanner.Take(token);
}

} // namespace

void SkipBlanks(std::string_view line, std::int32_t& pos)
{
    Scanner scanner(line, pos);
    while (scanner.AtCharacter() && IsBlank(scanner.Peek()))
        scanner.Skip();
}

std::string GetToken(std::string_view line, std::int32_t& pos, bool keepQuotes)
{
    SkipBlanks(line, pos);
    Scanner scanner(line, pos);
    std::string token;
    while (scanner.AtCharacter()) {
        const char c = scanner.Peek();
        if (IsBlank(c))
            return token;
        if (IsOperator(c)) {
            if (token.empty())
                TakeOperator(scanner, token);
            return token;
        }
        if (IsPunctuation(c)) {
            if (token.empty())
                scanner.Take(token);
            return token;
        }
        if (c == '/' && scanner.NextIs('*')) {
            if (token.empty()) {
                scanner.Take(token);
                scanner.Take(token);
            }
            return token;
        }
        if (c == '"' || c == '\'') {
            TakeQuotedRun(scanner, keepQuotes, token);
        }
        else {
            scanner.Take(token);
        }
    }
    return token;
}

} // namespace orrery::holidays
