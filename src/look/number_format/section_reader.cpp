#include "look/number_format/format_code.h"
#include "look/number_format/locale_names.h"
#include "util/text.h"

#include <array>
#include <utility>

namespace orrery::look {
namespace {

/// What stands for the halves of a day in codes, whatever the language of the program.
constexpr std::array<std::string_view, 5> kHalvesOfDay{"AM/PM", "A/P", "上午/下午", "午前/午後",
                                                       "오전/오후"};

char ToLower(char letter)
{
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

/// Splits a code into sections and these into tokens.
class SectionReader {
public:
    explicit SectionReader(std::string_view code) : code_(code) { sections_.emplace_back(); }

    std::optional<std::vector<Section>> Read()
    {
        while (at_ < code_.size() && !isDamaged_) {
            ReadToken();
        }
        if (isDamaged_) {
            return std::nullopt;
        }
        return std::move(sections_);
    }

private:
    Section& Current() { return sections_.back(); }
    bool StartsWith(std::string_view word) const
    {
        return util::EqualIgnoringCase(code_.substr(at_, word.size()), word);
    }
    void Add(TokenKind kind, char symbol = 0) { Current().tokens.push_back({kind, symbol, 1, {}}); }
    void AddText(TokenKind kind, std::string_view text)
    {
        Current().tokens.push_back({kind, 0, 1, std::string(text)});
    }
    void AddLiteral(std::string_view text)
    {
        auto& tokens = Current().tokens;
        if (tokens.empty() || tokens.back().kind != TokenKind::Literal) {
            AddText(TokenKind::Literal, {});
        }
        tokens.back().text += text;
    }
    void AddDatePart(TokenKind kind, std::size_t count)
    {
        Current().tokens.push_back({kind, 0, count, {}});
    }

    void ReadToken();
    void ReadMark(char mark);
    bool ReadWord();
    void ReadLetter(char letter);
    void ReadQuoted();
    void ReadBracketed();
    void ReadPoint();
    std::string_view TakeCharacter();
    std::size_t TakeRun(char letter);
    bool FollowsSeconds() const;

    std::string_view code_;
    std::size_t at_ = 0;
    std::vector<Section> sections_;
    bool hasDigits_ = false; ///< in the current section
    bool isDamaged_ = false;
};

/// The bytes of the next character.
std::string_view SectionReader::TakeCharacter()
{
    const auto begin = at_++;
    while (at_ < code_.size() && (static_cast<unsigned char>(code_[at_]) & 0xC0U) == 0x80U) {
        ++at_;
    }
    return code_.substr(begin, at_ - begin);
}

/// How often the letter stands here, in either case.
std::size_t SectionReader::TakeRun(char letter)
{
    const auto begin = at_;
    while (at_ < code_.size() && ToLower(code_[at_]) == letter) {
        ++at_;
    }
    return at_ - begin;
}

void SectionReader::ReadToken()
{
    const char mark = code_[at_];
    if (ReadWord()) {
        return;
    }
    if (const char letter = ToLower(mark); letter >= 'a' && letter <= 'z') {
        ReadLetter(letter);
    }
    else {
        ReadMark(mark);
    }
}

void SectionReader::ReadMark(char mark)
{
    switch (mark) {
    case '"':
        return ReadQuoted();
    case '[':
        return ReadBracketed();
    case '.':
        return ReadPoint();
    default:
        break;
    }
    const auto character = TakeCharacter();
    switch (mark) {
    case '\\':
    case '_':
    case '*':
        if (at_ >= code_.size()) {
            isDamaged_ = true;
        }
        else if (mark == '\\') {
            AddLiteral(TakeCharacter());
        }
        else {
            AddText(mark == '_' ? TokenKind::Blank : TokenKind::Fill, TakeCharacter());
        }
        break;
    case ';':
        sections_.emplace_back();
        hasDigits_ = false;
        break;
    case '0':
    case '#':
    case '?':
        Add(TokenKind::Digit, mark);
        hasDigits_ = true;
        break;
    case ',':
        Add(TokenKind::Comma);
        break;
    case '%':
        Add(TokenKind::Percent);
        break;
    case '/':
        Add(TokenKind::Slash);
        break;
    case '@':
        Add(TokenKind::Text);
        break;
    default:
        if (mark >= '1' && mark <= '9') {
            Add(TokenKind::FixedDigit, mark);
        }
        else {
            AddLiteral(character);
        }
    }
}

bool SectionReader::ReadWord()
{
    constexpr std::string_view kGeneral = "General";
    if (StartsWith(kGeneral)) {
        at_ += kGeneral.size();
        Add(TokenKind::General);
        return true;
    }
    for (const auto halves : kHalvesOfDay) {
        if (StartsWith(halves)) {
            AddText(TokenKind::AmPm, code_.substr(at_, halves.size()));
            at_ += halves.size();
            return true;
        }
    }
    return false;
}

void SectionReader::ReadQuoted()
{
    const auto end = code_.find('"', at_ + 1);
    if (end == std::string_view::npos) {
        isDamaged_ = true;
        return;
    }
    AddLiteral(code_.substr(at_ + 1, end - at_ - 1));
    at_ = end + 1;
}

void SectionReader::ReadBracketed()
{
    const auto end = code_.find(']', at_);
    if (end == std::string_view::npos) {
        isDamaged_ = true;
        return;
    }
    ReadBracket(code_.substr(at_ + 1, end - at_ - 1), Current());
    at_ = end + 1;
}

bool SectionReader::FollowsSeconds() const
{
    const auto& tokens = sections_.back().tokens;
    return !tokens.empty() && (tokens.back().kind == TokenKind::Second ||
                               tokens.back().kind == TokenKind::ElapsedSeconds);
}

void SectionReader::ReadPoint()
{
    ++at_;
    const std::size_t zeros = FollowsSeconds() ? TakeRun('0') : 0;
    if (zeros > 0) {
        AddDatePart(TokenKind::SecondFraction, zeros);
    }
    else {
        Add(TokenKind::Point);
    }
}

void SectionReader::ReadLetter(char letter)
{
    const auto begin = at_;
    const auto count = TakeRun(letter);
    const bool isJapanese = (Current().locale.language & kPrimaryLanguage) == kJapanese;
    const char next = at_ < code_.size() ? code_[at_] : '\0';
    switch (letter) {
    case 'y':
        return AddDatePart(TokenKind::Year, count);
    case 'm':
        return AddDatePart(TokenKind::Month, count);
    case 'd':
        return AddDatePart(TokenKind::Day, count);
    case 'h':
        return AddDatePart(TokenKind::Hour, count);
    case 's':
        return AddDatePart(TokenKind::Second, count);
    case 'g':
        return AddDatePart(TokenKind::EraName, count);
    case 'e':
        if (count == 1 && (next == '+' || next == '-') && hasDigits_) {
            ++at_;
            return Add(TokenKind::Exponent, next);
        }
        return AddDatePart(TokenKind::EraYear, count);
    case 'b':
        if (count == 1 && (next == '1' || next == '2')) { // Gregorian or Hijri calendar
            ++at_;
            return;
        }
        return AddDatePart(TokenKind::BuddhistYear, count);
    case 'a':
        if (count >= 3) {
            return AddDatePart(TokenKind::Day, count);
        }
        break;
    case 'r':
        if (isJapanese) {
            if (count > 1) {
                AddDatePart(TokenKind::EraName, 3);
            }
            return AddDatePart(TokenKind::EraYear, 2);
        }
        break;
    default:
        break;
    }
    AddLiteral(code_.substr(begin, count));
}

} // namespace

std::optional<std::vector<Section>> ReadSections(std::string_view code)
{
    return SectionReader(code).Read();
}

} // namespace orrery::look
