#include "engines/builtin/xlsx/look/drawing/values/format_scheme.h"

#include "engines/builtin/xml/reading.h"
#include "util/error.h"

namespace orrery::xlsx::drawing {
namespace {

constexpr std::size_t kMaxNodes = 50000;
constexpr int kFirstBackground = 1001;

xml::Element ChildAt(const xml::Element& list, int index)
{
    xml::Element child = list.First();
    for (; child && index > 0; --index)
        child = child.Next();
    return child;
}

} // namespace

FormatScheme::FormatScheme(const Package& package)
{
    try {
        const std::string& book = package.MainPart();
        const Relationship* theme = package.RelationshipsOf(book).FindByType("theme");
        if (theme == nullptr || theme->External)
            return;
        text_ = package.ReadXml(ResolveTarget(book, theme->Target));
        xml::Scanner scanner(*text_);
        xml::EnterRoot(scanner);
        tree_ = std::make_unique<xml::Tree>(
            scanner, [](std::string_view) { return false; }, kMaxNodes);
    }
    catch (const util::Error&) {
        tree_.reset(); // shapes then have the colours that they name, without effects
    }
}

xml::Element FormatScheme::Fill(int index) const
{
    if (!tree_ || index < 1)
        return {};
    const xml::Element scheme = tree_->Root().Child("themeElements").Child("fmtScheme");
    if (index >= kFirstBackground)
        return ChildAt(scheme.Child("bgFillStyleLst"), index - kFirstBackground);
    return ChildAt(scheme.Child("fillStyleLst"), index - 1);
}

xml::Element FormatScheme::Line(int index) const
{
    if (!tree_ || index < 1)
        return {};
    const xml::Element scheme = tree_->Root().Child("themeElements").Child("fmtScheme");
    return ChildAt(scheme.Child("lnStyleLst"), index - 1);
}

} // namespace orrery::xlsx::drawing
