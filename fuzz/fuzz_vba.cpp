// What reads macros refuses bytes or understands them: what is compressed is decompressed to the
// same, and lists to which copies are added can be read again.

#include "require.h"

#include "engines/builtin/vba/compression.h"
#include "engines/builtin/vba/dir_stream.h"
#include "engines/builtin/vba/module_source.h"
#include "engines/builtin/vba/project_text.h"
#include "engines/builtin/vba/signature.h"
#include "util/error.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace {

using namespace orrery;
using fuzz::Require;

constexpr std::size_t kMost = std::size_t{1} << 22U;
const vba::ModuleName kCopy = {"Sheet9", "Sheet9"};

template <class Action> void Attempt(Action action)
{
    try {
        action();
    }
    catch (const Error&) {
        // damaged
    }
}

void CopyModules(const std::string& bytes)
{
    vba::DirStream dir(bytes);
    const std::size_t count = dir.Modules().size();
    if (count == 0)
        return;
    dir.AddCopy(count - 1, kCopy);
    const vba::DirStream again(dir.Bytes());
    Require(again.Modules().size() == count + 1);
    Require(again.Modules().back().name.text == kCopy.text);
    Require(again.Modules().back().offset == 0);
}

void AddName(const std::string& bytes)
{
    vba::ProjectNames names(bytes);
    names.Add(kCopy);
    const vba::ProjectNames again(names.Bytes());
    Require(again.Bytes().size() > bytes.size());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const std::string again = vba::Decompress(vba::Compress(bytes), kMost);
    Require(again.starts_with(bytes));
    Require(again.find_first_not_of('\0', bytes.size()) == again.npos);
    Attempt([&] { vba::Decompress(bytes, kMost); });
    Attempt([&] { CopyModules(bytes); });
    Attempt([&] { CopyModules(vba::Decompress(bytes, kMost)); });
    Attempt([&] { AddName(bytes); });
    Attempt([&] { vba::ProjectText(bytes).AddDocument("Sheet1", "Sheet9"); });
    Attempt([&] { vba::RenameModule(bytes, "Sheet1", "Sheet9"); });
    vba::HasCode(bytes);
    if (const auto changed = vba::WithoutSignature(bytes))
        Require(changed->size() == size);
    return 0;
}
