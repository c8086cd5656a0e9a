#include "engines/builtin/xlsx/styles.h"

#include "engines/builtin/xlsx/xml_reading.h"

namespace orrery::xlsx {

namespace {

/// Reads an <xf> to its end. Excel goes by the element's own protection, whatever
/// applyProtection says.
bool ReadLocked(XmlScanner& scanner)
{
    bool locked = true;
    ForEachChild(scanner, [&] {
        if (scanner.LocalName() == "protection") {
            const auto attribute = scanner.Attribute("locked");
            locked = !attribute || IsTrue(attribute);
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
    XmlScanner scanner(xml, partName);
    EnterRoot(scanner);
    ForEachChild(scanner, [&] {
        if (scanner.LocalName() != "cellXfs")
            return scanner.SkipElement();
        ForEachChild(scanner, [&] {
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
