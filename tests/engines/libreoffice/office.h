#pragma once

#include "engines/builtin/structure_protection.h"
#include "engines/libreoffice/installation.h"
#include "engines/libreoffice/plugin.h"
#include "places/places.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>

namespace orrery::libreoffice::test {

/// How the tests start LibreOffice: without a display, with profiles of their own, which later
/// tests find made.
inline StartOptions Options()
{
    StartOptions options;
    options.programFolder = FindInstallation().value();
    options.profiles = places::BuildFolder() / "tests/engines/libreoffice/profiles";
    options.hasProtectedStructure = builtin::HasProtectedStructure;
    return options;
}

/// The same for an instance that shall be taken for one that hangs: the shortest wait that a start
/// on a busy machine outlasts.
inline StartOptions ImpatientOptions()
{
    StartOptions options = Options();
    options.patience.idle = std::chrono::seconds(5);
    return options;
}

} // namespace orrery::libreoffice::test
