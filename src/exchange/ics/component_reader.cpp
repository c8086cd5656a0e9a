#include "exchange/ics/component_reader.h"

#include "util/code_page.h"
#include "util/text.h"

#include <algorithm>
#include <array>
#include <optional>

namespace orrery::exchange {
namespace {

/// The largest component that is parsed, in bytes.
constexpr std::size_t kLargest = std::size_t{256} << 10U;

struct ComponentName {
    std::string_view name;
    Component::Kind kind;
};
constexpr std::array kComponents = {ComponentName{"VEVENT", Component::Kind::Event},
                                    ComponentName{"VTIMEZONE", Component::Kind::Zone},
                                    ComponentName{"VTODO", Component::Kind::Todo},
                                    ComponentName{"VJOURNAL", Component::Kind::Journal}};

constexpr std::array<std::string_view, 19> kEventProperties = {"DTSTART",
                                                               "DTEND",
                                                               "DURATION",
                                                               "SUMMARY",
                                                               "UID",
                                                               "STATUS",
                                                               "CATEGORIES",
                                                               "RRULE",
                                                               "RDATE",
                                                               "EXDATE",
                                                               "EXRULE",
                                                               "RECURRENCE-ID",
                                                               "X-BDAY",
                                                               "X-BIRTHDAY",
                                                               "X-APPLE-OMIT-YEAR",
                                                               "X-KDE-KABC-BIRTHDAY",
                                                               "X-NEXTCLOUD-BC-FIELD-TYPE",
                                                               "X-NEXTCLOUD-BC-UNKNOWN-YEAR",
                                                               "X-NEXTCLOUD-BC-YEAR"};

/// The name of a line's property: what stands before ":" or ";".
std::string_view NameOfLine(std::string_view line)
{
    return line.substr(0, std::min(line.find_first_of(":;"), line.size()));
}

/// The component that begins or ends with the line, `word` being BEGIN or END.
std::optional<std::string_view> ComponentOf(std::string_view line, std::string_view word)
{
    if (line.size() <= word.size() || line[word.size()] != ':' ||
        !util::EqualIgnoringCase(line.substr(0, word.size()), word))
        return std::nullopt;
    return util::Trim(line.substr(word.size() + 1));
}

bool IsEventProperty(std::string_view line)
{
    const std::string_view name = NameOfLine(line);
    return std::any_of(
        kEventProperties.begin(), kEventProperties.end(),
        [&](std::string_view known) { return util::EqualIgnoringCase(known, name); });
}

/// The beginning of a very long summary, of which a name has at most 255 characters.
std::optional<std::string> BeginningOfSummary(const ContentLine& line)
{
    constexpr std::size_t longest = 4096;
    if (!line.isTooLong || !util::EqualIgnoringCase(NameOfLine(line.text), "SUMMARY"))
        return std::nullopt;
    std::size_t length = longest;
    while ((static_cast<unsigned char>(line.text[length]) & 0xC0U) == 0x80U && length > 0)
        --length;
    std::string beginning = line.text.substr(0, length);
    return util::IsValidUtf8(beginning) ? beginning : util::DecodeCodePage(beginning);
}

void AddLine(const ContentLine& line, Component& component)
{
    if (!component.problem.empty())
        return;
    if (const auto summary = BeginningOfSummary(line)) {
        component.text += *summary + "\r\n";
        return;
    }
    if (line.isTooLong || component.text.size() + line.text.size() > kLargest) {
        component.problem = "What begins here has too much text for an event.";
        component.text.clear();
        return;
    }
    component.text += line.text;
    component.text += "\r\n";
}

const ComponentName* FindComponent(std::string_view name)
{
    const auto* const found =
        std::find_if(kComponents.begin(), kComponents.end(), [&](const ComponentName& known) {
            return util::EqualIgnoringCase(known.name, name);
        });
    return found == kComponents.end() ? nullptr : found;
}

} // namespace

/// Goes to the next component that is known.
bool ComponentReader::FindBegin(Component& component)
{
    while (isPending_ || lines_.Next(line_)) {
        isPending_ = false;
        const auto name = ComponentOf(line_.text, "BEGIN");
        if (!name)
            continue;
        isCalendar_ = isCalendar_ || util::EqualIgnoringCase(*name, "VCALENDAR");
        const ComponentName* const known = FindComponent(*name);
        if (known == nullptr)
            continue;
        isCalendar_ = true;
        component.kind = known->kind;
        component.line = line_.number;
        component.problem.clear();
        component.text = line_.text + "\r\n";
        return true;
    }
    return false;
}

/// Takes the lines of a component up to its end. One that does not end ends where another begins.
void ComponentReader::TakeLines(Component& component)
{
    const auto isKind = [&](std::string_view name) {
        const ComponentName* const known = FindComponent(name);
        return known != nullptr && known->kind == component.kind;
    };
    const bool isWhole = component.kind == Component::Kind::Zone;
    std::size_t depth = 0; // of components within this one
    while (lines_.Next(line_)) {
        const auto begun = ComponentOf(line_.text, "BEGIN");
        const auto ended = ComponentOf(line_.text, "END");
        if (ended && isKind(*ended)) {
            AddLine(line_, component);
            return;
        }
        const bool isOuter =
            util::EqualIgnoringCase(begun.value_or(ended.value_or("")), "VCALENDAR");
        if (isOuter || (begun && FindComponent(*begun) != nullptr)) {
            isPending_ = begun.has_value();
            break;
        }
        depth += begun ? 1U : 0U;
        const bool isStray = ended && depth == 0; // an end of what has not begun
        if (!isStray && (isWhole || (depth == 0 && IsEventProperty(line_.text))))
            AddLine(line_, component);
        depth -= ended && depth > 0 ? 1U : 0U;
    }
    component.problem = "What begins here has no end.";
}

bool ComponentReader::Next(Component& component)
{
    if (!FindBegin(component))
        return false;
    TakeLines(component);
    return true;
}

} // namespace orrery::exchange
