#pragma once

#include <filesystem>

/// Where tests find what lies outside their sources. One small source holds the paths, so that
/// every other object is the same whichever folder the project lies in, and compiler caches find
/// it.
namespace orrery::places {

/// The project's folder.
std::filesystem::path SourceFolder();
/// The folder that this build was made in.
std::filesystem::path BuildFolder();
/// The real workbooks; it may be absent.
std::filesystem::path CorpusFolder();
/// Where pictures of windows are left.
std::filesystem::path PicturesFolder();

// The programs of this build.
std::filesystem::path ConsoleProgram();
std::filesystem::path WindowProgram();
/// Windows only: what answers in the place of Excel.
std::filesystem::path ExcelServer();
/// Windows only: a program that writes how it is shown into the file "shown" beside it.
std::filesystem::path ShowModeProgram();

} // namespace orrery::places
