#include "engines/builtin/xlsx/sheet/styles.h"

#include "engines/builtin/xml/reading.h"

namespace orrery::xlsx {

namespace {

/// Reads an <xf> to its end. Excel uses the element's own protection, whatever applyProtection
/// says.
bool ReadLocked(xml::Scanner& scanner)
{
    bool locked = true;
    xml::ForEachChild(scanner, [&] {
        if (scanner.LocalName() == "protection") {
            const auto attribute = scanner.Attribute("locked");
            locked = !attribute || xml::IsTrue(attribute);
        }
        scanner.SkipElement();
    });
    return locked;
}

} // namespace

Styles::Styles(std::string_view xml, std::string_view partName)
{
    if (xml.empty())
        return;
    xml::Scanner scanner(xml, partName);
    xml::EnterRoot(scanner);
    xml::ForEachChild(scanner, [&] {
        if (scanner.LocalName() != "cellXfs")
            return scanner.SkipElement();
        xml::ForEachChild(scanner, [&] {
            if (scanner.LocalName() == "xf")
                locked_.push_back(ReadLocked(scanner));
            else
                scanner.SkipElement();
        });
    });
}

bool Styles::IsLocked(std::size_t format) const
{
    return format >= locked_.size() || locked_[format];
}

} // namespace orrery::xlsx
