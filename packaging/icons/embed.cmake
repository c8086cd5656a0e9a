# Writes OUTPUT, a C++ source that holds the PICTURES (files named NAME-SIZE.png, separated by
# commas) for ui/wx/native/art.h.

string(REPLACE "," ";" PICTURES "${PICTURES}")
set(arrays "")
set(rows "")
foreach(picture ${PICTURES})
    string(REGEX MATCH "([0-9]+)\\.png$" unused ${picture})
    set(size ${CMAKE_MATCH_1})
    file(READ ${picture} bytes HEX)
    string(REGEX REPLACE "(..)" "0x\\1," bytes "${bytes}")
    string(APPEND arrays "constexpr unsigned char png${size}[] = {${bytes}};\n")
    string(APPEND rows "    {${size}, png${size}, sizeof png${size}},\n")
endforeach()
file(WRITE ${OUTPUT} "#include \"ui/wx/native/art.h\"

namespace orrery::ui::wx {
namespace {

${arrays}
constexpr Picture pictures[] = {
${rows}};

} // namespace

std::span<const Picture> IconPngs()
{
    return pictures;
}

} // namespace orrery::ui::wx
")
