#pragma once

#include "engines/builtin/xls/compound/bytes.h"
#include "util/unicode.h"
#include "xls/built_compound.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Projects of macros for tests, built without the engine's code for them.
namespace orrery::vba::test {

/// Bytes as a compressed container in which nothing is compressed. A last piece of less than 4096
/// bytes has at most 3640.
inline std::string Packed(std::string_view bytes)
{
    std::string container = "\x01";
    for (; bytes.size() >= 4096; bytes.remove_prefix(4096)) {
        xls::AppendU16(container, 0x3FFF);
        container += bytes.substr(0, 4096);
    }
    std::string tokens;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i % 8 == 0)
            tokens += '\0';
        tokens += bytes[i];
    }
    if (tokens.empty())
        return container;
    xls::AppendU16(container, static_cast<std::uint16_t>(0xB000U + tokens.size() - 1));
    return container + tokens;
}

/// A record of the dir stream.
inline std::string DirRecord(std::uint16_t id, std::string_view data)
{
    std::string record;
    xls::AppendU16(record, id);
    xls::AppendU32(record, static_cast<std::uint32_t>(data.size()));
    return record + std::string(data);
}

inline std::string Unicode(std::string_view text)
{
    std::string bytes;
    for (const char16_t unit : util::ToUtf16(text))
        xls::AppendU16(bytes, unit);
    return bytes;
}

inline std::string U16(std::uint16_t value)
{
    std::string bytes;
    xls::AppendU16(bytes, value);
    return bytes;
}

inline std::string U32(std::uint32_t value)
{
    std::string bytes;
    xls::AppendU32(bytes, value);
    return bytes;
}

struct BuiltModule {
    std::string name;   ///< UTF-8
    std::string code{}; ///< what follows the attributes
    bool isDocument = true;
    std::string bytes{};    ///< the name in the code page; that in UTF-8 if empty
    std::size_t cache = 50; ///< bytes before the source

    const std::string& Bytes() const { return bytes.empty() ? name : bytes; }
    std::string Source() const
    {
        return "Attribute VB_Name = \"" + Bytes() +
               "\"\r\nAttribute VB_Base = \"0{00020820}\"\r\n" + code;
    }
    std::string Stream() const { return std::string(cache, '\xCA') + Packed(Source()); }
};

inline std::string ModuleRecords(const BuiltModule& module)
{
    return DirRecord(0x19, module.Bytes()) + DirRecord(0x47, Unicode(module.name)) +
           DirRecord(0x1A, module.Bytes()) + DirRecord(0x32, Unicode(module.name)) +
           DirRecord(0x1C, "") + DirRecord(0x48, "") +
           DirRecord(0x31, U32(static_cast<std::uint32_t>(module.cache))) +
           DirRecord(0x1E, U32(0)) + DirRecord(0x2C, U16(0x1234)) +
           DirRecord(module.isDocument ? 0x22 : 0x21, "") + DirRecord(0x2B, "");
}

/// What comes before the modules: the project "VBAProject" with a reference to "Lib2".
inline std::string ProjectRecords()
{
    std::string version =
        U16(9) + U32(4) + U32(0x5678) + U16(2); // its size is not that of its data
    return DirRecord(0x01, U32(1)) + DirRecord(0x02, U32(0x409)) + DirRecord(0x14, U32(0x409)) +
           DirRecord(0x03, U16(1252)) + DirRecord(0x04, "VBAProject") + DirRecord(0x05, "") +
           DirRecord(0x40, "") + DirRecord(0x06, "") + DirRecord(0x3D, "") +
           DirRecord(0x07, U32(0)) + DirRecord(0x08, U32(0)) + version + DirRecord(0x0C, "") +
           DirRecord(0x3C, "") + DirRecord(0x16, "Lib2") + DirRecord(0x3E, Unicode("Lib2")) +
           DirRecord(0x0D, "path of Lib2");
}

/// The decompressed dir stream.
inline std::string DirOf(const std::vector<BuiltModule>& modules)
{
    std::string dir = ProjectRecords() +
                      DirRecord(0x0F, U16(static_cast<std::uint16_t>(modules.size()))) +
                      DirRecord(0x13, U16(0x4321));
    for (const auto& module : modules)
        dir += ModuleRecords(module);
    return dir + DirRecord(0x10, "");
}

/// The PROJECT stream.
inline std::string TextOf(const std::vector<BuiltModule>& modules)
{
    std::string text = "ID=\"{00000000-0000-0000-0000-000000000001}\"\r\n";
    std::string windows;
    for (const auto& module : modules) {
        text += module.isDocument ? "Document=" + module.Bytes() + "/&H00000000\r\n"
                                  : "Module=" + module.Bytes() + "\r\n";
        windows += module.Bytes() + "=0, 0, 0, 0, C\r\n";
    }
    return text +
           "Name=\"VBAProject\"\r\nHelpContextID=\"0\"\r\nCMG=\"0705\"\r\nDPB=\"0E0C\"\r\n"
           "GC=\"1517\"\r\n\r\n[Host Extender Info]\r\n&H00000001={3832}\r\n\r\n"
           "[Workspace]\r\n" +
           windows;
}

/// The PROJECTwm stream.
inline std::string NamesOf(const std::vector<BuiltModule>& modules)
{
    std::string names;
    for (const auto& module : modules)
        names += module.Bytes() + '\0' + Unicode(module.name) + std::string(2, '\0');
    return names + std::string(2, '\0');
}

/// The members of a project's storage. Streams that only make programs faster are there, too.
inline std::vector<xls::test::Node> ProjectNodes(const std::vector<BuiltModule>& modules)
{
    using xls::test::Storage;
    using xls::test::Stream;
    std::vector<xls::test::Node> streams = {
        Stream(u"dir", Packed(DirOf(modules))),
        Stream(u"_VBA_PROJECT", std::string("\xCC\x61\x79\0\0\x01\0\xFF", 8) + "compiled"),
        Stream(u"__SRP_0", "compiled"),
        Stream(u"__SRP_1", std::string(5000, 'c')),
    };
    for (const auto& module : modules)
        streams.push_back(Stream(util::ToUtf16(module.name), module.Stream()));
    return {Storage(u"VBA", std::move(streams)), Stream(u"PROJECT", TextOf(modules)),
            Stream(u"PROJECTwm", NamesOf(modules))};
}

} // namespace orrery::vba::test
