#include "engines/engine_choice.h"

#include "engines/builtin/application.h"
#include "util/error.h"
#include "util/text.h"

#include <array>
#include <utility>

namespace orrery::engines {
namespace {

constexpr std::array<std::pair<EngineChoice, std::string_view>, 4> kNames = {{
    {EngineChoice::Auto, "auto"},
    {EngineChoice::Excel, "excel"},
    {EngineChoice::BuiltIn, "builtin"},
    {EngineChoice::LibreOffice, "libreoffice"},
}};

} // namespace

std::optional<EngineChoice> ParseEngineChoice(std::string_view name)
{
    for (const auto& [choice, known] : kNames) {
        if (util::EqualIgnoringCase(name, known))
            return choice;
    }
    return std::nullopt;
}

std::string_view EngineName(EngineChoice choice)
{
    for (const auto& [known, name] : kNames) {
        if (known == choice)
            return name;
    }
    return {};
}

EngineChoice ResolveEngine(EngineChoice choice)
{
    switch (choice) {
    case EngineChoice::Auto:
    case EngineChoice::BuiltIn:
        return EngineChoice::BuiltIn; // the only one that is part of the program itself
    case EngineChoice::Excel:
    case EngineChoice::LibreOffice:
        break;
    }
    throw Error(util::ErrorKind::EngineMissing, std::string(EngineName(choice)));
}

std::unique_ptr<generate::Application> CreateApplication(EngineChoice choice, Opener opener)
{
    ResolveEngine(choice);
    return builtin::CreateApplication(std::move(opener));
}

} // namespace orrery::engines
