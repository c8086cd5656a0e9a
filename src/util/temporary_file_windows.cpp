#include "util/file_windows.h"

#include "util/temporary_file.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <system_error>

namespace orrery::util {

namespace fs = std::filesystem;

namespace {

std::uint64_t TicksOf(const FILETIME& time)
{
    return std::uint64_t{time.dwHighDateTime} << 32U | time.dwLowDateTime;
}

/// When the process was started, or nothing if that is unknown.
std::optional<std::uint64_t> StartOf(HANDLE process)
{
    FILETIME start = {};
    FILETIME unused = {};
    if (GetProcessTimes(process, &start, &unused, &unused, &unused) == FALSE)
        return std::nullopt;
    return TicksOf(start);
}

/// Whether the process that created the file still runs; true if that is unknown.
bool IsCreatorAlive(const TemporaryName& name)
{
    HANDLE const process = OpenProcess(SYNCHRONIZE | PROCESS_QUERY_LIMITED_INFORMATION, FALSE,
                                       static_cast<DWORD>(name.process));
    if (process == nullptr)
        return GetLastError() != ERROR_INVALID_PARAMETER; // there is no such process
    const bool hasEnded = WaitForSingleObject(process, 0) == WAIT_OBJECT_0;
    const auto start = StartOf(process);
    CloseHandle(process);
    return !hasEnded && (!start || *start <= name.number);
}

bool IsOld(const FILETIME& written)
{
    constexpr std::uint64_t kDay = std::uint64_t{24} * 60 * 60 * 10'000'000; // in 100 nanoseconds
    FILETIME now = {};
    GetSystemTimeAsFileTime(&now);
    return TicksOf(written) + kDay < TicksOf(now);
}

} // namespace

/// A hash of the computer's name.
std::string SystemId()
{
    static const std::string mark = [] {
        std::array<wchar_t, MAX_COMPUTERNAME_LENGTH + 1> name = {};
        auto size = static_cast<DWORD>(name.size());
        if (GetComputerNameW(name.data(), &size) == FALSE)
            return std::string();
        std::uint32_t hash = 2166136261U; // FNV-1a
        for (DWORD i = 0; i < size; ++i)
            hash = (hash ^ static_cast<std::uint32_t>(name[i])) * 16777619U;
        std::array<char, 9> digits = {};
        std::snprintf(digits.data(), digits.size(), "%08x", static_cast<unsigned>(hash));
        return std::string(digits.data());
    }();
    return mark;
}

std::uint64_t ProcessNumber()
{
    return GetCurrentProcessId();
}

std::uint64_t FirstFileNumber()
{
    return StartOf(GetCurrentProcess()).value_or(0);
}

// An open handle would block the final rename, so a file counts as in use while its process runs.
std::shared_ptr<void> CreateInUse(const fs::path& path, std::error_code& failure)
{
    failure.clear();
    const File file(path, GENERIC_WRITE, CREATE_NEW);
    if (!file.IsOpen())
        failure = {static_cast<int>(GetLastError()), std::system_category()};
    if (failure.value() == ERROR_FILE_EXISTS)
        failure = std::make_error_code(std::errc::file_exists);
    return {};
}

void RemoveIfAbandoned(const fs::path& path, const TemporaryName& name)
{
    constexpr DWORD kNoFile = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
    WIN32_FILE_ATTRIBUTE_DATA file = {};
    if (GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &file) == FALSE ||
        (file.dwFileAttributes & kNoFile) != 0)
        return;
    if ((name.isFromThisSystem && !IsCreatorAlive(name)) || IsOld(file.ftLastWriteTime))
        DeleteFileW(path.c_str());
}

} // namespace orrery::util
