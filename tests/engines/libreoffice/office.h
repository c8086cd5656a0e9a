#pragma once

#include "engines/builtin/structure_protection.h"
#include "engines/libreoffice/installation.h"
#include "engines/libreoffice/plugin.h"
#include "places/places.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>

namespace orrery::libreoffice::test {

/// How the tests start LibreOffice: without a display and with separate profiles, which later tests
/// reuse.
inline StartOptions Options()
{
    StartOptions options;
    options.programFolder = FindInstallation().value();
    options.profiles = places::BuildFolder() / "tests/engines/libreoffice/profiles";
    options.hasProtectedStructure = builtin::HasProtectedStructure;
    return options;
}

/// The same for an instance that is to be taken for one that hangs, with the shortest wait that a
/// start on a busy machine outlasts.
inline StartOptions ShortTimeoutOptions()
{
    StartOptions options = Options();
    options.timeouts.idle = std::chrono::seconds(5);
    return options;
}

} // namespace orrery::libreoffice::test
