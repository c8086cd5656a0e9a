#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::look {

/// The ids of a page, and what its elements share: patterns, gradients, clip paths, pictures.
class SvgDefinitions {
public:
    /// An XML name that nothing else of the page has.
    std::string UniqueId(std::string_view wanted);
    /// The id of the definition `<element id="..."rest`, which is made when it is first used. Its
    /// id is the prefix and a number.
    std::string Use(std::string_view element, std::string_view prefix, std::string rest);
    void AppendTo(std::string& out) const;

private:
    struct Definition {
        std::string element;
        std::string id;
    };
    using Definitions = std::map<std::string, Definition, std::less<>>;

    std::set<std::string, std::less<>> ids_;
    std::map<std::string, int, std::less<>> repeats_; ///< of each id that was wanted
    Definitions definitions_;                         ///< by all that follows the id
    std::vector<Definitions::const_iterator> order_;
};

/// The styles of a page: a name for each text of CSS.
class SvgClasses {
public:
    /// "s1"
    std::string Use(const std::string& css);
    void AppendTo(std::string& out) const;

private:
    using Classes = std::map<std::string, std::string, std::less<>>;
    Classes classes_;
    std::vector<Classes::const_iterator> order_;
};

} // namespace orrery::look
