#pragma once

#include "book/look/drawing.h"
#include "engines/builtin/xlsx/package/package.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace orrery::xlsx::drawing {

/// "png", "jpeg", "gif", "bmp", "emf", "wmf", "svg" or "tiff" by the first bytes; empty for others.
std::string_view PictureType(std::string_view bytes);

/// The pictures of a sheet, each read once.
class Pictures {
public:
    static constexpr std::uint64_t kMaxBytes = std::uint64_t{64} << 20U; ///< of all together

    explicit Pictures(const Package& package) : package_(package) {}

    /// Puts the picture that a relationship of a part leads to into the drawing. False if it cannot
    /// be shown.
    bool Load(const std::string& part, std::string_view relationship, book::Drawing& drawing);

    // How many could not be shown, by reason.
    std::size_t tooLarge = 0; ///< beyond kMaxBytes
    std::size_t linked = 0;   ///< outside of the workbook
    std::size_t unknown = 0;  ///< missing, or of a type that is not known

private:
    bool LoadPart(const std::string& part, std::string_view relationship, book::Drawing& drawing);
    std::shared_ptr<const std::string> Read(const std::string& part);

    const Package& package_;
    std::uint64_t bytes_ = 0;
    std::map<std::string, std::shared_ptr<const std::string>, std::less<>> read_; // by PartKey
};

} // namespace orrery::xlsx::drawing
